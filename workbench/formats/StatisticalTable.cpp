#include "workbench/formats/StatisticalTable.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "workbench/data/QuotedText.h"
#include "workbench/formats/ForeignTime.h"
#include "workbench/formats/NotedFacts.h"
#include "workbench/formats/StatisticalReasons.h"
#include "workbench/formats/VariableNames.h"

namespace quillara {
namespace {

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

/// Gives a variable the reasons of its missing data, as they stand in the file. Those that a point in time can't stand
/// for are lost.
void TakeReasons(Variable& variable, std::shared_ptr<MissingReasons> reasons, const ForeignTime* time,
                 const std::function<void(const Remark&)>& notice) {
    if (!reasons || time == nullptr || ConvertReasons(*time, *reasons)) {
        variable.Reasons = std::move(reasons);
    } else if (notice) {
        notice({"missing-values-lost",
                "The missing values of " + Quoted(variable.Name) +
                    " are no whole days or times of day, as its values are; they become blank fields.",
                ""});
    }
}

void FillNumbers(Variable& variable, StatisticalColumn& column, const LabelSet& labelSet, std::string_view extension,
                 const std::function<void(const Remark&)>& notice) {
    std::shared_ptr<MissingReasons> reasons = TakeReasonsOfNumbers(column, labelSet);
    std::ranges::replace_if(
        column.Numbers, [](double value) { return !std::isfinite(value); }, std::numeric_limits<double>::quiet_NaN());
    std::map<double, std::string> labels = labelSet.OfNumbers;
    std::erase_if(labels, [&](const auto& entry) {
        return !std::isfinite(entry.first) || IsWithinAny(column.MissingNumbers, entry.first);
    });
    const std::optional<ForeignTime> time = ForeignTime::Find(extension, column.Format);
    const std::optional<ForeignTime> withTimes = time ? time->WithTimes() : std::nullopt;
    const ForeignTime* used = nullptr;
    if (time && ConvertAll(*time, column.Numbers, labels)) {
        used = &*time;
    } else if (withTimes && ConvertAll(*withTimes, column.Numbers, labels)) {
        used = &*withTimes;
    }
    if (used != nullptr) {
        variable.Kind = used->Kind();
    }
    TakeReasons(variable, std::move(reasons), used, notice);
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
    variable.Reasons = TakeReasonsOfTexts(column, labelSet);
}

}  // namespace

void AppendText(StatisticalColumn& column, const std::string& text) {
    const bool isReason = !text.empty() && IsWithinAny(column.MissingTexts, text);
    if (text.empty() || isReason) {
        column.Texts.AppendMissing();
    } else {
        column.Texts.Append(text);
    }
    if (!column.MissingTexts.empty()) {
        const std::size_t next = column.ReasonCodes.size() + 1;
        column.ReasonRows.Append(isReason ? column.ReasonCodes.try_emplace(text, next).first->second : 0);
    }
}

DataTable TableOf(StatisticalContent content, std::string_view extension, WorkMonitor& monitor,
                  const std::function<void(const Remark&)>& notice) {
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
            FillNumbers(variable, column, labelSet, extension, notice);
        }
        monitor.Advance(static_cast<std::size_t>(content.Cases));
    }
    ApplyNotes(table, content.Notes);
    return table;
}

}  // namespace quillara
