#include "python/PythonTable.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/Status.h"
#include "python/HostCall.h"
#include "python/StandingNumbers.h"
#include "python/ValueCategories.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/data/CategoryGroups.h"
#include "workbench/data/DerivedVariables.h"
#include "workbench/data/Errors.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/documents/Remarks.h"
#include "workbench/formats/DataFile.h"
#include "workbench/formats/TablePreparation.h"
#include "workbench/hosting/ScriptDesk.h"
#include "workbench/hosting/VariableNotation.h"
#include "workbench/scripting/ListChecks.h"

namespace py = pybind11;
using quillara::DataTable;
using quillara::ValueKind;
using quillara::Variable;

namespace {

constexpr const char* KindNames[] = {"number", "date", "time", "datetime", "text"};

/// The values of a variable for numpy: missing ones are NaN.
struct PythonColumn {
    std::vector<double> Values;
};

const Variable& VariableAt(const PythonTable& table, std::size_t index) {
    return table.Held->Variables.at(index);
}

PythonColumn ColumnOf(const Variable& variable) {
    PythonColumn column;
    column.Values.reserve(variable.Values.size());
    for (const double value : variable.Values) {
        column.Values.push_back(variable.IsMissing(value) ? std::numeric_limits<double>::quiet_NaN() : value);
    }
    return column;
}

bool HasOwnLabels(const Variable& variable) {
    return variable.Kind != ValueKind::Text || IsCategorical(variable);
}

/// Of texts by the texts that are stored, as their numbers mean nothing to people.
py::dict LabelsByValue(const Variable& variable) {
    py::dict labels;
    if (!HasOwnLabels(variable)) {
        return labels;
    }
    for (const auto& [value, label] : LabelledValues(variable)) {
        if (variable.Kind == ValueKind::Text) {
            labels[py::str(variable.Texts[static_cast<std::size_t>(value) - 1])] = label;
        } else {
            labels[py::float_(value)] = label;
        }
    }
    return labels;
}

/// The missing values that are told apart, with their labels or None: numbers, or texts and marks; points in time as
/// they are written.
py::dict MissingValues(const Variable& variable) {
    py::dict values;
    const std::size_t count = variable.Reasons ? variable.Reasons->Reasons.size() : 0;
    for (std::size_t place = 0; place < count; ++place) {
        const quillara::MissingReason& reason = variable.Reasons->Reasons[place];
        const bool isNumber = reason.Number && variable.Kind == ValueKind::Number;
        const py::object value =
            isNumber ? py::object(py::float_(*reason.Number)) : py::object(py::str(CodeOfReason(variable, reason)));
        values[value] = reason.Label.empty() ? py::object(py::none()) : py::object(py::str(reason.Label));
    }
    return values;
}

py::tuple Describe(const PythonTable& table, std::size_t index) {
    const Variable& variable = VariableAt(table, index);
    const char* kind = KindNames[static_cast<std::size_t>(variable.Kind)];
    return py::make_tuple(variable.Name, variable.LongName, kind, LabelsByValue(variable), MissingValues(variable));
}

/// The names of the categories, and per case the place of its own as 32-bit numbers; nothing for a variable that frames
/// get as it is.
py::object TellCategories(const PythonTable& table, std::size_t index) {
    const Variable& variable = VariableAt(table, index);
    if (!IsCategorical(variable)) {
        return py::none();
    }
    const ValueCategories categories = CategoriesOf(variable);
    const auto* places = reinterpret_cast<const char*>(categories.Places.data());
    return py::make_tuple(categories.Names, py::bytes(places, categories.Places.size() * sizeof(std::int32_t)));
}

/// Pairs of a variable and its codes.
using CodesByVariable = std::vector<std::pair<std::string, std::vector<std::string>>>;

/// How delimited text is to be read.
quillara::ReadOptions OptionsOf(const py::dict& given) {
    quillara::ReadOptions options;
    options.Separator = given["separator"].cast<std::optional<char>>();
    options.Decimal = given["decimal"].cast<std::optional<char>>();
    if (const auto dates = given["dates"].cast<std::optional<std::string>>()) {
        options.Dates = *dates == "day-first" ? quillara::DateOrder::DayFirst : quillara::DateOrder::MonthFirst;
    }
    options.Texts = given["texts"].cast<std::vector<std::string>>();
    options.Numbers = given["numbers"].cast<std::vector<std::string>>();
    for (const auto& [name, codes] : given["missing_values"].cast<CodesByVariable>()) {
        options.MissingValues.push_back({name, codes});
    }
    options.Encoding = given["encoding"].cast<std::string>();
    options.Sheet = given["sheet"].cast<std::string>();
    options.KeepsTexts = given["keep_texts"].cast<bool>();
    options.HasHeader = given["header"].cast<bool>();
    options.TitleRecords = given["skip"].cast<std::size_t>();
    options.MissingTexts = given["missing"].cast<std::optional<std::vector<std::string>>>();
    return options;
}

quillara::TablePreparation PreparationOf(const std::optional<std::string>& dictionary, const CodesByVariable& valid) {
    quillara::TablePreparation preparation{.DictionaryFile = dictionary};
    for (const auto& [variable, codes] : valid) {
        preparation.Valid.push_back({variable, codes});
    }
    return preparation;
}

PythonTable ReadTable(const std::string& path, const py::dict& given, const std::optional<std::string>& dictionary,
                      const CodesByVariable& valid) {
    quillara::ReadOptions options = OptionsOf(given);
    return CallHost("open", [&] {
        options.Cancelled = [] { return HostScope::Cancelled().load(); };
        std::vector<quillara::Remark> noticed;
        options.Noticed = [&noticed](const quillara::Remark& remark) { noticed.push_back(remark); };
        DataTable table = quillara::ReadDataFile(path, options);
        PrepareTable(table, PreparationOf(dictionary, valid));
        for (const quillara::Remark& remark : noticed) {
            quillara::TheScriptDesk().Keep({remark.Line(), remark.Code});
        }
        return PythonTable{std::make_shared<const DataTable>(std::move(table)), {}, std::move(noticed)};
    });
}

std::span<const double> Numbers(const py::buffer_info& info) {
    if (info.ndim != 1 || info.format != py::format_descriptor<double>::format() ||
        info.strides[0] != static_cast<py::ssize_t>(sizeof(double))) {
        throw py::type_error("A column must be a plain row of doubles.");
    }
    return {static_cast<const double*>(info.ptr), static_cast<std::size_t>(info.size)};
}

/// Keeps the memory of a buffer and somebody who sees to it that the numbers there don't change. Whoever lets it go
/// needn't have the interpreter's lock.
std::shared_ptr<const void> Kept(py::buffer_info info, py::object keeper) {
    using Held = std::pair<py::buffer_info, py::object>;
    return {new Held(std::move(info), std::move(keeper)), [](const Held* held) {
                if (Py_IsInitialized() != 0) {
                    const py::gil_scoped_acquire lock;
                    delete held;
                }
            }};
}

/// Numbers that have a keeper are used where they stand.
void TakeNumbers(Variable& variable, const py::buffer& buffer, const py::object& keeper) {
    py::buffer_info info = buffer.request();
    const std::span<const double> numbers = Numbers(info);
    if (keeper.is_none()) {
        EncodeNumbers(variable, {numbers.begin(), numbers.end()});
    } else {
        UseNumbers(variable, numbers, Kept(std::move(info), keeper));
    }
}

/// The texts of a column, None for missing ones. Throws Python's exception that names the column when one is no text.
std::vector<std::optional<std::string>> TextsOf(const std::string& column, const py::object& values) {
    try {
        return values.cast<std::vector<std::optional<std::string>>>();
    } catch (const py::cast_error&) {
        PyErr_Clear();
        py::module_::import("quillara._columns").attr("refuse_texts")(column, values);
        throw;
    }
}

/// A column as Python hands it over: name, kind, values with NaN for missing ones or texts with None, labels by value,
/// keeper of the values or None.
Variable VariableOf(const py::tuple& column) {
    Variable variable;
    variable.Name = column[0].cast<std::string>();
    const auto kind = column[1].cast<std::string>();
    variable.Kind = static_cast<ValueKind>(std::ranges::find(KindNames, kind) - std::begin(KindNames));
    if (variable.Kind == ValueKind::Text) {
        EncodeTexts(variable, TextsOf(variable.Name, column[2]));
        return variable;
    }
    TakeNumbers(variable, column[2].cast<py::buffer>(), column[4]);
    for (const auto& [value, label] : column[3].cast<std::map<double, std::string>>()) {
        variable.Labels[value].Label = label;
    }
    return variable;
}

void CheckColumns(const DataTable& table) {
    for (std::size_t i = 0; i < table.Variables.size(); ++i) {
        const Variable& variable = table.Variables[i];
        if (variable.Values.size() != static_cast<std::size_t>(table.Cases)) {
            throw quillara::DataError("The column \"" + variable.Name + "\" has another length than the first.");
        }
        if (table.Find(variable.Name) != i) {
            throw quillara::DataError("Two columns are called \"" + variable.Name + "\".");
        }
    }
}

void GiveLabels(DataTable& table, const std::string& name, const std::map<double, std::string>& labels) {
    const auto index = table.Find(name);
    if (!index) {
        throw quillara::UsageError("There are labels of \"" + name + "\", but no such column.");
    }
    Variable& variable = table.Variables[*index];
    if (variable.Kind != ValueKind::Number || !variable.Labels.empty()) {
        throw quillara::UsageError("The column \"" + name + "\" can't take labels: only numbers can.");
    }
    for (const auto& [value, label] : labels) {
        variable.Labels[value].Label = label;
    }
}

PythonTable MakeTable(const std::string& name, const py::list& columns, std::vector<std::string> caseNames,
                      const ValueLabels& labels) {
    DataTable table;
    table.FileName = name;
    table.CaseNames = std::move(caseNames);
    for (const py::handle column : columns) {
        table.Variables.push_back(VariableOf(py::reinterpret_borrow<py::tuple>(column)));
    }
    const std::size_t cases = table.Variables.empty() ? 0 : table.Variables.front().Values.size();
    return CallHost("table", [&] {
        quillara::CheckSize(table.Variables.size(), cases);
        table.Cases = static_cast<std::int32_t>(cases);
        return PythonTable::Of(std::move(table), labels);
    });
}

void DefineColumn(py::module_& module) {
    py::class_<PythonColumn>(module, "Column", py::buffer_protocol(), "The values of a variable, NaN where missing")
        .def_buffer([](PythonColumn& column) { return py::buffer_info(column.Values.data(), column.Values.size()); })
        .def("__len__", [](const PythonColumn& column) { return column.Values.size(); });
}

/// Texts and codes of what is noticed about a formula.
py::list TellNotices(std::span<const quillara::Remark> notices) {
    py::list told;
    for (const quillara::Remark& notice : notices) {
        told.append(py::make_tuple(quillara::Remark{notice.Code, notice.Text, notice.Advice}.Line(), notice.Code));
    }
    return told;
}

py::list CheckSelection(const PythonTable& table, const std::string& formula) {
    std::vector<quillara::Remark> notices;
    CallHost("select", [&] { return SelectCases(*table.Held, formula, &notices); });
    return TellNotices(notices);
}

/// The table with a variable more, whose columns are the same, and what is noticed about the formula.
py::tuple Computed(const PythonTable& table, const std::string& name, const std::string& formula) {
    PythonTable computed = CallHost("compute", [&] {
        DataTable longer = *table.Held;
        std::vector<quillara::Remark> notices = table.Notices;
        Derive(longer, {name, formula}, notices);
        return PythonTable{std::make_shared<const DataTable>(std::move(longer)), std::move(notices), table.OnReading};
    });
    const py::list told = TellNotices(std::span(computed.Notices).subspan(table.Notices.size()));
    return py::make_tuple(std::move(computed), told);
}

/// Name and formula of the variable that brings some categories of another together, and the name of the category.
py::tuple GroupedCategories(const PythonTable& table, std::size_t index, const std::vector<std::string>& categories) {
    const quillara::CategoryGroup group =
        CallHost("group", [&] { return GroupOf(*table.Held, VariableAt(table, index), categories); });
    return py::make_tuple(group.Grouping.Name, group.Grouping.Formula, group.Category);
}

/// Two lists of variables, unless one stands there twice or holds texts that it can't take.
std::string CheckedLists(const PythonTable& table, const std::string& text) {
    return CallHost("Variables", [&] {
        const quillara::TwoLists lists = quillara::ListsIn(*table.Held, text);
        CheckForRepeats(*table.Held, lists);
        CheckTexts(*table.Held, lists, "among the categorical variables, the first list");
        return text;
    });
}

std::size_t WeightIndex(const PythonTable& table, const std::string& name) {
    return CallHost("weight", [&] { return WeightNamed(*table.Held, name); });
}

}  // namespace

PythonTable PythonTable::Of(DataTable table, const ValueLabels& labels) {
    CheckColumns(table);
    for (const auto& [name, ofValues] : labels) {
        GiveLabels(table, name, ofValues);
    }
    return {std::make_shared<const DataTable>(std::move(table))};
}

void PythonTable::Define(py::module_& module) {
    DefineColumn(module);
    py::class_<PythonTable>(module, "Table", "A data table")
        .def_property_readonly("name", [](const PythonTable& table) { return table.Held->FileName; })
        .def_property_readonly("cases", [](const PythonTable& table) { return table.Held->Cases; })
        .def_property_readonly("case_names", [](const PythonTable& table) { return table.Held->CaseNames; })
        .def_property_readonly("declared_weight", [](const PythonTable& table) { return table.Held->Weight; })
        .def("__len__", [](const PythonTable& table) { return table.Held->Variables.size(); })
        .def("describe", Describe, "Name, label, kind, its own labels by value, and its missing values")
        .def("texts", [](const PythonTable& table, std::size_t index) { return VariableAt(table, index).Texts; })
        .def("categories", TellCategories, "Names of the categories, and their places by case")
        .def("column", [](const PythonTable& table, std::size_t index) { return ColumnOf(VariableAt(table, index)); })
        .def("compute", Computed, "The table with one more variable, by its name and formula")
        .def("group", GroupedCategories, "Several categories of a variable as one of another")
        .def("check_selection", CheckSelection)
        .def("checked_lists", CheckedLists,
             "Two lists of variables, in which none may stand twice or be of the wrong kind")
        .def("weight_index", WeightIndex);
    module.def("read", ReadTable, "Reads a data file");
    module.def("make", MakeTable, "A table of columns: name, kind, values, labels by value, keeper of the values");
}
