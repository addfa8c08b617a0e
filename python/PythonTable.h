#pragma once

#include <pybind11/pybind11.h>

#include <memory>

#include "workbench/data/DataTable.h"

/// A data table as `_quillara.Table`. Its cases never change.
struct PythonTable {
    std::shared_ptr<const quillara::DataTable> Held;

    /// Adds the class, and the functions that read and make tables, to the module.
    static void Define(pybind11::module_& module);
};
