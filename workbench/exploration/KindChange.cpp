#include "workbench/exploration/KindChange.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "workbench/data/Calendar.h"
#include "workbench/data/Errors.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/data/QuotedText.h"
#include "workbench/numbers/DecimalNumber.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

constexpr double NoValue = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t DayDigits = 8;  // of YYYYMMDD

const char* NameOf(ValueKind kind) {
    return kind == ValueKind::Number ? "number" : kind == ValueKind::Date ? "date" : "text";
}

/// How a value is written for another kind; empty when that would lose a part of it.
std::string Written(const Variable& variable, double value, ValueKind kind) {
    switch (variable.Kind) {
        case ValueKind::Text:
            return variable.Texts.at(static_cast<std::size_t>(value) - 1);
        case ValueKind::Date:
            return value == std::floor(value) ? TextFromDays(value, kind == ValueKind::Number ? "" : "-") : "";
        default:
            return ExactNumberText(value);
    }
}

std::optional<double> DaysFromDigits(const std::string& text) {
    const bool isDay = text.size() == DayDigits && WholeNumber(text).has_value();
    return isDay ? DaysFromText(text.substr(0, 4) + '-' + text.substr(4, 2) + '-' + text.substr(6)) : std::nullopt;
}

std::optional<double> ValueOf(const std::string& text, ValueKind kind) {
    if (kind == ValueKind::Number) {
        return DecimalNumber(text);
    }
    const std::optional<double> days = DaysFromText(text);
    return days ? days : DaysFromDigits(text);
}

std::vector<double> DistinctValues(const Variable& variable) {
    std::vector<double> values;
    VisitValues(variable.Values, [&](double value) {
        if (!variable.IsMissing(value)) {
            values.push_back(value);
        }
    });
    std::ranges::sort(values);
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values;
}

/// What each value becomes.
template <typename Value>
using Changes = std::map<double, Value>;

/// The values as texts, or as numbers in a kind.
Changes<std::string> TextsFor(const Variable& variable, ValueKind kind) {
    Changes<std::string> texts;
    for (const double value : DistinctValues(variable)) {
        texts[value] = Written(variable, value, kind);
    }
    return texts;
}

[[noreturn]] void Refuse(const Variable& variable, const std::string& value, std::size_t others, ValueKind kind) {
    const std::string more =
        others == 0 ? "" : ", like " + std::to_string(others) + (others == 1 ? " other" : " others");
    throw DataError("The variable " + Quoted(variable.Name) + " stays as it is: its value " + Quoted(value) +
                    " is no " + NameOf(kind) + more + ".");
}

Changes<double> NumbersFor(const Variable& variable, ValueKind kind) {
    Changes<double> numbers;
    std::map<double, std::string> taken;
    std::vector<std::string> lost;
    for (const auto& [value, text] : TextsFor(variable, kind)) {
        const std::optional<double> number = ValueOf(text, kind);
        if (!number) {
            lost.push_back(text);
            continue;
        }
        if (const auto [same, isNew] = taken.emplace(*number, text); !isNew) {
            throw DataError("The variable " + Quoted(variable.Name) + " stays as it is: its values " +
                            Quoted(same->second) + " and " + Quoted(text) + " would become the same " + NameOf(kind) +
                            ".");
        }
        numbers[value] = *number;
    }
    if (!lost.empty()) {
        Refuse(variable, lost.front(), lost.size() - 1, kind);
    }
    return numbers;
}

/// Each case's new value, or another one where it has none.
template <typename Value, typename Missing>
std::vector<Missing> ValuesOfCases(const Variable& variable, const Changes<Value>& changes, const Missing& missing) {
    std::vector<Missing> values;
    values.reserve(variable.Values.size());
    for (const double value : variable.Values) {
        const auto found = changes.find(value);
        values.push_back(found == changes.end() ? missing : Missing(found->second));
    }
    return values;
}

/// Labels of values that some case has.
template <typename Value, typename Place>
std::map<double, ValueTexts> LabelsFor(const Variable& variable, const Changes<Value>& changes, Place place) {
    std::map<double, ValueTexts> labels;
    for (const auto& [value, texts] : variable.Labels) {
        if (const auto found = changes.find(value); found != changes.end()) {
            labels[place(found->second)] = texts;
        }
    }
    return labels;
}

std::shared_ptr<const MissingReasons> ReasonsFor(const Variable& variable, ValueKind kind) {
    if (variable.Reasons == nullptr) {
        return nullptr;
    }
    auto reasons = std::make_shared<MissingReasons>(*variable.Reasons);
    reasons->Ranges.clear();
    for (MissingReason& reason : reasons->Reasons) {
        reason.Text = CodeOfReason(variable, reason);
        reason.Number = kind == ValueKind::Text ? std::nullopt : ValueOf(reason.Text, kind);
        if (reason.Number) {
            reason.Text.clear();
        }
    }
    return reasons;
}

void BecomeTexts(Variable& changed, const Variable& variable) {
    const Changes<std::string> texts = TextsFor(variable, ValueKind::Text);
    EncodeTexts(changed, ValuesOfCases(variable, texts, std::optional<std::string>()));
    changed.Labels = LabelsFor(variable, texts, [&](const std::string& text) {
        return static_cast<double>(std::ranges::lower_bound(changed.Texts, text) - changed.Texts.begin() + 1);
    });
}

void BecomeNumbers(Variable& changed, const Variable& variable, ValueKind kind) {
    const Changes<double> numbers = NumbersFor(variable, kind);
    changed.Texts.clear();
    EncodeNumbers(changed, ValuesOfCases(variable, numbers, NoValue));
    changed.Labels = LabelsFor(variable, numbers, [](double number) { return number; });
}

}  // namespace

bool CanChangeKind(ValueKind kind) {
    return kind == ValueKind::Number || kind == ValueKind::Text || kind == ValueKind::Date;
}

Variable OfKind(const Variable& variable, ValueKind kind) {
    if (variable.Kind == kind) {
        return variable;
    }
    if (!CanChangeKind(variable.Kind) || !CanChangeKind(kind)) {
        throw DataError("The variable " + Quoted(variable.Name) + " holds times, whose type can't be changed.");
    }
    Variable changed = variable;
    changed.Kind = kind;
    changed.Format.clear();
    changed.Reasons = ReasonsFor(variable, kind);
    if (kind == ValueKind::Text) {
        BecomeTexts(changed, variable);
    } else {
        BecomeNumbers(changed, variable, kind);
    }
    return changed;
}

}  // namespace quillara
