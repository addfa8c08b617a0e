#pragma once

#include <fnmatch.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "tests/Locations.h"

/// What tests that are written as text files have in common.
namespace testing_scripts {

using Texts = std::vector<std::string>;

struct Line {
    std::string Place;  ///< file and number, for messages
    std::string Text;

    /// Whether it is empty or a comment.
    [[nodiscard]] bool SaysNothing() const { return Text.empty() || Text.front() == '#'; }
};

inline std::vector<Line> LinesOf(const std::string& path) {
    std::vector<Line> lines;
    std::ifstream file(path);
    for (std::string text; std::getline(file, text);) {
        lines.push_back({path + ":" + std::to_string(lines.size() + 1), text});
    }
    return lines;
}

/// The scripts in some folders of the tests, by their names.
inline Texts ScriptsIn(std::initializer_list<const char*> folders) {
    Texts files;
    for (const std::string folder : folders) {
        for (const auto& entry : std::filesystem::directory_iterator(testing_locations::Sample("../tests/" + folder))) {
            if (entry.path().extension() == ".txt") {
                files.push_back(entry.path());
            }
        }
    }
    std::ranges::sort(files);
    return files;
}

/// Names a test by its script.
inline std::string NameOf(const testing::TestParamInfo<std::string>& script) {
    return std::filesystem::path(script.param).stem();
}

/// "a<between>b" as a and b; b is empty when there is none between.
inline std::pair<std::string, std::string> Split(const std::string& text, const std::string& between) {
    const std::size_t end = std::min(text.find(between), text.size());
    return {text.substr(0, end), text.substr(std::min(end + between.size(), text.size()))};
}

inline std::string Joined(const Texts& texts, const std::string& between) {
    std::string joined;
    for (const std::string& text : texts) {
        joined += (&text == &texts.front() ? "" : between) + text;
    }
    return joined;
}

/// A text that is as expected, where "..." stands for anything.
MATCHER_P(ReadsAs, expected, "") {
    const std::string plain = std::regex_replace(std::string(expected), std::regex(R"([*?[\\])"), R"(\$&)");
    const std::string pattern = std::regex_replace(plain, std::regex(R"(\.\.\.)"), "*");
    return fnmatch(pattern.c_str(), std::string(arg).c_str(), 0) == 0;
}

}  // namespace testing_scripts
