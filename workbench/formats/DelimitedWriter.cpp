#include "workbench/formats/DelimitedWriter.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "workbench/data/Calendar.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/DelimitedText.h"
#include "workbench/formats/NamesInFile.h"
#include "workbench/formats/ReadBack.h"
#include "workbench/formats/RecordReader.h"
#include "workbench/formats/WorkMonitor.h"
#include "workbench/numbers/ExactNumbers.h"

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

/// One column of the text: the names of the cases, or a variable. Each value is put into words once.
class ShownColumn {
  public:
    ShownColumn(std::string name, const std::vector<std::string>& caseNames)
        : Title(std::move(name)), CaseNames(&caseNames) {}
    explicit ShownColumn(const Variable& variable)
        : Title(variable.Name),
          Source(&variable),
          ShowsLabels(variable.HasLabels() && LabelsStandForValues(variable)) {}

    [[nodiscard]] const std::string& Name() const { return Title; }

    const std::string& Field(std::size_t row) {
        if (CaseNames != nullptr) {
            return (*CaseNames)[row];
        }
        const double value = Source->Values[row];
        if (!ShowsLabels && Source->Kind == ValueKind::Number) {
            Last = TextUnlessMissing(value);
            return Last;
        }
        const auto [entry, isNew] = Fields.try_emplace(value);
        if (isNew) {
            entry->second = TextUnlessMissing(value);
        }
        return entry->second;
    }

  private:
    [[nodiscard]] std::string TextUnlessMissing(double value) const {
        if (Source->IsMissing(value)) {
            return {};
        }
        std::string text = TextOfValue(value);
        if (text.empty()) {
            throw DataError("Variable \"" + Title +
                            "\" has a value without a text, which csv can't tell from missing data: correct it.");
        }
        return text;
    }

    [[nodiscard]] std::string TextOfValue(double value) const {
        if (ShowsLabels) {
            return *Source->LabelOf(value);
        }
        switch (Source->Kind) {
            case ValueKind::Date:
                return TextFromDays(value);
            case ValueKind::TimeOfDay:
                return TextFromSeconds(value);
            case ValueKind::Text:
                return Source->Texts.at(static_cast<std::size_t>(value) - 1);
            case ValueKind::Number:
                break;
        }
        return ExactNumberText(value);
    }

    std::string Title;
    const std::vector<std::string>* CaseNames = nullptr;
    const Variable* Source = nullptr;
    bool ShowsLabels = false;
    std::unordered_map<double, std::string> Fields;
    std::string Last;
};

std::vector<ShownColumn> ColumnsOf(const DataTable& table) {
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

/// As fields are read.
std::string_view WithoutBlanksAround(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

/// Throws DataError unless the next record holds these fields.
template <typename FieldOfColumn>
void CheckRecord(RecordReader& reader, std::vector<ShownColumn>& columns, FieldOfColumn fieldOf) {
    std::vector<std::string_view> fields;
    const bool isThere = reader.Next(fields);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!isThere || i >= fields.size() || fields[i] != WithoutBlanksAround(fieldOf(columns[i]))) {
            throw ReadBackDifference("Variable \"" + columns[i].Name() + "\"", " from a csv file");
        }
    }
}

}  // namespace

std::string TextOfTable(const DataTable& table, const std::function<bool()>& cancelled) {
    WorkMonitor monitor({}, cancelled);
    std::string text;
    std::vector<ShownColumn> columns = ColumnsOf(table);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        text += (i == 0 ? "" : ",") + QuotedField(columns[i].Name());
    }
    text += '\n';
    for (std::size_t row = 0; row < static_cast<std::size_t>(table.Cases); ++row) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            text += i == 0 ? "" : ",";
            text += QuotedField(columns[i].Field(row));
        }
        text += '\n';
        monitor.Advance(columns.size());
    }
    return text;
}

void CheckDelimitedFile(const DataTable& table, const std::string& path, const std::function<bool()>& cancelled) {
    WorkMonitor monitor({}, cancelled);
    RecordReader reader(path, {.Separator = ','}, monitor);
    std::vector<ShownColumn> columns = ColumnsOf(table);
    CheckRecord(reader, columns, [](const ShownColumn& column) { return column.Name(); });
    for (std::size_t row = 0; row < static_cast<std::size_t>(table.Cases); ++row) {
        CheckRecord(reader, columns, [&](ShownColumn& column) -> const std::string& { return column.Field(row); });
    }
    std::vector<std::string_view> further;
    if (reader.Next(further)) {
        throw ReadBackDifference("The number of cases", " from a csv file");
    }
}

}  // namespace quillara
