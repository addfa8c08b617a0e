#pragma once

#include <pybind11/pybind11.h>

/// Adds to the module what scripts get of documents besides their members: whole tables, HTML, pictures, saved data.
void DefineDocuments(pybind11::module_& module);
