#include "workbench/command/VariableSummary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

#include "platform/OrderedBits.h"
#include "workbench/data/Calendar.h"
#include "workbench/views/JsonText.h"

namespace quillara {
namespace {

constexpr std::array<std::pair<ValueKind, const char*>, 4> TypeNames{{
    {ValueKind::Number, "number"},
    {ValueKind::Date, "date"},
    {ValueKind::TimeOfDay, "time"},
    {ValueKind::Text, "text"},
}};

std::string TypeOf(const Variable& variable) {
    return std::ranges::find(TypeNames, variable.Kind, &std::pair<ValueKind, const char*>::first)->second;
}

std::string TextOf(const Variable& variable, double value) {
    switch (variable.Kind) {
        case ValueKind::Date:
            return TextFromDays(value);
        case ValueKind::TimeOfDay:
            return TextFromSeconds(value);
        case ValueKind::Text:
            return variable.Texts[static_cast<std::size_t>(value) - 1];
        case ValueKind::Number:
            break;
    }
    return NumberValue(value).dump();
}

/// The values that the summary tells of: those with texts of their own and, for a text variable, all.
std::set<double> ValuesOf(const Variable& variable) {
    std::set<double> values;
    for (const auto& [value, texts] : variable.Labels) {
        values.insert(value);
    }
    for (std::size_t text = 1; text <= variable.Texts.size(); ++text) {
        values.insert(static_cast<double>(text));
    }
    return values;
}

std::string Copy(const std::string* text) {
    return text == nullptr ? std::string() : *text;
}

Json JsonOf(const LabelledValue& value, const std::string& type) {
    Json json;
    json["value"] = type == "number" ? NumberValue(value.Number) : Json(value.Text);
    json["label"] = value.Label;
    if (!value.Description.empty()) {
        json["description"] = value.Description;
    }
    return json;
}

Json JsonOf(const VariableSummary& summary) {
    Json labels = Json::array();
    for (const LabelledValue& value : summary.Values) {
        labels.push_back(JsonOf(value, summary.Type));
    }
    return {{"name", summary.Name},
            {"type", summary.Type},
            {"label", summary.Label},
            {"format", summary.Format},
            {"missing", summary.MissingCases},
            {"labels", std::move(labels)}};
}

void TakeValues(VariableSummary& summary, const Variable& variable) {
    const NearlyEqualRange missing = RangeNearlyEqualTo(variable.MissingCode);
    double smallest = std::numeric_limits<double>::infinity();
    double largest = -smallest;
    for (const double value : variable.Values) {
        if (missing.Contains(value)) {
            ++summary.MissingCases;
        } else if (std::isfinite(value)) {
            smallest = std::min(smallest, value);
            largest = std::max(largest, value);
        }
    }
    if (smallest <= largest && variable.Kind != ValueKind::Text) {
        summary.Smallest = TextOf(variable, smallest);
        summary.Largest = TextOf(variable, largest);
    }
}

}  // namespace

VariableSummary SummaryOf(const Variable& variable) {
    VariableSummary summary;
    summary.Name = variable.Name;
    summary.Type = TypeOf(variable);
    summary.Label = variable.LongName;
    summary.Format = variable.Format;
    TakeValues(summary, variable);
    for (const double value : ValuesOf(variable)) {
        summary.Values.push_back(
            {value, TextOf(variable, value), Copy(variable.LabelOf(value)), Copy(variable.DescriptionOf(value))});
    }
    return summary;
}

std::string VariablesAsJson(const DataTable& table) {
    Json json;
    json["data"] = {{"file", table.FileName}, {"cases", table.Cases}, {"variables", table.Variables.size()}};
    json["data"]["title"] = table.Header;
    json["data"]["weight"] = table.Weight ? Json(table.Variables[*table.Weight].Name) : Json();
    json["variables"] = Json::array();
    for (const Variable& variable : table.Variables) {
        json["variables"].push_back(JsonOf(SummaryOf(variable)));
    }
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace quillara
