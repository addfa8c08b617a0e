#pragma once

#include <pybind11/pybind11.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"

/// Labels by column and value.
using ValueLabels = std::map<std::string, std::map<double, std::string>>;

/// A data table as `_quillara.Table`. Its cases never change.
struct PythonTable {
    std::shared_ptr<const quillara::DataTable> Held;
    std::vector<quillara::Remark> Notices{};  ///< about the formulas of its variables
    std::vector<quillara::Remark> OnReading{};  ///< about its file, which the script has been told

    /// Of columns that have just been made. Throws DataError unless names differ and lengths don't, UsageError for
    /// labels of what isn't a column of numbers without any.
    [[nodiscard]] static PythonTable Of(quillara::DataTable table, const ValueLabels& labels);
    /// Adds the class, and the functions that read and make tables, to the module.
    static void Define(pybind11::module_& module);
};
