#include "workbench/command/DrillOptions.h"

#include <algorithm>
#include <array>
#include <utility>

#include "workbench/command/QuotedText.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

/// VAR=REST, cut at the first equals sign.
std::pair<std::string, std::string_view> SplitAtEquals(std::string_view text, std::string_view rest) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        throw UsageError(Quoted(text) + " isn't of the form VAR=" + std::string(rest) + ".");
    }
    return {std::string(text.substr(0, equals)), text.substr(equals + 1)};
}

template <typename Meaning, std::size_t Count>
Meaning Choose(const std::array<std::pair<std::string_view, Meaning>, Count>& words, std::string_view text) {
    std::string known;
    for (const auto& [word, meaning] : words) {
        if (word == text) {
            return meaning;
        }
        known += (known.empty() ? "" : ", ") + std::string(word);
    }
    throw UsageError("Unknown value " + Quoted(text) + "; choose from " + known + ".");
}

constexpr std::array<std::pair<std::string_view, OutputFormat>, 4> FormatWords{{
    {"text", OutputFormat::Text},
    {"json", OutputFormat::Json},
    {"csv", OutputFormat::Csv},
    {"html", OutputFormat::Html},
}};

constexpr std::array<std::pair<std::string_view, bool>, 2> AfterWords{{
    {"each", true},
    {"last", false},
}};

}  // namespace

CategorizedVariable ParseCategorizedVariable(std::string_view text) {
    const auto [variable, method] = SplitAtEquals(text, "METHOD");
    return {variable, ParseCategorization(method)};
}

DrillStep ParseDown(std::string_view text) {
    const auto [variable, category] = SplitAtEquals(text, "CATEGORY");
    return {variable, std::string(category)};
}

OutputFormat ParseFormat(std::string_view text) {
    return Choose(FormatWords, text);
}

bool ParseAfterEach(std::string_view text) {
    return Choose(AfterWords, text);
}

}  // namespace quillara
