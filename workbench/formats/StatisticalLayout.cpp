#include "workbench/formats/StatisticalLayout.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "workbench/data/DateTimes.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/NoteKinds.h"
#include "workbench/formats/NotedFacts.h"
#include "workbench/formats/ReasonLosses.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

constexpr double NoValue = std::numeric_limits<double>::quiet_NaN();

[[noreturn]] void Refuse(const std::string& variable, const std::string& reason) {
    throw DataError("Variable \"" + variable + "\" " + reason);
}

/// Refuses texts that wouldn't come back from the fields of a file.
void CheckTexts(const Variable& variable, const StatisticalRules& rules) {
    const std::string format(rules.Extension);
    for (const std::string& text : variable.Texts) {
        if (text.size() > rules.TextBytes) {
            Refuse(variable.Name, "has a text of " + std::to_string(text.size()) + " bytes; a " + format +
                                      " file holds at most " + std::to_string(rules.TextBytes) +
                                      ": write dta or csv, or shorten the text.");
        }
        if (text.empty() || text.ends_with(' ')) {
            Refuse(variable.Name, "has a text that is empty or ends with a blank, which a " + format +
                                      " file can't tell from missing data or a shorter text: change the text.");
        }
        if (text.find('\0') != std::string::npos) {
            Refuse(variable.Name, "has a text with a null byte, which a " + format + " file can't hold: remove it.");
        }
    }
}

Variable NamesAsVariable(const DataTable& table) {
    std::vector<std::string> names;
    for (const Variable& variable : table.Variables) {
        names.push_back(variable.Name);
    }
    std::vector<std::optional<std::string>> texts(table.CaseNames.begin(), table.CaseNames.end());
    std::ranges::replace(texts, std::optional<std::string>(""), std::nullopt);
    Variable variable;
    variable.Name = FreeNameForCases(names);
    EncodeTexts(variable, texts);
    return variable;
}

bool HasLabelsBesideTexts(const Variable& variable) {
    return variable.Kind == ValueKind::Text &&
           std::ranges::any_of(variable.Labels, [](const auto& entry) { return !entry.second.Label.empty(); });
}

/// The numbers of a text variable, each labelled with what it is shown as.
Variable AsLabelledNumbers(const Variable& texts) {
    Variable numbers = texts;
    numbers.Kind = ValueKind::Number;
    numbers.Format.clear();
    numbers.Texts.clear();
    numbers.Reasons = nullptr;
    for (std::size_t i = 1; i <= texts.Texts.size(); ++i) {
        const auto number = static_cast<double>(i);
        if (const std::string* label = texts.LabelOf(number)) {
            numbers.Labels[number].Label = *label;
        }
    }
    return numbers;
}

/// Whether a file of a kind without labels of all numbers can label this one. The highest are missing data there.
bool IsLabelKey(double number) {
    constexpr double lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double highest = std::numeric_limits<std::int32_t>::max() - 27;
    return std::floor(number) == number && lowest < number && number <= highest;
}

/// Fills one column, and the notes with what the column has no room for.
class ColumnLayout {
  public:
    ColumnLayout(const StatisticalRules& rules, FileColumn& column, std::vector<FileNote>& notes)
        : Rules(rules), Column(column), Content(*column.Content), Notes(notes) {}

    void Fill() {
        if (Column.Name != Content.Name) {
            AddNote(noteKinds::Name, "", Content.Name);
        }
        Column.LongName = Kept(Content.LongName, Rules.LongName, noteKinds::LongName);
        if (Content.Kind == ValueKind::Text) {
            CheckTexts(Content, Rules);
        } else {
            Column.Format = FormatInFile(Content, Rules.Extension, OrdinaryFormat());
            if (Content.Kind == ValueKind::DateTime && HoldsForAll(Content.Values, [&](double value) {
                    return Content.IsMissing(value) || std::fmod(value, SecondsOfDay) == 0.0;
                })) {
                AddNote(noteKinds::DateTime, "", "");
            }
        }
        for (const auto& [value, texts] : Content.Labels) {
            if (const std::optional<std::string> key = KeyOf(value)) {
                AddLabel(value, *key, texts);
            }
        }
        if (Column.Reasons != nullptr) {
            for (const MissingReason& reason : Column.Reasons->Reasons) {
                Column.ReasonLabels.push_back(
                    Kept(reason.Label, Rules.ValueLabel, noteKinds::ValueLabel, KeyOfReason(reason)));
            }
        }
    }

  private:
    [[nodiscard]] std::string_view OrdinaryFormat() const {
        if (Content.Kind != ValueKind::DateTime) {
            return Content.Kind == ValueKind::TimeOfDay ? Rules.TimeFormat : Rules.DateFormat;
        }
        const bool isWhole = HoldsForAll(Content.Values, [](double value) { return std::floor(value) == value; });
        return isWhole ? Rules.DateTimeFormat : Rules.PreciseDateTimeFormat;
    }

    void AddNote(std::string_view kind, const std::string& value, const std::string& text) {
        Notes.push_back({std::string(kind), Column.Name, value, text});
    }

    /// What the field has of a text; a note has the whole of one that is cut.
    std::string Kept(const std::string& text, const TextRoom& room, std::string_view kind,
                     const std::string& value = "") {
        std::string kept = Fitted(text, room);
        if (kept != text) {
            AddNote(kind, value, text);
        }
        return kept;
    }

    /// A value as the notes call it; nothing for one that can't be labelled.
    [[nodiscard]] std::optional<std::string> KeyOf(double value) const {
        if (!std::isfinite(value) || Content.IsMissing(value)) {
            return {};
        }
        if (Content.Kind != ValueKind::Text) {
            return ExactNumberText(value);
        }
        const bool isPlace =
            std::floor(value) == value && 1 <= value && value <= static_cast<double>(Content.Texts.size());
        return isPlace ? std::optional(Content.Texts[static_cast<std::size_t>(value) - 1]) : std::nullopt;
    }

    [[nodiscard]] bool HasRoomForLabelOf(double value) const {
        return Rules.LabelsAllNumbers || IsLabelKey(Column.NumberInFile(value));
    }

    void AddLabel(double value, const std::string& key, const ValueTexts& texts) {
        if (!texts.Description.empty()) {
            AddNote(noteKinds::Description, key, texts.Description);
        }
        const TextRoom room = HasRoomForLabelOf(value) ? Rules.ValueLabel : TextRoom{};
        std::string label = Kept(texts.Label, room, noteKinds::ValueLabel, key);
        if (!label.empty()) {
            Column.Labels.emplace_back(value, std::move(label));
        }
    }

    const StatisticalRules& Rules;
    FileColumn& Column;
    const Variable& Content;
    std::vector<FileNote>& Notes;
};

/// Dates with times as the file can tell them; nothing where it can tell all as they are.
std::optional<Variable> AsTheFileTells(const Variable& variable, const StatisticalRules& rules) {
    if (variable.Kind != ValueKind::DateTime) {
        return {};
    }
    const ForeignTime time = *ForeignTime::Find(rules.Extension, rules.DateTimeFormat)->WithTimes();
    const auto isTold = [&](double value) { return variable.IsMissing(value) || time.Invert(value); };
    if (HoldsForAll(variable.Values, isTold)) {
        return {};
    }
    Variable told = variable;
    std::vector<double> values;
    for (const double value : variable.Values) {
        const std::optional<double> nearest = time.Nearest(value);
        const bool isKept = variable.IsMissing(value) || !nearest;
        values.push_back(variable.IsMissing(value) ? NoValue : isKept ? value : *time.Convert(*nearest));
    }
    EncodeNumbers(told, std::move(values));
    return told;
}

std::string LostParts(const Variable& variable, const StatisticalRules& rules) {
    return "Variable \"" + variable.Name + "\": parts of a second are rounded to what a " +
           std::string(rules.Extension) + " file can tell (write csv).";
}

std::size_t LongestText(const FileColumn& column) {
    std::size_t longest = 1;
    for (const std::string& text : column.Content->Texts) {
        longest = std::max(longest, text.size());
    }
    for (std::size_t i = 0; column.Reasons != nullptr && i < column.Reasons->Reasons.size(); ++i) {
        longest = std::max(longest, column.Reasons->Reasons[i].Text.size());
    }
    return column.Content->Kind == ValueKind::Text ? longest : 0;
}

void AddColumns(StatisticalLayout& layout, const DataTable& table, const StatisticalRules& rules) {
    if (layout.HasCaseNames) {
        layout.Columns.emplace_back().Content = &layout.Made.emplace_back(NamesAsVariable(table));
    }
    for (const Variable& variable : table.Variables) {
        const bool keepsReasons = HasRoomForReasons(variable, rules.DeclaresMissing);
        if (!keepsReasons && !variable.Reasons->Places.empty()) {
            layout.Losses.push_back(LostReasons(variable, rules.Extension));
        }
        const bool isOther = !rules.LabelsTexts && HasLabelsBesideTexts(variable);
        std::optional<Variable> made = isOther ? AsLabelledNumbers(variable) : AsTheFileTells(variable, rules);
        if (made && !isOther) {
            layout.Losses.push_back(LostParts(variable, rules));
        }
        layout.Columns.emplace_back().Content = made ? &layout.Made.emplace_back(std::move(*made)) : &variable;
        layout.Columns.back().Reasons = keepsReasons ? variable.Reasons.get() : nullptr;
    }
    std::vector<NamedColumn> wanted;
    for (FileColumn& column : layout.Columns) {
        column.TextBytes = LongestText(column);
        wanted.push_back({column.Content->Name, column.TextBytes});
    }
    const std::vector<std::string> names = NamesInFile(wanted, rules.Names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        layout.Columns[i].Name = names[i];
    }
}

void AddWeight(StatisticalLayout& layout, std::size_t weight, const StatisticalRules& rules) {
    if (rules.DeclaresWeight && layout.Columns[weight].Content->Kind != ValueKind::Text) {
        layout.Weight = weight;
    } else {
        layout.Notes.push_back({std::string(noteKinds::Weight), layout.Columns[weight].Name, "", ""});
    }
}

}  // namespace

double FileColumn::NumberInFile(double value) const {
    const std::optional<double> number = Format.Time ? Format.Time->Invert(value) : std::optional(value);
    if (!number) {
        Refuse(Content->Name,
               "has the value " + ExactNumberText(value) +
                   ", which isn't a date or time of day that a file can hold: write csv, or correct it.");
    }
    return *number;
}

StatisticalLayout LayOut(const DataTable& table, const StatisticalRules& rules) {
    StatisticalLayout layout;
    layout.HasCaseNames = !table.CaseNames.empty();
    AddColumns(layout, table, rules);
    layout.Header = Fitted(table.Header, rules.Header);
    if (layout.Header != table.Header) {
        layout.Notes.push_back({std::string(noteKinds::Header), "", "", table.Header});
    }
    for (FileColumn& column : layout.Columns) {
        ColumnLayout(rules, column, layout.Notes).Fill();
    }
    const std::size_t firstVariable = layout.HasCaseNames ? 1 : 0;
    if (layout.HasCaseNames) {
        layout.Notes.push_back({std::string(noteKinds::CaseNames), layout.Columns.front().Name, "", ""});
    }
    if (table.Weight) {
        AddWeight(layout, *table.Weight + firstVariable, rules);
    }
    return layout;
}

}  // namespace quillara
