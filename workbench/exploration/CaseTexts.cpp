#include "workbench/exploration/CaseTexts.h"

#include <cmath>
#include <span>
#include <vector>

#include "workbench/data/DateTimes.h"
#include "workbench/data/LetterCase.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/data/ValueText.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

constexpr std::size_t FieldsBetweenQuestions = 4096;
constexpr double OneSecondOfDay = 1.0 / 86400.0;

std::string TextOfMissing(const Variable& variable, std::size_t row, ValueWriting writing) {
    const MissingReason* reason = variable.Reasons ? variable.Reasons->At(row) : nullptr;
    if (reason == nullptr) {
        return {};
    }
    const bool isLabel = writing == ValueWriting::Labels && !reason->Label.empty();
    return isLabel ? reason->Label : CodeOfReason(variable, *reason);
}

/// A point in time has its time of day where it isn't midnight.
std::string TextWithoutLabel(const Variable& variable, double value) {
    if (variable.Kind == ValueKind::Text) {
        const auto place = static_cast<std::size_t>(value) - 1;
        return place < variable.Texts.size() ? variable.Texts[place] : std::string();
    }
    if (variable.Kind == ValueKind::Number) {
        return ExactNumberText(value);
    }
    if (variable.Kind == ValueKind::DateTime) {
        return TextFromDateTime(value);
    }
    const bool hasTime = variable.Kind == ValueKind::Date && value != std::floor(value);
    return TextOfValue(variable.Kind, value, hasTime ? OneSecondOfDay : 0.0);
}

std::string TextOfPresent(const Variable& variable, double value, ValueWriting writing) {
    const std::string* label = writing == ValueWriting::Labels ? variable.LabelOf(value) : nullptr;
    return label != nullptr ? *label : TextWithoutLabel(variable, value);
}

/// Whether the fields of one variable have a text; of codes each is looked at once.
class FieldMatcher {
  public:
    FieldMatcher(const Variable& variable, const std::wstring& text, ValueWriting writing)
        : Searched(variable), Text(text), Writing(writing), OfCodes(variable.Values.ValuesOfCodes().size()) {
        for (std::size_t code = 0; code < OfCodes.size(); ++code) {
            const double value = variable.Values.ValuesOfCodes()[code];
            OfCodes[code] = !variable.IsMissing(value) && HasText(TextOfPresent(variable, value, writing));
        }
    }

    [[nodiscard]] bool Matches(std::size_t row) const {
        const TableColumn& stored = Searched.Values.Stored();
        const bool isCode = stored.Form == ColumnForm::Codes8 || stored.Form == ColumnForm::Codes16;
        if (isCode && !Searched.Reasons) {
            return OfCodes[stored.Form == ColumnForm::Codes8 ? stored.As<std::uint8_t>()[row]
                                                             : stored.As<std::uint16_t>()[row]];
        }
        return HasText(TextOfField(Searched, row, Writing).Text);
    }

  private:
    [[nodiscard]] bool HasText(const std::string& field) const {
        return WithoutLetterCase(field).find(Text) != std::wstring::npos;
    }

    const Variable& Searched;
    const std::wstring& Text;
    ValueWriting Writing;
    std::vector<bool> OfCodes;
};

std::string QuotedForTabs(const std::string& text) {
    if (text.find_first_of("\t\r\n\"") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char sign : text) {
        quoted += sign == '"' ? std::string("\"\"") : std::string(1, sign);
    }
    return quoted + '"';
}

}  // namespace

FieldText TextOfField(const Variable& variable, std::size_t row, ValueWriting writing) {
    const double value = variable.Values[row];
    if (variable.IsMissing(value)) {
        return {TextOfMissing(variable, row, writing), true};
    }
    return {TextOfPresent(variable, value, writing), false};
}

std::optional<FoundField> FindField(const DataTable& table, const CaseArrangement& arrangement,
                                    const FieldSearch& search, const std::function<bool()>& cancelled) {
    const std::size_t width = table.Variables.size();
    const std::size_t fields = arrangement.Count() * width;
    if (search.Text.empty() || fields == 0) {
        return std::nullopt;
    }
    const std::wstring text = WithoutLetterCase(search.Text);
    std::vector<FieldMatcher> matchers;
    for (const Variable& variable : table.Variables) {
        matchers.emplace_back(variable, text, search.Writing);
    }
    std::size_t field = (search.Place * width + search.Variable) % fields;
    for (std::size_t step = 0; step < fields; ++step) {
        if (step % FieldsBetweenQuestions == 0 && cancelled()) {
            return std::nullopt;
        }
        field = (field + (search.IsBackwards ? fields - 1 : 1)) % fields;
        if (matchers[field % width].Matches(arrangement.RowAt(field / width))) {
            return FoundField{field / width, field % width};
        }
    }
    return std::nullopt;
}

std::string FieldsAsText(const DataTable& table, const CaseArrangement& arrangement,
                         const std::vector<std::size_t>& places, const std::vector<std::size_t>& variables,
                         ValueWriting writing) {
    std::string text;
    const auto writeLine = [&](const auto& fieldOf) {
        for (std::size_t i = 0; i < variables.size(); ++i) {
            text += (i == 0 ? "" : "\t") + QuotedForTabs(fieldOf(table.Variables[variables[i]]));
        }
        text += '\n';
    };
    writeLine([](const Variable& variable) { return variable.Name; });
    for (const std::size_t place : places) {
        const std::size_t row = arrangement.RowAt(place);
        writeLine([&](const Variable& variable) { return TextOfField(variable, row, writing).Text; });
    }
    return text;
}

}  // namespace quillara
