#include "workbench/command/DrillOptions.h"

#include <utility>

#include "workbench/command/WordTable.h"

namespace quillara {
namespace {

/// A name at the front of a text, and what stands behind the equals sign that ends it.
using NameAndRest = std::optional<std::pair<std::string, std::string_view>>;

NameAndRest PlainName(std::string_view text) {
    const std::size_t equals = text.find('=');
    return equals == std::string_view::npos ? NameAndRest()
                                            : std::pair(std::string(text.substr(0, equals)), text.substr(equals + 1));
}

/// In double quotes, a quote in it twice, and the equals sign right behind: nothing for any other text.
NameAndRest QuotedName(std::string_view text) {
    constexpr char quote = '"';
    if (!text.starts_with(quote)) {
        return std::nullopt;
    }
    std::string name;
    for (std::size_t at = 1; at + 1 < text.size(); ++at) {
        const char next = text[at + 1];
        if (text[at] == quote && next != quote) {
            return next == '=' ? NameAndRest({name, text.substr(at + 2)}) : std::nullopt;
        }
        at += text[at] == quote ? 1 : 0;
        name += text[at];
    }
    return std::nullopt;
}

std::pair<std::string, std::string_view> SplitAtEquals(std::string_view text, std::string_view rest) {
    NameAndRest parts = QuotedName(text);
    if (!parts) {
        parts = PlainName(text);
    }
    if (!parts) {
        throw UsageError(Quoted(text) + " isn't of the form VAR=" + std::string(rest) + ".");
    }
    return *parts;
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
