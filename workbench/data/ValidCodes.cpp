#include "workbench/data/ValidCodes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

/// Of each reason whether it becomes a value.
using Chosen = std::vector<bool>;

bool StandsForValue(const Variable& variable, const MissingReason& reason) {
    return variable.Kind == ValueKind::Text || reason.Number.has_value();
}

[[noreturn]] void RefuseCode(const Variable& variable, const std::string& code) {
    const std::string list = ListOfReasons(variable);
    throw DataError("The variable " + Quoted(variable.Name) + " has no missing value " + Quoted(code) +
                    (list.empty() ? ": none of its missing data has a value." : "; it has " + list + "."));
}

Chosen ChosenOf(const Variable& variable, const std::vector<std::string>& codes) {
    if (!variable.Reasons) {
        RefuseCode(variable, codes.empty() ? "" : codes.front());
    }
    const std::vector<MissingReason>& reasons = variable.Reasons->Reasons;
    Chosen chosen(reasons.size());
    for (const std::string& code : codes) {
        const std::size_t place = ReasonNamed(variable, code);
        if (place == 0) {
            RefuseCode(variable, code);
        }
        if (!StandsForValue(variable, reasons[place - 1])) {
            throw DataError("The missing value " + Quoted(code) + " of " + Quoted(variable.Name) +
                            " stands for no number; it can't be a value.");
        }
        chosen[place - 1] = true;
    }
    for (std::size_t place = 0; codes.empty() && place < reasons.size(); ++place) {
        chosen[place] = StandsForValue(variable, reasons[place]);
    }
    return chosen;
}

/// The reason that becomes the value of a case; null for another case.
const MissingReason* ValidAt(const Variable& variable, const Chosen& chosen, std::size_t row) {
    const std::size_t place = variable.IsMissing(variable.Values[row]) ? variable.Reasons->PlaceAt(row) : 0;
    return place > 0 && chosen[place - 1] ? &variable.Reasons->Reasons[place - 1] : nullptr;
}

void FillNumbers(const Variable& source, const Chosen& chosen, Variable& filled) {
    std::vector<double> values;
    values.reserve(source.Values.size());
    for (std::size_t row = 0; row < source.Values.size(); ++row) {
        const MissingReason* valid = ValidAt(source, chosen, row);
        const double value = source.Values[row];
        values.push_back(valid != nullptr          ? *valid->Number
                         : source.IsMissing(value) ? std::numeric_limits<double>::quiet_NaN()
                                                   : value);
    }
    for (std::size_t place = 0; place < chosen.size(); ++place) {
        const MissingReason& reason = source.Reasons->Reasons[place];
        if (chosen[place] && !reason.Label.empty()) {
            filled.Labels[*reason.Number].Label = reason.Label;
        }
    }
    EncodeNumbers(filled, std::move(values));
}

void FillTexts(const Variable& source, const Chosen& chosen, Variable& filled) {
    const auto textOf = [&](double value) { return source.Texts.at(static_cast<std::size_t>(value) - 1); };
    std::vector<std::optional<std::string>> texts(source.Values.size());
    for (std::size_t row = 0; row < source.Values.size(); ++row) {
        const MissingReason* valid = ValidAt(source, chosen, row);
        if (valid != nullptr) {
            texts[row] = valid->Text;
        } else if (!source.IsMissing(source.Values[row])) {
            texts[row] = textOf(source.Values[row]);
        }
    }
    std::map<std::string, ValueTexts> labels;
    for (const auto& [value, label] : source.Labels) {
        labels[textOf(value)] = label;
    }
    for (std::size_t place = 0; place < chosen.size(); ++place) {
        const MissingReason& reason = source.Reasons->Reasons[place];
        if (chosen[place]) {
            labels[reason.Text].Label = reason.Label;
        }
    }
    EncodeTexts(filled, texts);
    filled.Labels.clear();
    for (std::size_t i = 0; i < filled.Texts.size(); ++i) {
        const auto label = labels.find(filled.Texts[i]);
        if (label != labels.end() && !(label->second.Label.empty() && label->second.Description.empty())) {
            filled.Labels[static_cast<double>(i + 1)] = label->second;
        }
    }
}

/// The declared values without those that are chosen. A range of which one is chosen has none but the others that are
/// known.
std::vector<MissingRange> RangesWithout(const MissingReasons& missing, const Chosen& chosen) {
    std::vector<MissingRange> left;
    for (const MissingRange& range : missing.Ranges) {
        std::vector<MissingRange> others;
        bool isWhole = true;
        for (std::size_t place = 0; place < chosen.size(); ++place) {
            const std::optional<double>& number = missing.Reasons[place].Number;
            if (number && range.Contains(*number)) {
                isWhole = isWhole && !chosen[place];
                if (!chosen[place]) {
                    others.push_back({*number, *number});
                }
            }
        }
        isWhole ? left.push_back(range) : static_cast<void>(left.insert(left.end(), others.begin(), others.end()));
    }
    std::ranges::sort(left, {}, &MissingRange::Lowest);
    return left;
}

/// Null when none is left.
std::shared_ptr<const MissingReasons> ReasonsWithout(const MissingReasons& missing, const Chosen& chosen) {
    auto left = std::make_shared<MissingReasons>();
    left->Ranges = RangesWithout(missing, chosen);
    std::vector<std::size_t> places = {0};
    for (std::size_t place = 0; place < chosen.size(); ++place) {
        if (!chosen[place]) {
            left->Reasons.push_back(missing.Reasons[place]);
        }
        places.push_back(chosen[place] ? 0 : left->Reasons.size());
    }
    ReasonPlaces rows;
    for (std::size_t row = 0; row < missing.Places.size(); ++row) {
        rows.Append(places[missing.PlaceAt(row)]);
    }
    left->Places = rows.Finish(left->Reasons.size());
    return left->Reasons.empty() && left->Ranges.empty() ? nullptr : left;
}

}  // namespace

void TakeAsValid(DataTable& table, const ValidCodes& valid) {
    Variable& variable = table.Variables[table.IndexOf(valid.Variable)];
    const Chosen chosen = ChosenOf(variable, valid.Codes);
    Variable filled = variable;
    if (variable.Kind == ValueKind::Text) {
        FillTexts(variable, chosen, filled);
    } else {
        FillNumbers(variable, chosen, filled);
    }
    filled.Reasons = ReasonsWithout(*variable.Reasons, chosen);
    variable = std::move(filled);
}

}  // namespace quillara
