#include "workbench/formats/DelimitedColumns.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/formats/NamesInFile.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

bool HasOwnLabels(const Variable& variable) {
    return std::ranges::any_of(variable.Labels, [](const auto& entry) { return !entry.second.Label.empty(); });
}

/// Whether each value that occurs has a label that no other has.
bool LabelsStandForValues(const Variable& variable) {
    std::unordered_set<double> values;
    std::unordered_set<std::string_view> labels;
    return HoldsForAll(variable.Values, [&](double value) {
        if (variable.IsMissing(value) || !values.insert(value).second) {
            return true;
        }
        const std::string* label = variable.LabelOf(value);
        return label != nullptr && labels.insert(*label).second;
    });
}

}  // namespace

ShownColumn::ShownColumn(std::string name, const std::vector<std::string>& caseNames)
    : Title(std::move(name)), CaseNames(&caseNames) {}

ShownColumn::ShownColumn(const Variable& variable)
    : Title(variable.Name), Shown(&variable), HasLabels(HasOwnLabels(variable) && LabelsStandForValues(variable)) {}

ValueKind ShownColumn::Kind() const {
    return HasLabels || Shown == nullptr ? ValueKind::Text : Shown->Kind;
}

bool ShownColumn::IsMissing(std::size_t row) const {
    return Shown == nullptr ? (*CaseNames)[row].empty() : Shown->IsMissing(Shown->Values[row]);
}

const std::string& ShownColumn::Field(std::size_t row) {
    if (Shown == nullptr) {
        return (*CaseNames)[row];
    }
    const double value = Shown->Values[row];
    if (Shown->Kind == ValueKind::Text && !HasLabels && !IsMissing(row)) {
        return Shown->Texts.at(static_cast<std::size_t>(value) - 1);
    }
    if (Kind() == ValueKind::Number) {
        Last = IsMissing(row) ? "" : TextOf(value);
        return Last;
    }
    const auto [entry, isNew] = Fields.try_emplace(value);
    if (isNew && !IsMissing(row)) {
        entry->second = TextOf(value);
    }
    return entry->second;
}

std::string ShownColumn::TextOf(double value) const {
    if (HasLabels) {
        return *Shown->LabelOf(value);
    }
    switch (Shown->Kind) {
        case ValueKind::Date:
            return TextFromDays(value);
        case ValueKind::TimeOfDay:
            return TextFromSeconds(value);
        case ValueKind::DateTime:
            return TextFromDateTime(value, 'T');
        case ValueKind::Text:  // shown as they stand
        case ValueKind::Number:
            break;
    }
    return ExactNumberText(value);
}

std::vector<ShownColumn> ShownColumns(const DataTable& table) {
    std::vector<ShownColumn> columns;
    if (!table.CaseNames.empty()) {
        std::vector<std::string> names;
        for (const Variable& variable : table.Variables) {
            names.push_back(variable.Name);
        }
        columns.emplace_back(FreeNameForCases(names), table.CaseNames);
    }
    for (const Variable& variable : table.Variables) {
        columns.emplace_back(variable);
    }
    return columns;
}

}  // namespace quillara
