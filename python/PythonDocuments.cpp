#include "python/PythonDocuments.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <variant>
#include <vector>

#include "platform/Status.h"
#include "python/HostCall.h"
#include "python/PythonObject.h"
#include "python/PythonTable.h"
#include "workbench/documents/NamedCall.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/DataDocument.h"
#include "workbench/scripting/DocumentWriting.h"

namespace py = pybind11;
using namespace quillara;

namespace {

const ResultDocument& DocumentOf(const PythonObject& object) {
    const ResultDocument* document = ResultDocument::Of(object.Get());
    if (document == nullptr) {
        throw MemberRefusal{DISP_E_TYPEMISMATCH};
    }
    if (document->IsGone()) {
        throw MemberRefusal{CO_E_OBJNOTCONNECTED};
    }
    return *document;
}

template <typename Content>
const Content& ContentOf(const PythonObject& object) {
    const auto* content = std::get_if<Content>(&DocumentOf(object).Content());
    if (content == nullptr) {
        throw MemberRefusal{DISP_E_TYPEMISMATCH};
    }
    return *content;
}

py::object CellOf(const SpreadsheetCell& cell) {
    if (const double* number = std::get_if<double>(&cell)) {
        return py::float_(*number);
    }
    const std::string* text = std::get_if<std::string>(&cell);
    return text == nullptr ? py::object(py::none()) : py::object(py::str(*text));
}

py::tuple TellSpreadsheet(const PythonObject& object) {
    return TellTable(CallHost("to_pandas", [&object] { return SpreadsheetOf(object); }));
}

/// The names of the variables that a document shows.
std::vector<std::string> ShownVariables(const PythonObject& object) {
    return CallHost("variables", [&object] {
        const Subject& subject = std::visit([](const auto& content) -> const Subject& { return content.About; },
                                            DocumentOf(object).Content());
        std::vector<std::string> names;
        std::ranges::transform(subject.Variables, std::back_inserter(names), &ShownVariable::Name);
        return names;
    });
}

/// Its kind by name; empty: not known.
std::string ResultName(const PythonObject& object) {
    return CallHost("result", [&object] { return NamedResultOf(DocumentOf(object)); });
}

/// How many steps were taken before its content.
int StepOf(const PythonObject& object) {
    return CallHost("to_frame", [&object] { return DocumentOf(object).Step(); });
}

/// What a document holds as tidy rows: (result, variable, category, statistic, weights, value).
py::list TellTidyRows(const PythonObject& object) {
    const std::vector<TidyRow> rows = CallHost("to_frame", [&object] { return TidyRowsOf(DocumentOf(object)); });
    py::list told;
    for (const TidyRow& row : rows) {
        told.append(
            py::make_tuple(row.Result, row.Variable, row.Category, row.Statistic, row.Weights, CellOf(row.Value)));
    }
    return told;
}

std::string Text(const PythonObject& object) {
    return CallHost("print", [&object] { return TextOf(DocumentOf(object)); });
}

std::string Html(const PythonObject& object) {
    return CallHost("_repr_html_", [&object] { return HtmlOf(SpreadsheetOf(object)); });
}

std::string Svg(const PythonObject& object) {
    return CallHost("_repr_svg_", [&object] { return SvgOf(ContentOf<GraphDocument>(object)); });
}

PythonTable SavedTable(const PythonObject& object) {
    return CallHost("to_pandas", [&object] {
        const auto* document = dynamic_cast<const DataDocument*>(object.Get());
        if (document == nullptr) {
            throw MemberRefusal{DISP_E_TYPEMISMATCH};
        }
        return PythonTable{document->Share()};
    });
}

}  // namespace

const SpreadsheetDocument& SpreadsheetOf(const PythonObject& object) {
    return ContentOf<SpreadsheetDocument>(object);
}

py::tuple TellTable(const SpreadsheetDocument& table) {
    py::list columns;
    for (std::size_t i = 0; i < table.Columns.size(); ++i) {
        py::list cells;
        for (const SpreadsheetRow& row : table.Rows) {
            cells.append(CellOf(row.Cells[i]));
        }
        columns.append(py::make_tuple(table.Columns[i].Name, table.Columns[i].Whole, cells));
    }
    py::list rows;
    for (const SpreadsheetRow& row : table.Rows) {
        rows.append(row.NameForPeople());
    }
    return py::make_tuple(table.Corner, columns, rows);
}

void DefineDocuments(py::module_& module) {
    module.def("spreadsheet", TellSpreadsheet, "The corner, the columns and the names of the rows of a table");
    module.def("shown_variables", ShownVariables, "The names of the variables that a document shows");
    module.def("result_name", ResultName, "The kind of a document by its name");
    module.def("step_of", StepOf, "How many drill steps, down and up, were taken before it");
    module.def("tidy_rows", TellTidyRows, "All that a document holds, each number with what it is");
    module.def("text", Text, "A document as aligned text");
    module.def("html", Html, "A table as HTML");
    module.def("svg", Svg, "A graph as a picture");
    module.def("saved_table", SavedTable, "The table of a data document");
    OfferDocumentFiles();
}
