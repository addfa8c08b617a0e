#include "workbench/formats/DelimitedWriter.h"

#include <array>
#include <charconv>
#include <set>
#include <unordered_map>

#include "workbench/data/Calendar.h"

namespace quillara {
namespace {

std::string TextOfNumber(double value) {
    std::array<char, 32> buffer;
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

/// A field as it stands in the text: in quotes when a reader could take it for more than one.
std::string FieldOf(const std::string& text) {
    if (text.find_first_of("\",;\t|\r\n") == std::string::npos) {
        return text;
    }
    std::string field = "\"";
    for (const char character : text) {
        field += character;
        if (character == '"') {
            field += character;
        }
    }
    return field + '"';
}

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
            Last = Source.IsMissing(value) ? "" : TextOfNumber(value);
            return Last;
        }
        const auto [entry, isNew] = Fields.try_emplace(value);
        if (isNew && !Source.IsMissing(value)) {
            entry->second = FieldOf(TextOfValue(value));
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
        return TextOfNumber(value);
    }

    const Variable& Source;
    bool ShowsLabels;
    std::unordered_map<double, std::string> Fields;
    std::string Last;
};

}  // namespace

std::string TextOfTable(const DataTable& table) {
    std::string text;
    std::vector<FieldWriter> writers;
    for (const Variable& variable : table.Variables) {
        text += writers.empty() ? "" : ",";
        text += FieldOf(variable.Name);
        writers.emplace_back(variable);
    }
    text += '\n';
    for (std::size_t row = 0; row < static_cast<std::size_t>(table.Cases); ++row) {
        for (std::size_t i = 0; i < writers.size(); ++i) {
            text += i == 0 ? "" : ",";
            text += writers[i].Field(row);
        }
        text += '\n';
    }
    return text;
}

}  // namespace quillara
