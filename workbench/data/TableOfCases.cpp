#include "workbench/data/TableOfCases.h"

#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "workbench/data/MissingReasons.h"

namespace quillara {
namespace {

/// The texts of the cases, and the labels that go with them.
void TakeTexts(const Variable& source, const std::vector<std::size_t>& rows, Variable& taken) {
    std::vector<std::optional<std::string>> texts;
    texts.reserve(rows.size());
    for (const std::size_t row : rows) {
        const double value = source.Values[row];
        const bool isMissing = source.IsMissing(value);
        texts.push_back(isMissing ? std::nullopt : std::optional(source.Texts.at(static_cast<std::size_t>(value) - 1)));
    }
    EncodeTexts(taken, texts);
    std::map<std::string, const ValueTexts*> labels;
    for (const auto& [value, label] : source.Labels) {
        labels.emplace(source.Texts.at(static_cast<std::size_t>(value) - 1), &label);
    }
    for (std::size_t i = 0; i < taken.Texts.size(); ++i) {
        if (const auto found = labels.find(taken.Texts[i]); found != labels.end()) {
            taken.Labels[static_cast<double>(i + 1)] = *found->second;
        }
    }
}

void TakeNumbers(const Variable& source, const std::vector<std::size_t>& rows, Variable& taken) {
    std::vector<double> values;
    values.reserve(rows.size());
    for (const std::size_t row : rows) {
        const double value = source.Values[row];
        values.push_back(source.IsMissing(value) ? std::numeric_limits<double>::quiet_NaN() : value);
    }
    taken.Labels = source.Labels;
    EncodeNumbers(taken, std::move(values));
}

Variable WithCases(const Variable& source, const std::vector<std::size_t>& rows) {
    Variable taken;
    taken.Name = source.Name;
    taken.LongName = source.LongName;
    taken.Kind = source.Kind;
    taken.Format = source.Format;
    if (source.Kind == ValueKind::Text) {
        TakeTexts(source, rows, taken);
    } else {
        TakeNumbers(source, rows, taken);
    }
    taken.Reasons = ReasonsOfRows(source.Reasons, rows);
    return taken;
}

}  // namespace

DataTable TableOfCases(const DataTable& table, std::span<const CaseResult> results) {
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < results.size(); ++row) {
        if (results[row] == CaseResult::Use) {
            rows.push_back(row);
        }
    }
    DataTable taken;
    taken.FileName = table.FileName;
    taken.Header = table.Header;
    taken.Cases = static_cast<std::int32_t>(rows.size());
    taken.Weight = table.Weight;
    for (const Variable& variable : table.Variables) {
        taken.Variables.push_back(WithCases(variable, rows));
    }
    for (const std::size_t row : rows) {
        if (!table.CaseNames.empty()) {
            taken.CaseNames.push_back(table.CaseNames[row]);
        }
    }
    return taken;
}

}  // namespace quillara
