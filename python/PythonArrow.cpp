#include "python/PythonArrow.h"

#include <pybind11/stl.h>

#include <memory>
#include <string>
#include <utility>

#include "python/ArrowReading.h"
#include "python/ArrowTables.h"
#include "python/HostCall.h"
#include "python/PythonDocuments.h"
#include "python/PythonTable.h"
#include "workbench/data/Errors.h"

namespace py = pybind11;

namespace {

constexpr const char* CapsuleName = "arrow_array_stream";

/// A stream that nobody has taken out goes with its capsule.
void DropCapsule(PyObject* capsule) {
    auto* stream = static_cast<ArrowArrayStream*>(PyCapsule_GetPointer(capsule, CapsuleName));
    ReleaseArrow(*stream);
    delete stream;
}

py::object CapsuleOf(ArrowHeld<ArrowArrayStream> stream) {
    auto place = std::make_unique<ArrowArrayStream>();
    PyObject* capsule = PyCapsule_New(place.get(), CapsuleName, DropCapsule);
    if (capsule == nullptr) {
        throw py::error_already_set();
    }
    *place.release() = std::exchange(*stream.Put(), ArrowArrayStream());
    return py::reinterpret_steal<py::object>(capsule);
}

py::object TableStream(const PythonTable& table) {
    return CapsuleOf(CallHost("__arrow_c_stream__", [&table] { return StreamOfTable(table.Held); }));
}

py::object SpreadsheetStream(const PythonObject& object) {
    return CapsuleOf(CallHost("__arrow_c_stream__", [&object] { return StreamOfSpreadsheet(SpreadsheetOf(object)); }));
}

/// The table, and the columns whose numbers it has rounded.
py::tuple ReadCapsule(const std::string& name, const py::object& capsule, const ValueLabels& labels) {
    auto* given = static_cast<ArrowArrayStream*>(PyCapsule_GetPointer(capsule.ptr(), CapsuleName));
    if (given == nullptr) {
        throw py::error_already_set();
    }
    auto [table, rounded] = CallHost("table", [&] {
        ArrowHeld<ArrowArrayStream> stream(*given);
        if (!stream) {
            throw quillara::UsageError("These columns have been taken already.");
        }
        ArrowTable read = ReadArrow(stream, [] { return HostScope::Cancelled().load(); });
        read.Table.FileName = name;
        return std::pair(PythonTable::Of(std::move(read.Table), labels), std::move(read.Rounded));
    });
    return py::make_tuple(std::move(table), rounded);
}

}  // namespace

void DefineArrow(py::module_& module) {
    module.def("table_stream", TableStream, "The columns of a table");
    module.def("spreadsheet_stream", SpreadsheetStream, "The columns of a result table");
    module.def("read_stream", ReadCapsule, "A table of such columns, and the names of those that it has rounded");
}
