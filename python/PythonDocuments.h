#pragma once

#include <pybind11/pybind11.h>

#include "python/PythonObject.h"
#include "workbench/documents/SpreadsheetDocument.h"

/// The table of a result document. Throws MemberRefusal when the object is something else.
[[nodiscard]] const quillara::SpreadsheetDocument& SpreadsheetOf(const PythonObject& object);

/// The corner, the columns (name, whether all numbers are whole, cells) and the names of the rows.
[[nodiscard]] pybind11::tuple TellTable(const quillara::SpreadsheetDocument& table);

/// Adds to the module what scripts get of documents besides their members: whole tables, HTML, pictures, saved data.
void DefineDocuments(pybind11::module_& module);
