#pragma once

#include <pybind11/pybind11.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "python/PythonTable.h"
#include "workbench/scripting/ScriptedAnalysis.h"

/// An analysis as `_quillara.Analysis`. Dropped by Python, it closes.
class PythonAnalysis {
  public:
    PythonAnalysis(const PythonTable& table, const std::string& formula, std::optional<std::size_t> weight);
    PythonAnalysis(const PythonAnalysis&) = delete;
    PythonAnalysis& operator=(const PythonAnalysis&) = delete;
    ~PythonAnalysis();

    /// Adds the class to the module.
    static void Define(pybind11::module_& module);

  private:
    std::unique_ptr<quillara::ScriptedAnalysis> Held;
};
