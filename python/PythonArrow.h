#pragma once

#include <pybind11/pybind11.h>

/// Adds to the module how columns go out and come in by Arrow's C data interface, in capsules as its protocol for
/// Python names them.
void DefineArrow(pybind11::module_& module);
