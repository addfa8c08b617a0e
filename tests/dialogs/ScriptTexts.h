#pragma once

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "tests/Scripts.h"

namespace dialogtest {

using testing_scripts::Joined;
using testing_scripts::Split;
using Names = testing_scripts::Texts;
using Text = const std::string&;

// Taken apart

inline std::string Trimmed(Text text) {
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

/// The parts of a text between separators, without the blanks around them; those that are blank are left out.
inline Names Parts(std::string text, Text separator) {
    Names parts;
    while (!text.empty()) {
        const auto [part, rest] = Split(text, separator);
        parts.push_back(Trimmed(part));
        text = rest;
    }
    std::erase(parts, "");
    return parts;
}

inline Names Words(Text text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

template <typename T = int>
std::vector<T> Numbers(Text text) {
    std::istringstream numbers(text);
    return {std::istream_iterator<T>(numbers), {}};
}

// Put together

/// Values, a blank apart.
template <typename... Values>
std::string Shown(const Values&... values) {
    std::ostringstream text;
    ((text << (text.tellp() > 0 ? " " : "") << values), ...);
    return text.str();
}

/// Elements, a blank apart; those that show nothing are left out.
template <typename Range, typename Show>
std::string ShownEach(const Range& range, Show show) {
    Names texts;
    for (const auto& each : range) {
        texts.push_back(show(each));
    }
    std::erase(texts, "");
    return Joined(texts, " ");
}

}  // namespace dialogtest
