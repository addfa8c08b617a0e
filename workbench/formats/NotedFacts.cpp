#include "workbench/formats/NotedFacts.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <set>

#include "workbench/data/DateTimes.h"
#include "workbench/formats/Encoding.h"
#include "workbench/formats/FileNotes.h"
#include "workbench/formats/NoteKinds.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

void Complete(std::string& text, const std::string& whole) {
    if (whole.starts_with(text)) {
        text = whole;
    }
}

/// The value that a note calls so; nothing for a text that no case has.
std::optional<double> ValueCalled(const Variable& variable, const std::string& key) {
    if (variable.Kind == ValueKind::Text) {
        const auto text = std::ranges::lower_bound(variable.Texts, key);
        const bool isThere = text != variable.Texts.end() && *text == key;
        return isThere ? std::optional(static_cast<double>(text - variable.Texts.begin() + 1)) : std::nullopt;
    }
    double value = 0;
    const char* const end = key.data() + key.size();
    const auto read = std::from_chars(key.data(), end, value);
    const bool isNumber = read.ec == std::errc() && read.ptr == end && std::isfinite(value);
    return isNumber && !variable.IsMissing(value) ? std::optional(value) : std::nullopt;
}

/// The reason of missing data that a note calls so; null for another value.
const MissingReason* ReasonCalled(const Variable& variable, const std::string& key) {
    if (!variable.Reasons) {
        return nullptr;
    }
    const auto& reasons = variable.Reasons->Reasons;
    const auto found = std::ranges::find(reasons, key, KeyOfReason);
    return found == reasons.end() ? nullptr : &*found;
}

/// Takes a text variable out of the table as the names of its cases.
void MakeCaseNames(DataTable& table, std::size_t index) {
    const Variable& variable = table.Variables[index];
    if (variable.Kind != ValueKind::Text) {
        return;
    }
    for (const double value : variable.Values) {
        const bool isMissing = variable.IsMissing(value);
        table.CaseNames.push_back(isMissing ? "" : variable.Texts[static_cast<std::size_t>(value) - 1]);
    }
    table.Variables.erase(table.Variables.begin() + static_cast<std::ptrdiff_t>(index));
    if (table.Weight && *table.Weight > index) {
        --*table.Weight;
    }
}

/// Dates become the midnights that they begin with.
void MakeDateTimes(Variable& variable) {
    if (variable.Kind != ValueKind::Date) {
        return;
    }
    std::vector<double> seconds;
    for (const double day : variable.Values) {
        const bool isMissing = variable.IsMissing(day);
        seconds.push_back(isMissing ? std::numeric_limits<double>::quiet_NaN() : day * SecondsOfDay);
    }
    std::map<double, ValueTexts> labels;
    for (auto& [day, texts] : variable.Labels) {
        labels[day * SecondsOfDay] = std::move(texts);
    }
    variable.Kind = ValueKind::DateTime;
    variable.Labels = std::move(labels);
    EncodeNumbers(variable, std::move(seconds));
}

class NoteReader {
  public:
    explicit NoteReader(DataTable& table) : Table(table) {
        for (std::size_t i = 0; i < table.Variables.size(); ++i) {
            Places.emplace(table.Variables[i].Name, i);
            Names.insert(table.Variables[i].Name);
        }
    }

    void Apply(const FileNote& note) {
        if (note.Kind == noteKinds::Header) {
            Complete(Table.Header, note.Text);
        } else if (const auto place = Places.find(note.Variable); place != Places.end()) {
            ApplyTo(place->second, note);
        }
    }

    void Finish() {
        if (CaseNames) {
            MakeCaseNames(Table, *CaseNames);
        }
    }

  private:
    void ApplyTo(std::size_t place, const FileNote& note) {
        Variable& variable = Table.Variables[place];
        if (note.Kind == noteKinds::Name) {
            Rename(variable, note.Text);
        } else if (note.Kind == noteKinds::LongName) {
            Complete(variable.LongName, note.Text);
        } else if (note.Kind == noteKinds::Weight && !Table.Weight) {
            Table.Weight = place;
        } else if (note.Kind == noteKinds::DateTime) {
            MakeDateTimes(variable);
        } else if (note.Kind == noteKinds::CaseNames) {
            CaseNames = place;
        } else if (const MissingReason* reason = ReasonCalled(variable, note.Value)) {
            CompleteReason(variable, *reason, note);
        } else if (const std::optional<double> value = ValueCalled(variable, note.Value)) {
            ApplyToValue(variable, *value, note);
        }
    }

    void Rename(Variable& variable, const std::string& name) {
        if (Names.insert(name).second) {
            variable.Name = name;
        }
    }

    static void CompleteReason(Variable& variable, const MissingReason& reason, const FileNote& note) {
        std::string label = reason.Label;
        if (note.Kind == noteKinds::ValueLabel) {
            Complete(label, note.Text);
            static_cast<void>(reason.Number ? LabelReason(variable, *reason.Number, label)
                                            : LabelReason(variable, std::string(reason.Text), label));
        }
    }

    static void ApplyToValue(Variable& variable, double value, const FileNote& note) {
        if (note.Kind == noteKinds::ValueLabel) {
            Complete(variable.Labels[value].Label, note.Text);
        } else if (note.Kind == noteKinds::Description) {
            variable.Labels[value].Description = note.Text;
        }
    }

    DataTable& Table;
    std::map<std::string, std::size_t> Places;  // by the names in the file
    std::set<std::string> Names;  // in the file and from notes
    std::optional<std::size_t> CaseNames;
};

}  // namespace

std::string KeyOfReason(const MissingReason& reason) {
    return reason.Number ? ExactNumberText(*reason.Number) : reason.Text;
}

void ApplyNotes(DataTable& table, const std::vector<std::string>& lines) {
    NoteReader reader(table);
    for (FileNote note : NotesOfLines(lines)) {
        note.Text = WithoutKeyMarks(note.Text);
        reader.Apply(note);
    }
    reader.Finish();
}

}  // namespace quillara
