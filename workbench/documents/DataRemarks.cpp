#include "workbench/documents/DataRemarks.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "workbench/data/QuotedText.h"
#include "workbench/data/WrittenValue.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

constexpr std::array<std::string_view, 4> Currencies = {"$", "\xE2\x82\xAC", "\xC2\xA3", "\xC2\xA5"};
constexpr std::array<std::string_view, 4> Separators = {",", ";", "	", "|"};

/// How a text is a number that the reader doesn't take for one.
struct Decoration {
    bool Thousands = false;  ///< 1,234
    bool DecimalComma = false;  ///< 1,5
    bool Percent = false;
    bool Currency = false;
};

void TakeAway(std::string_view& text, std::string_view part, bool& isThere) {
    const bool isFront = text.starts_with(part);
    if (isFront || text.ends_with(part)) {
        isThere = true;
        isFront ? text.remove_prefix(part.size()) : text.remove_suffix(part.size());
    }
}

void Trim(std::string_view& text) {
    while (text.starts_with(' ')) {
        text.remove_prefix(1);
    }
    while (text.ends_with(' ')) {
        text.remove_suffix(1);
    }
}

bool IsDigits(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char sign) { return '0' <= sign && sign <= '9'; });
}

/// Whether commas stand before every three digits of a whole part: "12,345,678.9".
bool HasThousands(std::string_view text) {
    std::string_view whole = text.substr(0, text.find('.'));
    const std::size_t first = whole.find(',');
    if (first == std::string_view::npos || first == 0 || first > 3 || !IsDigits(whole.substr(0, first))) {
        return false;
    }
    constexpr std::size_t group = 4;
    for (whole.remove_prefix(first); !whole.empty(); whole.remove_prefix(group)) {
        if (whole.size() < group || whole.front() != ',' || !IsDigits(whole.substr(1, group - 1))) {
            return false;
        }
    }
    const std::size_t point = text.find('.');
    return point == std::string_view::npos || IsDigits(text.substr(point + 1));
}

bool HasDecimalComma(std::string_view text) {
    const std::size_t comma = text.find(',');
    return comma != std::string_view::npos && text.find(',', comma + 1) == std::string_view::npos &&
           IsDigits(text.substr(0, comma)) && IsDigits(text.substr(comma + 1));
}

/// Nothing for a text that is no number in any way.
std::optional<Decoration> DecorationOf(std::string_view text) {
    Decoration found;
    TakeAway(text, "%", found.Percent);
    for (const std::string_view currency : Currencies) {
        TakeAway(text, currency, found.Currency);
    }
    Trim(text);
    if (text.starts_with('-') || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    found.Thousands = HasThousands(text);
    found.DecimalComma = !found.Thousands && HasDecimalComma(text);
    const bool isNumber = found.Thousands || found.DecimalComma || DecimalNumber(text).has_value();
    return isNumber ? std::optional(found) : std::nullopt;
}

/// What the texts of a variable have, if all are numbers in some way.
std::optional<Decoration> DecorationOf(const Variable& variable) {
    if (variable.Kind != ValueKind::Text || variable.Texts.empty()) {
        return std::nullopt;
    }
    Decoration all;
    for (const std::string& text : variable.Texts) {
        const std::optional<Decoration> one = DecorationOf(text);
        if (!one) {
            return std::nullopt;
        }
        all.Thousands |= one->Thousands;
        all.DecimalComma |= one->DecimalComma;
        all.Percent |= one->Percent;
        all.Currency |= one->Currency;
    }
    const bool isPlain = !all.Thousands && !all.DecimalComma && !all.Percent && !all.Currency;
    return isPlain ? std::nullopt : std::optional(all);
}

/// The first text that is no plain number.
const std::string& ExampleOf(const Variable& variable) {
    return *std::ranges::find_if(variable.Texts, [](const std::string& text) { return !DecimalNumber(text); });
}

Remark OnNumbers(const Variable& variable, const Decoration& found) {
    const std::string begin =
        "The texts of " + Quoted(variable.Name) + " such as " + Quoted(ExampleOf(variable)) + " are numbers ";
    if (found.DecimalComma) {
        return {"text-numbers", begin + "with a decimal comma.", "Read the file with --decimal ,"};
    }
    std::string with;
    for (const auto& [isThere, what] :
         {std::pair(found.Thousands, "commas between thousands"), std::pair(found.Percent, "percent signs"),
          std::pair(found.Currency, "signs of a currency")}) {
        with += isThere ? (with.empty() ? "with " : " and ") + std::string(what) : "";
    }
    return {"text-numbers", begin + with + ", so that they are read as categories.",
            "Write them as plain numbers to have their statistics."};
}

bool LooksLikeValue(std::string_view name) {
    return ReadWrittenValue(name).has_value();
}

/// Names that the reader gives where there is none.
bool IsMadeUp(const DataTable& table, std::size_t place) {
    return table.Variables[place].Name == "Var" + std::to_string(place + 1);
}

void RemarkOnNames(const DataTable& table, std::vector<Remark>& remarks) {
    const auto value =
        std::ranges::find_if(table.Variables, [](const Variable& variable) { return LooksLikeValue(variable.Name); });
    if (value != table.Variables.end()) {
        remarks.push_back({"names-like-values",
                           "The first record is taken for names, but " + Quoted(value->Name) + " looks like a value.",
                           "Read a file without names with --no-header."});
    }
    std::size_t madeUp = 0;
    for (std::size_t place = 0; place < table.Variables.size(); ++place) {
        madeUp += IsMadeUp(table, place) ? 1 : 0;
    }
    if (madeUp > 1) {
        remarks.push_back({"names-missing",
                           std::to_string(madeUp) + " of " + std::to_string(table.Variables.size()) +
                               " variables have no name in the first record and are called by their places.",
                           "See whether the names stand in another record."});
    }
}

void RemarkOnSingle(const DataTable& table, std::vector<Remark>& remarks) {
    if (table.Variables.size() != 1) {
        return;
    }
    const std::string& name = table.Variables.front().Name;
    const std::string text = "The file has a single variable, " + Quoted(name);
    const auto* found = std::ranges::find_if(
        Separators, [&name](std::string_view sign) { return name.find(sign) != std::string::npos; });
    if (found == Separators.end()) {
        remarks.push_back({"single-variable", text + '.',
                           "If there should be more, name the character between them in --separator."});
        return;
    }
    const std::string sign(*found == "\t" ? "tab" : *found);
    remarks.push_back({"single-variable",
                       text + ": cut at " + Quoted(sign) + ", most of its records have other numbers of fields.",
                       "See which, with --separator '" + sign + "'."});
}

}  // namespace

std::vector<Remark> RemarksOnDelimited(const DataTable& table, bool hasNames) {
    std::vector<Remark> remarks;
    RemarkOnSingle(table, remarks);
    if (hasNames) {
        RemarkOnNames(table, remarks);
    }
    for (const Variable& variable : table.Variables) {
        if (const std::optional<Decoration> found = DecorationOf(variable)) {
            remarks.push_back(OnNumbers(variable, *found));
        }
    }
    return remarks;
}

}  // namespace quillara
