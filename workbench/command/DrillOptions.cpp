#include "workbench/command/DrillOptions.h"

#include <algorithm>
#include <utility>

#include "workbench/data/WordTable.h"

namespace quillara {
namespace {

/// A name at the front of a text, and what stands behind the equals sign that ends it.
using NameAndRest = std::optional<std::pair<std::string, std::string_view>>;

NameAndRest PlainName(std::string_view text) {
    const std::size_t equals = text.find('=');
    return equals == std::string_view::npos ? NameAndRest()
                                            : std::pair(std::string(text.substr(0, equals)), text.substr(equals + 1));
}

/// A name in double quotes, a quote in it twice, at the front of a text, and what stands behind them.
NameAndRest QuotedName(std::string_view text) {
    constexpr char quote = '"';
    if (!text.starts_with(quote)) {
        return std::nullopt;
    }
    std::string name;
    for (std::size_t at = 1; at < text.size(); ++at) {
        const bool isQuote = text[at] == quote;
        if (isQuote && !text.substr(at + 1).starts_with(quote)) {
            return std::pair(name, text.substr(at + 1));
        }
        at += isQuote ? 1 : 0;
        name += text[at];
    }
    return std::nullopt;
}

/// The same with the equals sign right behind the quotes: nothing for any other text.
NameAndRest QuotedNameAtEquals(std::string_view text) {
    NameAndRest parts = QuotedName(text);
    if (!parts || !parts->second.starts_with('=')) {
        return std::nullopt;
    }
    parts->second.remove_prefix(1);
    return parts;
}

std::pair<std::string, std::string_view> SplitAtEquals(std::string_view text, std::string_view rest) {
    NameAndRest parts = QuotedNameAtEquals(text);
    if (!parts) {
        parts = PlainName(text);
    }
    if (!parts) {
        throw UsageError(Quoted(text) + " isn't of the form VAR=" + std::string(rest) + ".");
    }
    return *parts;
}

std::string_view WithoutBlanks(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = std::min(text.find_first_not_of(blanks), text.size());
    text.remove_prefix(first);
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

constexpr WordTable<ShownAfter, 3> AfterWords{{
    {"each", ShownAfter::Each},
    {"last", ShownAfter::Last},
    {"all", ShownAfter::All},
}};

}  // namespace

std::string ParseName(std::string_view text) {
    const NameAndRest parts = QuotedName(text);
    return parts && parts->second.empty() ? parts->first : std::string(text);
}

CategorizedVariable ParseCategorizedVariable(std::string_view text) {
    const auto [variable, method] = SplitAtEquals(text, "METHOD");
    return {variable, ParseCategorization(method), std::string(method)};
}

ValidCodes ParseValid(std::string_view text) {
    const bool namesAll = text.find('=') == std::string_view::npos ||
                          (!QuotedNameAtEquals(text) && QuotedName(text) && QuotedName(text)->second.empty());
    if (namesAll) {
        return {ParseName(text)};
    }
    const auto [name, codes] = SplitAtEquals(text, "CODES");
    return {name, ParseNames(std::string(codes))};
}

std::optional<DeclaredMissing> ParseDeclaredMissing(std::string_view text) {
    const bool isOfVariable = QuotedNameAtEquals(text) || (!text.starts_with('"') && text.find('=') != text.npos);
    if (!isOfVariable || text.starts_with('=')) {
        return std::nullopt;
    }
    const auto [name, codes] = SplitAtEquals(text, "CODES");
    return DeclaredMissing{name, ParseNames(std::string(codes))};
}

DerivedVariable ParseDerived(std::string_view text) {
    const auto [name, formula] = SplitAtEquals(WithoutBlanks(text), "FORMULA");
    return {std::string(WithoutBlanks(name)), std::string(WithoutBlanks(formula))};
}

DrillStep ParseDown(std::string_view text) {
    const auto [variable, category] = SplitAtEquals(text, "CATEGORY");
    return {variable, std::string(category)};
}

ShownAfter ParseAfter(std::string_view text) {
    return Choose(AfterWords, text);
}

}  // namespace quillara
