#include "workbench/formats/ColumnFileLayout.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

#include <nlohmann/json.hpp>

#include "workbench/data/Errors.h"
#include "workbench/data/MissingReasons.h"

namespace quillara {
namespace {

using Json = nlohmann::ordered_json;

struct FormName {
    ColumnForm Form;
    std::string_view Name;
    std::uint64_t Bytes;
};

// clang-format off
constexpr auto FormWords = std::to_array<FormName>({
    {ColumnForm::Doubles,  "doubles",  8},
    {ColumnForm::Integers, "integers", 4},
    {ColumnForm::Codes8,   "codes8",   1},
    {ColumnForm::Codes16,  "codes16",  2},
});

constexpr auto KindWords = std::to_array<std::pair<ValueKind, std::string_view>>({
    {ValueKind::Number,    "number"},
    {ValueKind::Date,      "date"},
    {ValueKind::TimeOfDay, "time of day"},
    {ValueKind::DateTime,  "date with time"},
    {ValueKind::Text,      "text"},
});
// clang-format on

template <typename Rows, typename Key, typename Column>
const auto& RowOf(const Rows& rows, const Key& key, Column column) {
    const auto found = std::ranges::find(rows, key, column);
    if (found == rows.end()) {
        throw DataError("a word of the dictionary isn't known");
    }
    return *found;
}

std::string HexText(std::uint64_t number) {
    std::array<char, 16> digits{};
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr};
}

std::uint64_t NumberOfHex(const std::string& text) {
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    if (std::from_chars(text.data(), end, number, 16).ptr != end || text.empty()) {
        throw DataError("a checksum of the dictionary is none");
    }
    return number;
}

Json JsonOf(const FileSection& section) {
    return {{"offset", section.Offset}, {"bytes", section.Bytes}, {"checksum", HexText(section.Checksum)}};
}

FileSection SectionOf(const Json& json) {
    return {.Offset = json.at("offset").get<std::uint64_t>(),
            .Bytes = json.at("bytes").get<std::uint64_t>(),
            .Checksum = NumberOfHex(json.at("checksum").get<std::string>())};
}

Json JsonOf(const TextSection& texts) {
    Json json = JsonOf(texts.Where);
    json["count"] = texts.Count;
    return json;
}

TextSection TextsOf(const Json& json) {
    return {.Count = json.at("count").get<std::uint64_t>(), .Where = SectionOf(json)};
}

/// Labels and descriptions. What is no finite number has no place in JSON, and none among the labels of any file.
Json JsonOf(const std::map<double, ValueTexts>& labels) {
    Json json = Json::array();
    for (const auto& [value, texts] : labels) {
        if (std::isfinite(value)) {
            json.push_back({{"value", value}, {"label", texts.Label}, {"description", texts.Description}});
        }
    }
    return json;
}

std::map<double, ValueTexts> LabelsOf(const Json& json) {
    std::map<double, ValueTexts> labels;
    for (const Json& label : json) {
        labels[label.at("value").get<double>()] = {.Label = label.at("label").get<std::string>(),
                                                   .Description = label.at("description").get<std::string>()};
    }
    return labels;
}

/// Puts where a column stands to what else an object has.
void Add(Json& json, const StoredColumn& column) {
    json["form"] = RowOf(FormWords, column.Form, &FormName::Form).Name;
    json["entries"] = JsonOf(column.Entries);
    if (column.ValueCount > 0) {
        json["valueCount"] = column.ValueCount;
        json["values"] = JsonOf(column.Values);
    }
}

StoredColumn ColumnOf(const Json& json) {
    StoredColumn column;
    column.Form = RowOf(FormWords, json.at("form").get<std::string>(), &FormName::Name).Form;
    column.Entries = SectionOf(json.at("entries"));
    if (json.contains("values")) {
        column.ValueCount = json.at("valueCount").get<std::uint64_t>();
        column.Values = SectionOf(json.at("values"));
    }
    return column;
}

/// The end of a range; null for none.
Json JsonOfEnd(double end) {
    return std::isfinite(end) ? Json(end) : Json();
}

double EndOf(const Json& json, double none) {
    return json.is_null() ? none : json.get<double>();
}

Json JsonOf(const MissingReasons& missing, const std::optional<StoredColumn>& places) {
    Json json = {{"ranges", Json::array()}, {"reasons", Json::array()}};
    for (const MissingRange& range : missing.Ranges) {
        json["ranges"].push_back({JsonOfEnd(range.Lowest), JsonOfEnd(range.Highest)});
    }
    for (const MissingReason& reason : missing.Reasons) {
        Json& entry = json["reasons"].emplace_back(Json::object());
        entry[reason.Number ? "number" : "text"] = reason.Number ? Json(*reason.Number) : Json(reason.Text);
        entry["label"] = reason.Label;
    }
    if (places) {
        Add(json["places"], *places);
    }
    return json;
}

std::shared_ptr<const MissingReasons> ReasonsOf(const Json& json) {
    constexpr double endless = std::numeric_limits<double>::infinity();
    auto missing = std::make_shared<MissingReasons>();
    for (const Json& range : json.at("ranges")) {
        missing->Ranges.push_back({EndOf(range.at(0), -endless), EndOf(range.at(1), endless)});
    }
    for (const Json& entry : json.at("reasons")) {
        MissingReason& reason = missing->Reasons.emplace_back();
        if (entry.contains("number")) {
            reason.Number = entry.at("number").get<double>();
        } else {
            reason.Text = entry.at("text").get<std::string>();
        }
        reason.Label = entry.at("label").get<std::string>();
    }
    return missing;
}

Json JsonOf(const StoredVariable& variable) {
    const Variable& words = variable.Words;
    Json json = {{"name", words.Name},
                 {"longName", words.LongName},
                 {"kind", RowOf(KindWords, words.Kind, &std::pair<ValueKind, std::string_view>::first).second},
                 {"format", words.Format},
                 {"missing", words.MissingCode}};
    Add(json, variable.Values);
    if (variable.Texts.Count > 0) {
        json["texts"] = JsonOf(variable.Texts);
    }
    if (!words.Labels.empty()) {
        json["labels"] = JsonOf(words.Labels);
    }
    if (words.Reasons) {
        json["missingValues"] = JsonOf(*words.Reasons, variable.Places);
    }
    return json;
}

StoredVariable VariableOf(const Json& json) {
    StoredVariable variable;
    variable.Words.Name = json.at("name").get<std::string>();
    variable.Words.LongName = json.at("longName").get<std::string>();
    variable.Words.Kind =
        RowOf(KindWords, json.at("kind").get<std::string>(), &std::pair<ValueKind, std::string_view>::second).first;
    variable.Words.Format = json.at("format").get<std::string>();
    variable.Words.MissingCode = json.at("missing").get<double>();
    variable.Values = ColumnOf(json);
    if (json.contains("texts")) {
        variable.Texts = TextsOf(json.at("texts"));
    }
    if (json.contains("labels")) {
        variable.Words.Labels = LabelsOf(json.at("labels"));
    }
    if (json.contains("missingValues")) {
        const Json& missing = json.at("missingValues");
        variable.Words.Reasons = ReasonsOf(missing);
        variable.Places = missing.contains("places") ? std::optional(ColumnOf(missing.at("places"))) : std::nullopt;
    }
    return variable;
}

}  // namespace

std::uint64_t BytesOfEntry(ColumnForm form) {
    return RowOf(FormWords, form, &FormName::Form).Bytes;
}

std::string DictionaryText(const StoredTable& table) {
    Json json = {{"header", table.Words.Header}, {"cases", table.Words.Cases}};
    if (table.Words.Weight) {
        json["weight"] = *table.Words.Weight;
    }
    if (table.CaseNames.Count > 0) {
        json["caseNames"] = JsonOf(table.CaseNames);
    }
    json["variables"] = Json::array();
    for (const StoredVariable& variable : table.Variables) {
        json["variables"].push_back(JsonOf(variable));
    }
    try {
        return json.dump(1);
    } catch (const Json::exception&) {
        throw DataError("a name or label is no UTF-8");
    }
}

StoredTable TableOfDictionary(std::string_view text) {
    try {
        const Json json = Json::parse(text);
        StoredTable table;
        table.Words.Header = json.at("header").get<std::string>();
        table.Words.Cases = json.at("cases").get<std::int32_t>();
        if (json.contains("weight")) {
            table.Words.Weight = json.at("weight").get<std::size_t>();
        }
        if (json.contains("caseNames")) {
            table.CaseNames = TextsOf(json.at("caseNames"));
        }
        for (const Json& variable : json.at("variables")) {
            table.Variables.push_back(VariableOf(variable));
        }
        return table;
    } catch (const Json::exception&) {
        throw DataError("its dictionary can't be understood");
    }
}

}  // namespace quillara
