#include "workbench/command/DrillOptions.h"

#include <utility>

#include "workbench/command/WordTable.h"

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

constexpr WordTable<OutputFormat, 4> FormatWords{{
    {"text", OutputFormat::Text},
    {"json", OutputFormat::Json},
    {"csv", OutputFormat::Csv},
    {"html", OutputFormat::Html},
}};

constexpr WordTable<bool, 2> AfterWords{{
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
