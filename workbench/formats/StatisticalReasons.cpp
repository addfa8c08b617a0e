#include "workbench/formats/StatisticalReasons.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quillara {
namespace {

constexpr std::uint64_t MarkBits = 0xFF;  // of a NaN: its mark
constexpr double Blank = std::numeric_limits<double>::quiet_NaN();

/// The mark of a NaN; 0 for none, as of data that were computed.
char MarkOf(double value) {
    const auto mark = static_cast<char>(std::bit_cast<std::uint64_t>(value) & MarkBits);
    const bool isMark = mark == '_' || ('a' <= mark && mark <= 'z');
    return isMark && std::bit_cast<std::uint64_t>(MarkedMissing(mark)) == std::bit_cast<std::uint64_t>(value) ? mark
                                                                                                              : '\0';
}

/// What a missing number is told by: a mark, or its value; nothing for a valid or blank one.
struct Key {
    char Mark = '\0';
    double Number = 0.0;
    friend bool operator<(const Key& left, const Key& right) {
        return left.Mark != right.Mark ? left.Mark < right.Mark : left.Number < right.Number;
    }
};

/// The reasons of a column of numbers, with the place of each.
class NumberReasons {
  public:
    NumberReasons(const StatisticalColumn& column, const LabelSet& labels) : Declared(column.MissingNumbers) {
        for (const auto& [lowest, highest] : Declared) {
            if (lowest == highest && std::isfinite(lowest)) {
                Labels[{'\0', lowest}];
            }
        }
        for (const auto& [number, label] : labels.OfNumbers) {
            if (const std::optional<Key> key = KeyOf(number)) {
                Labels[*key] = label;
            }
        }
        for (const auto& [mark, label] : labels.OfMarks) {
            Labels[{mark, 0.0}] = label;
        }
        for (const double value : column.Numbers) {
            if (const std::optional<Key> key = KeyOf(value)) {
                Labels[*key];
            }
        }
    }

    /// Null when there is nothing to tell.
    [[nodiscard]] std::shared_ptr<MissingReasons> Take(std::vector<double>& numbers) {
        if (Declared.empty() && Labels.empty()) {
            return nullptr;
        }
        auto reasons = std::make_shared<MissingReasons>();
        for (const auto& [lowest, highest] : Declared) {
            if (lowest <= highest) {
                reasons->Ranges.push_back({lowest, highest});
            }
        }
        std::ranges::sort(reasons->Ranges, {}, &MissingRange::Lowest);
        std::map<Key, std::size_t> places;
        for (auto& [key, label] : Labels) {
            reasons->Reasons.push_back(key.Mark == '\0'
                                           ? MissingReason{.Number = key.Number, .Label = std::move(label)}
                                           : MissingReason{.Text = {'.', key.Mark}, .Label = std::move(label)});
            places.emplace(key, reasons->Reasons.size());
        }
        ReasonPlaces rows;
        for (double& value : numbers) {
            const std::optional<Key> key = KeyOf(value);
            rows.Append(key ? places.at(*key) : 0);
            value = key ? Blank : value;
        }
        reasons->Places = rows.Finish(reasons->Reasons.size());
        return reasons;
    }

  private:
    [[nodiscard]] std::optional<Key> KeyOf(double value) const {
        if (std::isnan(value)) {
            const char mark = MarkOf(value);
            return mark == '\0' ? std::nullopt : std::optional(Key{mark});
        }
        const bool isDeclared = std::isfinite(value) && IsWithinAny(Declared, value);
        return isDeclared ? std::optional(Key{'\0', value}) : std::nullopt;
    }

    const std::vector<std::pair<double, double>>& Declared;
    std::map<Key, std::string> Labels;
};

bool ConvertExactly(const ForeignTime& time, double& value) {
    if (!std::isfinite(value)) {
        return true;
    }
    const std::optional<double> ours = time.Convert(value);
    const bool isExact = ours && time.Invert(*ours) == value;
    value = ours.value_or(value);
    return isExact;
}

}  // namespace

double MarkedMissing(char mark) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(Blank) | static_cast<unsigned char>(mark));
}

std::shared_ptr<MissingReasons> TakeReasonsOfNumbers(StatisticalColumn& column, const LabelSet& labels) {
    return NumberReasons(column, labels).Take(column.Numbers);
}

std::shared_ptr<MissingReasons> TakeReasonsOfTexts(StatisticalColumn& column, const LabelSet& labels) {
    for (const auto& [lowest, highest] : column.MissingTexts) {
        if (lowest == highest && !lowest.empty()) {
            column.ReasonCodes.try_emplace(lowest, column.ReasonCodes.size() + 1);
        }
    }
    if (column.ReasonCodes.empty()) {
        return nullptr;
    }
    auto reasons = std::make_shared<MissingReasons>();
    std::vector<double> places(column.ReasonCodes.size() + 1);
    for (const auto& [text, code] : column.ReasonCodes) {
        const auto label = labels.OfTexts.find(text);
        reasons->Reasons.push_back({.Text = text, .Label = label == labels.OfTexts.end() ? "" : label->second});
        places[code] = static_cast<double>(reasons->Reasons.size());
    }
    reasons->Places = column.ReasonRows.Finish(std::move(places));
    return reasons;
}

bool ConvertReasons(const ForeignTime& time, MissingReasons& reasons) {
    bool areExact = true;
    for (MissingReason& reason : reasons.Reasons) {
        areExact = areExact && (!reason.Number || ConvertExactly(time, *reason.Number));
    }
    for (MissingRange& range : reasons.Ranges) {
        areExact = areExact && ConvertExactly(time, range.Lowest) && ConvertExactly(time, range.Highest);
    }
    return areExact;
}

}  // namespace quillara
