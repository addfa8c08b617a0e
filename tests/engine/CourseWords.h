#pragma once

#include <algorithm>
#include <map>
#include <sstream>
#include <variant>

#include "tests/engine/DrillBench.h"

namespace drilltest {

// What the words of a course say.

using Words = Names;

inline Words Split(std::string text, char separator) {
    std::replace(text.begin(), text.end(), separator, ' ');
    std::istringstream stream(text);
    Words words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

inline Words From(const Words& words, std::ptrdiff_t first) {
    return {words.begin() + first, words.end()};
}

/// "." is missing, "1~15" lies 15 representable numbers above 1.
inline double ValueOf(const std::string& word) {
    const std::size_t units = word.find('~');
    return word == "."                  ? NA
           : units == std::string::npos ? std::stod(word)
                                        : Moved(std::stod(word), std::stoll(word.substr(units + 1)));
}

/// The values of some words; "0..9" are the whole numbers from 0 to 9.
inline std::vector<double> ValuesIn(const Words& words) {
    std::vector<double> values;
    for (const std::string& word : words) {
        const std::size_t dots = word.find("..");
        const double last = ValueOf(dots == std::string::npos ? word : word.substr(dots + 2));
        values.push_back(dots == std::string::npos ? last : ValueOf(word.substr(0, dots)));
        while (values.back() < last) {
            values.push_back(values.back() + 1);
        }
    }
    return values;
}

inline std::vector<std::int32_t> WholeNumbers(const Words& words) {
    const std::vector<double> values = ValuesIn(words);
    return {values.begin(), values.end()};
}

/// A case buffer with these values, from variable 1 on.
inline std::vector<double> CaseOf(const Words& words) {
    std::vector<double> values = ValuesIn(words);
    values.insert(values.begin(), 0.0);
    return values;
}

using Member = std::variant<std::int32_t Drill::*, double Drill::*>;
inline const std::map<std::string, Member> Members{{"Method", &Drill::Method},
                                                   {"ExactCount", &Drill::ExactCount},
                                                   {"NeatCount", &Drill::NeatCount},
                                                   {"StartAtMin", &Drill::StartAtMin},
                                                   {"Chosen", &Drill::ChosenCategory},
                                                   {"StepSize", &Drill::StepSize},
                                                   {"StepStart", &Drill::StepStart},
                                                   {"Min", &Drill::Min},
                                                   {"Max", &Drill::Max},
                                                   {"SumSquares", &Drill::SumSquares}};

inline double Get(const Drill& record, const std::string& member) {
    return std::visit([&](auto each) { return static_cast<double>(record.*each); }, Members.at(member));
}

/// Sets members of a record: "Method=5 Boundaries=2,6".
inline void Set(Drill& record, const Words& members) {
    for (const std::string& member : members) {
        const Words pair = Split(member, '=');
        if (pair.at(0) == "Boundaries") {
            const std::vector<double> bounds = ValuesIn(Split(pair.at(1), ','));
            record.NU = static_cast<std::int32_t>(bounds.size());
            std::ranges::copy(bounds, record.UserInterv.begin());
        } else {
            std::visit([&](auto each) { record.*each = ValueOf(pair.at(1)); }, Members.at(pair[0]));
        }
    }
}

inline void SetCounts(Drill& record, const std::vector<double>& counts) {
    record.CategorySet.clear();
    for (const double count : counts) {
        record.CategorySet.insert({0, count, static_cast<double>(record.CategorySet.size()), "", 0});
    }
}

}  // namespace drilltest
