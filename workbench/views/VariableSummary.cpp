#include "workbench/views/VariableSummary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <set>
#include <utility>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/ValueText.h"
#include "workbench/views/JsonText.h"

namespace quillara {
namespace {

constexpr std::size_t MostBars = 10;

constexpr std::array<std::pair<ValueKind, const char*>, 5> TypeNames{{
    {ValueKind::Number, "number"},
    {ValueKind::Date, "date"},
    {ValueKind::TimeOfDay, "time"},
    {ValueKind::DateTime, "datetime"},
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
        case ValueKind::DateTime:
            return TextFromDateTime(value);
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

Json RoleValue(DefaultRole role) {
    return role == DefaultRole::None ? Json() : Json(role == DefaultRole::Categorical ? "categorical" : "continuous");
}

std::array<double, 5> ValuesOf(const FiveNumbers& numbers) {
    return {numbers.Smallest, numbers.LowerQuartile, numbers.Median, numbers.UpperQuartile, numbers.Largest};
}

/// From the smallest to the largest; null without values.
Json QuantilesOf(const VariableSummary& summary) {
    if (summary.Quantiles.empty()) {
        return {};
    }
    Json quantiles = Json::array();
    for (std::size_t place = 0; place < summary.Quantiles.size(); ++place) {
        quantiles.push_back(summary.Type == "number" ? NumberValue(ValuesOf(*summary.Spread.Numbers)[place])
                                                     : Json(summary.Quantiles[place]));
    }
    return quantiles;
}

Json JsonOf(const Remark& remark) {
    return {{"code", remark.Code}, {"text", remark.Text}, {"advice", remark.Advice}};
}

/// Ranges from null, for the lowest number, or to null, for the highest.
Json MissingValuesOf(const VariableSummary& summary) {
    Json json = {{"ranges", Json::array()}, {"values", Json::array()}};
    for (const MissingRange& range : summary.MissingRanges) {
        json["ranges"].push_back({NumberValue(range.Lowest), NumberValue(range.Highest)});
    }
    for (const MissingCode& code : summary.MissingCodes) {
        const bool isNumber = summary.Type == "number" && code.Reason.Number;
        json["values"].push_back({{"value", isNumber ? NumberValue(*code.Reason.Number) : Json(code.Text)},
                                  {"label", code.Reason.Label},
                                  {"cases", code.Cases}});
    }
    return json;
}

Json JsonOf(const VariableSummary& summary) {
    Json labels = Json::array();
    for (const LabelledValue& value : summary.Values) {
        labels.push_back(JsonOf(value, summary.Type));
    }
    Json json = {{"name", summary.Name},
                 {"type", summary.Type},
                 {"role", RoleValue(summary.Role)},
                 {"label", summary.Label},
                 {"format", summary.Format},
                 {"missing", summary.Spread.Missing},
                 {"distinct", summary.Spread.Distinct},
                 {"quantiles", QuantilesOf(summary)},
                 {"bars", summary.Spread.Bars},
                 {"labels", std::move(labels)}};
    if (!summary.MissingCodes.empty() || !summary.MissingRanges.empty()) {
        json["missingValues"] = MissingValuesOf(summary);
    }
    return json;
}

/// A large number has two decimals at most, in place of the sixth digit and a power of ten.
std::string RoundedText(ValueKind kind, double value) {
    constexpr double leastLarge = 1e4;
    constexpr double parts = 100.0;
    constexpr double leastHuge = 1e13;  // that has no such decimals
    const double size = std::fabs(value);
    return kind == ValueKind::Number && size >= leastLarge && size < leastHuge
               ? NumberValue(std::round(value * parts) / parts).dump()
               : TextOfValue(kind, value);
}

void TakeSpread(VariableSummary& summary, const Variable& variable) {
    summary.Role = DefaultRoleOf(variable);
    summary.Spread = SpreadOf(variable, MostBars);
    if (const std::optional<FiveNumbers>& numbers = summary.Spread.Numbers) {
        for (const double value : ValuesOf(*numbers)) {
            const bool isInner = value != numbers->Smallest && value != numbers->Largest;
            const bool isTold = variable.Kind == ValueKind::Number || variable.Kind == ValueKind::DateTime;
            summary.Quantiles.push_back(isInner && isTold ? RoundedText(variable.Kind, value)
                                                          : TextOf(variable, value));
        }
    }
}

void TakeMissing(VariableSummary& summary, const Variable& variable) {
    if (!variable.Reasons) {
        return;
    }
    std::ranges::copy_if(variable.Reasons->Ranges, std::back_inserter(summary.MissingRanges),
                         [](const MissingRange& range) { return range.Lowest != range.Highest; });
    const std::vector<std::size_t> counts = variable.Reasons->Counts();
    for (std::size_t place = 1; place < counts.size(); ++place) {
        const MissingReason& reason = variable.Reasons->Reasons[place - 1];
        summary.MissingCodes.push_back({reason, CodeOfReason(variable, reason), counts[place]});
    }
}

}  // namespace

VariableSummary SummaryOf(const Variable& variable) {
    VariableSummary summary;
    summary.Name = variable.Name;
    summary.Type = TypeOf(variable);
    summary.Label = variable.LongName;
    summary.Format = variable.Format;
    TakeSpread(summary, variable);
    TakeMissing(summary, variable);
    for (const double value : ValuesOf(variable)) {
        summary.Values.push_back(
            {value, TextOf(variable, value), Copy(variable.LabelOf(value)), Copy(variable.DescriptionOf(value))});
    }
    return summary;
}

std::string VariablesAsJson(const DataTable& table, const std::vector<Remark>& remarks) {
    Json json;
    json["data"] = {{"file", table.FileName}, {"cases", table.Cases}, {"variables", table.Variables.size()}};
    json["data"]["title"] = table.Header;
    json["data"]["weight"] = table.Weight ? Json(table.Variables[*table.Weight].Name) : Json();
    for (const Remark& remark : remarks) {
        json["remarks"].push_back(JsonOf(remark));
    }
    json["variables"] = Json::array();
    for (const Variable& variable : table.Variables) {
        json["variables"].push_back(JsonOf(SummaryOf(variable)));
    }
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace quillara
