#include "workbench/formats/StatisticalTable.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "workbench/formats/DelimitedTable.h"
#include "workbench/formats/ForeignTime.h"
#include "workbench/formats/NotedFacts.h"

namespace quillara {
namespace {

template <typename Value>
bool IsWithinAny(const std::vector<std::pair<Value, Value>>& ranges, const Value& value) {
    return std::ranges::any_of(ranges,
                               [&](const auto& range) { return range.first <= value && value <= range.second; });
}

/// Replaces values and label keys by their converted ones; false, with nothing changed, when a value rules that out.
bool ConvertAll(const ForeignTime& time, std::vector<double>& values, std::map<double, std::string>& labels) {
    std::vector<double> converted = values;
    for (double& value : converted) {
        if (std::isnan(value)) {
            continue;
        }
        const std::optional<double> ours = time.Convert(value);
        if (!ours) {
            return false;
        }
        value = *ours;
    }
    std::map<double, std::string> convertedLabels;
    for (auto& [value, label] : labels) {
        if (const std::optional<double> ours = time.Convert(value)) {
            convertedLabels[*ours] = std::move(label);
        }
    }
    values = std::move(converted);
    labels = std::move(convertedLabels);
    return true;
}

void FillNumbers(Variable& variable, StatisticalColumn& column, const LabelSet& labelSet, std::string_view extension) {
    for (double& value : column.Numbers) {
        if (!std::isfinite(value) || IsWithinAny(column.MissingNumbers, value)) {
            value = std::numeric_limits<double>::quiet_NaN();
        }
    }
    std::map<double, std::string> labels = labelSet.OfNumbers;
    std::erase_if(labels, [&](const auto& entry) {
        return !std::isfinite(entry.first) || IsWithinAny(column.MissingNumbers, entry.first);
    });
    const std::optional<ForeignTime> time = ForeignTime::Find(extension, column.Format);
    if (time && ConvertAll(*time, column.Numbers, labels)) {
        variable.Kind = time->Kind();
    }
    EncodeNumbers(variable, std::move(column.Numbers));
    for (auto& [value, label] : labels) {
        // A label of a value that no case has may stand where the missing code came to lie.
        if (!variable.IsMissing(value)) {
            variable.Labels[value].Label = std::move(label);
        }
    }
}

void FillTexts(Variable& variable, StatisticalColumn& column, const LabelSet& labelSet) {
    column.Texts.Finish(variable);
    for (std::size_t i = 0; i < variable.Texts.size(); ++i) {
        const auto label = labelSet.OfTexts.find(variable.Texts[i]);
        if (label != labelSet.OfTexts.end()) {
            variable.Labels[static_cast<double>(i + 1)].Label = label->second;
        }
    }
}

}  // namespace

void AppendText(StatisticalColumn& column, const std::string& text) {
    if (text.empty() || IsWithinAny(column.MissingTexts, text)) {
        column.Texts.AppendMissing();
    } else {
        column.Texts.Append(text);
    }
}

DataTable TableOf(StatisticalContent content, std::string_view extension, WorkMonitor& monitor) {
    CheckSize(content.Columns.size(), static_cast<std::size_t>(content.Cases));
    std::vector<std::string> names;
    for (const StatisticalColumn& column : content.Columns) {
        names.push_back(column.Name);
    }
    names = VariableNames(std::move(names));

    DataTable table;
    table.Header = content.FileLabel;
    table.Cases = static_cast<std::int32_t>(content.Cases);
    table.Weight = content.Weight;
    for (std::size_t i = 0; i < names.size(); ++i) {
        StatisticalColumn column = std::move(content.Columns[i]);
        Variable& variable = table.Variables.emplace_back();
        variable.Name = std::move(names[i]);
        variable.LongName = column.Label;
        variable.Format = column.Format;
        const LabelSet& labelSet = content.LabelSets[column.LabelSetName];
        if (column.IsText) {
            FillTexts(variable, column, labelSet);
        } else {
            FillNumbers(variable, column, labelSet, extension);
        }
        monitor.Advance(static_cast<std::size_t>(content.Cases));
    }
    ApplyNotes(table, content.Notes);
    return table;
}

}  // namespace quillara
