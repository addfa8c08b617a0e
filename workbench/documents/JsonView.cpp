#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "workbench/data/ExactNumbers.h"
#include "workbench/documents/DocumentViews.h"
#include "workbench/documents/NumberTexts.h"
#include "workbench/documents/ShownText.h"

namespace quillara {
namespace {

using Json = nlohmann::ordered_json;

Json TextValue(const std::string& text) {
    return ValidText(text);
}

Json NumberValue(double number) {
    if (!std::isfinite(number)) {
        return nullptr;
    }
    // Whole numbers stand without a point; a double would get one.
    return IsExactWhole(number) ? Json(static_cast<std::int64_t>(number)) : Json(number);
}

Json CellValue(const SpreadsheetCell& cell) {
    if (const auto* text = std::get_if<std::string>(&cell)) {
        return TextValue(*text);
    }
    const auto* number = std::get_if<double>(&cell);
    return number == nullptr ? Json(nullptr) : NumberValue(*number);
}

/// An array of what `valueOf` makes of each element, on one line when written.
Json Array(const auto& elements, auto valueOf) {
    Json array = Json::array();
    for (const auto& element : elements) {
        array.push_back(valueOf(element));
    }
    return array;
}

/// A value on one line, with a blank behind each comma and colon.
std::string OneLine(const Json& value) {
    if (!value.is_structured()) {
        return value.dump();
    }
    std::string members;
    for (const auto& [key, member] : value.items()) {
        members += members.empty() ? "" : ", ";
        members += value.is_object() ? Json(key).dump() + ": " : "";
        members += OneLine(member);
    }
    return value.is_object() ? '{' + members + '}' : '[' + members + ']';
}

/// A list that begins a line for each of its elements.
std::string Stacked(const auto& elements, const std::string& lineStart, auto textOf) {
    std::string text = "[";
    for (const auto& element : elements) {
        text += &element == &*elements.begin() ? "\n" : ",\n";
        text += lineStart + textOf(element);
    }
    return text + ']';
}

std::string RowText(const SpreadsheetRow& row) {
    return OneLine({{"name", TextValue(row.Name)}, {"cells", Array(row.Cells, CellValue)}});
}

std::string Member(const std::string& key, const std::string& value) {
    return ",\n   \"" + key + "\": " + value;
}

std::string DocumentText(const OutputEntry& entry) {
    const SpreadsheetDocument& document = entry.Spreadsheet;
    const auto nameOf = [](const SpreadsheetColumn& column) { return TextValue(column.Name); };
    const auto isWhole = [](const SpreadsheetColumn& column) { return Json(column.Whole); };
    std::string text = OneLine(
        {{"kind", "spreadsheet"}, {"command", entry.Command}, {"sequence", entry.Sequence}, {"step", entry.Step}});
    text.pop_back();  // the object goes on below
    text += Member("title", OneLine(Array(document.Title, TextValue)));
    text += Member("corner", OneLine(TextValue(document.Corner)));
    text += Member("columns", OneLine(Array(document.Columns, nameOf)));
    text += Member("whole", OneLine(Array(document.Columns, isWhole)));
    text += Member("rows", Stacked(document.Rows, "    ", RowText));
    return text + '}';
}

}  // namespace

std::string JsonView(const OutputCollection& outputs) {
    const Json data = {
        {"file", TextValue(outputs.FileName)}, {"cases", outputs.Cases}, {"variables", outputs.Variables}};
    return "{\"data\": " + OneLine(data) + ",\n \"documents\": " + Stacked(outputs.Entries, "  ", DocumentText) + "}\n";
}

}  // namespace quillara
