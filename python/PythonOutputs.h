#pragma once

#include <pybind11/pybind11.h>

/// Adds to the module what runs of scripts by the command line use: the results of all analyses as one text.
void DefineOutputs(pybind11::module_& module);
