#include "workbench/formats/DelimitedWriter.h"

#include <set>
#include <unordered_map>

#include "workbench/data/Calendar.h"
#include "workbench/data/ExactNumbers.h"
#include "workbench/formats/DelimitedText.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {
namespace {

/// Whether each value that occurs has a label that no other has.
bool LabelsStandForValues(const Variable& variable) {
    std::set<double> values;
    for (const double value : variable.Values) {
        if (!variable.IsMissing(value)) {
            values.insert(value);
        }
    }
    std::set<std::string> labels;
    for (const double value : values) {
        const std::string* label = variable.LabelOf(value);
        if (label == nullptr || label->empty() || !labels.insert(*label).second) {
            return false;
        }
    }
    return true;
}

/// Gives the fields of one variable; each value is put into words once.
class FieldWriter {
  public:
    explicit FieldWriter(const Variable& variable)
        : Source(variable), ShowsLabels(variable.HasLabels() && LabelsStandForValues(variable)) {}

    const std::string& Field(std::size_t row) {
        const double value = Source.Values[row];
        const bool isText = ShowsLabels || Source.Kind != ValueKind::Number;
        if (!isText) {
            Last = Source.IsMissing(value) ? "" : ExactNumberText(value);
            return Last;
        }
        const auto [entry, isNew] = Fields.try_emplace(value);
        if (isNew && !Source.IsMissing(value)) {
            entry->second = QuotedField(TextOfValue(value));
        }
        return entry->second;
    }

  private:
    [[nodiscard]] std::string TextOfValue(double value) const {
        if (ShowsLabels) {
            return *Source.LabelOf(value);
        }
        switch (Source.Kind) {
            case ValueKind::Date:
                return TextFromDays(value);
            case ValueKind::TimeOfDay:
                return TextFromSeconds(value);
            case ValueKind::Text:
                return Source.Texts.at(static_cast<std::size_t>(value) - 1);
            case ValueKind::Number:
                break;
        }
        return ExactNumberText(value);
    }

    const Variable& Source;
    bool ShowsLabels;
    std::unordered_map<double, std::string> Fields;
    std::string Last;
};

}  // namespace

std::string TextOfTable(const DataTable& table, const std::function<bool()>& cancelled) {
    WorkMonitor monitor({}, cancelled);
    std::string text;
    std::vector<FieldWriter> writers;
    for (const Variable& variable : table.Variables) {
        text += writers.empty() ? "" : ",";
        text += QuotedField(variable.Name);
        writers.emplace_back(variable);
        monitor.Advance(variable.Values.size());
    }
    text += '\n';
    for (std::size_t row = 0; row < static_cast<std::size_t>(table.Cases); ++row) {
        for (std::size_t i = 0; i < writers.size(); ++i) {
            text += i == 0 ? "" : ",";
            text += writers[i].Field(row);
        }
        text += '\n';
        monitor.Advance(writers.size());
    }
    return text;
}

}  // namespace quillara
