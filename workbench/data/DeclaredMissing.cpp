#include "workbench/data/DeclaredMissing.h"

#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "workbench/data/DateTimes.h"
#include "workbench/data/Errors.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/WrittenValue.h"

namespace quillara {
namespace {

constexpr std::string_view RangeSign = "..";

/// The value that a text or a label stands for.
std::optional<double> ValueNamed(const Variable& variable, std::string_view text) {
    const std::optional<WrittenValue> written = ReadWrittenValue(text);
    if (written && written->Kind == variable.Kind) {
        return written->Value;
    }
    if (written && written->Kind == ValueKind::Date && variable.Kind == ValueKind::DateTime) {
        return written->Value * SecondsOfDay;  // the midnight that it begins with
    }
    const auto label =
        std::ranges::find_if(variable.Labels, [&](const auto& entry) { return entry.second.Label == text; });
    return label == variable.Labels.end() || text.empty() ? std::nullopt : std::optional(label->first);
}

[[noreturn]] void RefuseCode(const Variable& variable, std::string_view code) {
    throw DataError(Quoted(code) + " is no value of the variable " + Quoted(variable.Name) +
                    "; missing values are given as 99, 97..99 or with a label.");
}

double EndOf(const Variable& variable, std::string_view code, std::string_view end, double none) {
    const std::optional<double> value = end.empty() ? std::optional(none) : ValueNamed(variable, end);
    return value ? *value : (RefuseCode(variable, code), none);
}

MissingRange RangeOf(const Variable& variable, std::string_view code) {
    constexpr double endless = std::numeric_limits<double>::infinity();
    if (const std::optional<double> value = ValueNamed(variable, code)) {
        return {*value, *value};
    }
    const std::size_t sign = code.find(RangeSign);
    if (sign == std::string_view::npos || code == RangeSign) {
        RefuseCode(variable, code);
    }
    const MissingRange range{EndOf(variable, code, code.substr(0, sign), -endless),
                             EndOf(variable, code, code.substr(sign + RangeSign.size()), endless)};
    if (range.Highest < range.Lowest) {
        RefuseCode(variable, code);
    }
    return range;
}

/// Puts the reasons of a variable together with those of values that become missing.
class Declaration {
  public:
    explicit Declaration(const Variable& variable)
        : Known(variable.Reasons), Missing(std::make_shared<MissingReasons>()) {
        if (Known) {
            Missing->Ranges = Known->Ranges;
            Missing->Reasons = Known->Reasons;
        }
    }

    void Declare(const MissingRange& range, Variable& variable) {
        Missing->Ranges.push_back(range);
        if (range.Lowest == range.Highest) {
            (void)PlaceOf({.Number = range.Lowest});
        }
        std::erase_if(variable.Labels, [&](const auto& entry) {
            const bool isMissing = range.Contains(entry.first);
            if (isMissing) {
                Missing->Reasons[PlaceOf({.Number = entry.first}) - 1].Label = entry.second.Label;
            }
            return isMissing;
        });
    }

    /// The place of a reason, from 1, which is there then.
    std::size_t PlaceOf(const MissingReason& reason) {
        const auto found =
            std::ranges::find_if(Missing->Reasons, [&](const MissingReason& each) { return each.IsSameValue(reason); });
        const auto place = static_cast<std::size_t>(found - Missing->Reasons.begin());
        if (found == Missing->Reasons.end()) {
            Missing->Reasons.push_back(reason);
        }
        return place + 1;
    }

    void AppendMissing(const MissingReason& reason) {
        Places.Append(PlaceOf(reason));
        ++Cases;
    }
    /// A case that is as it was.
    void AppendKnown() { Places.Append(Known ? Known->PlaceAt(Places.Size()) : 0); }

    /// Gives how many cases have become missing.
    std::size_t Finish(Variable& variable) {
        std::ranges::sort(Missing->Ranges, {}, &MissingRange::Lowest);
        Missing->Places = Places.Finish(Missing->Reasons.size());
        variable.Reasons = std::move(Missing);
        return Cases;
    }

  private:
    std::shared_ptr<const MissingReasons> Known;
    std::shared_ptr<MissingReasons> Missing;
    ReasonPlaces Places;
    std::size_t Cases = 0;
};

std::size_t DeclareNumbers(Variable& variable, const std::vector<std::string>& codes) {
    Declaration declaration(variable);
    std::vector<MissingRange> ranges;
    for (const std::string& code : codes) {
        ranges.push_back(RangeOf(variable, code));
    }
    for (const MissingRange& range : ranges) {
        declaration.Declare(range, variable);
    }
    std::vector<double> values;
    values.reserve(variable.Values.size());
    for (const double value : variable.Values) {
        const bool isMissing = variable.IsMissing(value);
        const bool isDeclared =
            !isMissing && std::ranges::any_of(ranges, [&](const MissingRange& range) { return range.Contains(value); });
        isDeclared ? declaration.AppendMissing({.Number = value}) : declaration.AppendKnown();
        values.push_back(isMissing || isDeclared ? std::numeric_limits<double>::quiet_NaN() : value);
    }
    EncodeNumbers(variable, std::move(values));
    return declaration.Finish(variable);
}

std::size_t DeclareTexts(Variable& variable, const std::vector<std::string>& codes) {
    Declaration declaration(variable);
    const std::vector<std::string> known = variable.Texts;
    std::map<std::string, ValueTexts> labels;
    for (const auto& [value, texts] : variable.Labels) {
        labels[known.at(static_cast<std::size_t>(value) - 1)] = texts;
    }
    for (const std::string& code : codes) {
        (void)declaration.PlaceOf({.Text = code, .Label = labels[code].Label});
    }
    std::vector<std::optional<std::string>> texts;
    for (const double value : variable.Values) {
        const bool isMissing = variable.IsMissing(value);
        const std::string text = isMissing ? "" : known.at(static_cast<std::size_t>(value) - 1);
        const bool isDeclared = !isMissing && std::ranges::find(codes, text) != codes.end();
        isDeclared ? declaration.AppendMissing({.Text = text}) : declaration.AppendKnown();
        texts.push_back(isMissing || isDeclared ? std::nullopt : std::optional(text));
    }
    EncodeTexts(variable, texts);
    variable.Labels.clear();
    for (std::size_t place = 0; place < variable.Texts.size(); ++place) {
        if (const auto label = labels.find(variable.Texts[place]);
            label != labels.end() && !(label->second.Label.empty() && label->second.Description.empty())) {
            variable.Labels[static_cast<double>(place + 1)] = label->second;
        }
    }
    return declaration.Finish(variable);
}

}  // namespace

std::size_t DeclareMissing(DataTable& table, const DeclaredMissing& declared) {
    Variable& variable = table.Variables[table.IndexOf(declared.Variable)];
    return variable.Kind == ValueKind::Text ? DeclareTexts(variable, declared.Codes)
                                            : DeclareNumbers(variable, declared.Codes);
}

}  // namespace quillara
