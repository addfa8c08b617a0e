#pragma once

#include <pybind11/pybind11.h>

/// Adds to the module how callables listen to the events of documents.
void DefineEvents(pybind11::module_& module);
