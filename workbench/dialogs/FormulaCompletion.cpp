#include "workbench/dialogs/FormulaCompletion.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <set>
#include <utility>

#include "workbench/data/LetterCase.h"

namespace quillara {
namespace {

constexpr std::string_view QuotesAndBrackets = "\"'[";
constexpr std::array<std::string_view, 6> Keywords = {"and", "or", "not", "in", "between", "missing"};

bool IsWordSign(char sign) {
    return std::isalnum(static_cast<unsigned char>(sign)) != 0 || sign == '_' || sign == '.' ||
           static_cast<unsigned char>(sign) >= 0x80;
}

/// The quote or bracket that is open at the end of a text; nothing: none is.
std::optional<std::size_t> OpenedIn(std::string_view text) {
    std::optional<std::size_t> opened;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!opened && QuotesAndBrackets.find(text[i]) != std::string_view::npos) {
            opened = i;
        } else if (opened && text[i] == (text[*opened] == '[' ? ']' : text[*opened])) {
            opened.reset();
        }
    }
    return opened;
}

std::size_t BeginOfWord(std::string_view text) {
    std::size_t begin = text.size();
    while (begin > 0 && IsWordSign(text[begin - 1])) {
        --begin;
    }
    return begin;
}

std::string_view WithoutEnd(std::string_view text, std::string_view signs) {
    const std::size_t last = text.find_last_not_of(signs);
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

/// The variable that stands at the end of a text.
const Variable* VariableAtEnd(const DataTable& table, std::string_view text) {
    const bool isBracketed = text.ends_with(']');
    const std::size_t begin = isBracketed ? text.rfind('[') + 1 : BeginOfWord(text);
    const auto place = table.Find(text.substr(begin, text.size() - begin - (isBracketed ? 1 : 0)));
    return place ? &table.Variables[*place] : nullptr;
}

/// The variable that is compared at the end of a text: before = or <>, or before in and its list.
const Variable* ComparedAtEnd(const DataTable& table, std::string_view text) {
    text = WithoutEnd(text, " \n\t");
    const std::string_view operand = WithoutEnd(text, "=<>!");
    if (operand.size() < text.size()) {
        return VariableAtEnd(table, WithoutEnd(operand, " \n\t"));
    }
    const std::size_t list = text.rfind('(');
    if (list == std::string_view::npos || text.find(')', list) != std::string_view::npos) {
        return nullptr;
    }
    text = WithoutEnd(text.substr(0, list), " \n\t");
    if (!text.ends_with("in") || BeginOfWord(text) + 2 != text.size()) {
        return nullptr;
    }
    text = WithoutEnd(text.substr(0, text.size() - 2), " \n\t");
    text = text.ends_with(" not") ? WithoutEnd(text.substr(0, text.size() - 4), " \n\t") : text;
    return VariableAtEnd(table, text);
}

std::wstring Plain(std::string_view text) {
    return WithoutLetterCase(text);
}

bool HasWordWith(std::string_view label, const std::wstring& beginning) {
    const std::wstring words = L' ' + Plain(label);
    return words.find(L' ' + beginning) != std::wstring::npos;
}

std::vector<FormulaOffer> NamesThatBegin(const DataTable& table, std::string_view typed, bool isBracketed) {
    const std::wstring beginning = Plain(typed);
    std::vector<FormulaOffer> byName;
    std::vector<FormulaOffer> byLabel;
    for (const Variable& variable : table.Variables) {
        const std::string text = isBracketed ? "[" + variable.Name + "]" : FormulaName(variable.Name);
        if (Plain(variable.Name).starts_with(beginning)) {
            byName.push_back({text, variable.LongName});
        } else if (!beginning.empty() && HasWordWith(variable.LongName, beginning)) {
            byLabel.push_back({text, variable.LongName});
        }
    }
    std::ranges::move(byLabel, std::back_inserter(byName));
    return byName;
}

/// A label may hold one kind of quotes.
std::string InQuotes(const std::string& text, char quote) {
    const char other = quote == '"' ? '\'' : '"';
    const char sign = text.find(quote) == std::string::npos ? quote : other;
    return sign + text + sign;
}

std::vector<FormulaOffer> LabelsThatBegin(const Variable& variable, std::string_view typed, char quote) {
    std::vector<std::string> labels;
    for (const auto& [value, texts] : variable.Labels) {
        labels.push_back(texts.Label);
    }
    labels.insert(labels.end(), variable.Texts.begin(), variable.Texts.end());
    const std::wstring beginning = Plain(typed);
    std::set<std::string> known;
    std::vector<FormulaOffer> offers;
    for (const std::string& label : labels) {
        if (!label.empty() && Plain(label).starts_with(beginning) && known.insert(label).second) {
            offers.push_back({InQuotes(label, quote), variable.Name});
        }
    }
    return offers;
}

FormulaOffers AllOffersAt(const DataTable& table, std::string_view before) {
    const std::optional<std::size_t> opened = OpenedIn(before);
    const std::size_t from = opened ? *opened : BeginOfWord(before);
    const std::string_view typed = before.substr(opened ? from + 1 : from);
    if (opened && before[from] == '[') {
        return {from, NamesThatBegin(table, typed, true)};
    }
    const Variable* compared = ComparedAtEnd(table, before.substr(0, from));
    if (compared != nullptr && compared->HasLabels()) {
        return {from, LabelsThatBegin(*compared, typed, opened ? before[from] : '"')};
    }
    return {from, opened ? std::vector<FormulaOffer>() : NamesThatBegin(table, typed, false)};
}

}  // namespace

std::string FormulaName(const std::string& name) {
    const bool isKeyword =
        std::ranges::any_of(Keywords, [&](std::string_view word) { return EqualButForLetterCase(word, name); });
    const bool isWord = !name.empty() && std::isdigit(static_cast<unsigned char>(name[0])) == 0 && name[0] != '.' &&
                        std::ranges::all_of(name, IsWordSign) && !isKeyword;
    return isWord ? name : "[" + name + "]";
}

FormulaOffers OffersAt(const DataTable& table, std::string_view formula, std::size_t place, std::size_t most) {
    FormulaOffers offers = AllOffersAt(table, formula.substr(0, place));
    if (offers.Offers.size() > most) {
        offers.Offers.resize(most);
    }
    return offers;
}

}  // namespace quillara
