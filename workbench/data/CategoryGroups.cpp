#include "workbench/data/CategoryGroups.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/Errors.h"
#include "workbench/data/FormulaTexts.h"
#include "workbench/data/QuotedText.h"
#include "workbench/numbers/DecimalNumber.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

constexpr char Quote = '"';
constexpr char Bar = '|';
constexpr const char* MissingData = "Missing";

/// The label or text of the variable that a text means, in its own letters; nothing when there is none.
std::optional<std::string> LabelMeant(const Variable& variable, const std::string& text) {
    const FormulaPart part = VariablePart(0, variable);
    if (!HasLabels(part)) {
        return std::nullopt;
    }
    const DataTable table;
    std::vector<Remark> unheard;
    FormulaPart quoted;
    quoted.Role = PartRole::Quoted;
    quoted.Text = text;
    const std::vector<double> bearers = BearersOf({table, {text, ""}, unheard}, part, quoted);
    return bearers.empty() ? std::nullopt : std::optional(*variable.LabelOf(bearers.front()));
}

std::string Doubled(std::string_view text, char sign) {
    std::string doubled;
    for (const char letter : text) {
        doubled += letter == sign ? std::string(2, letter) : std::string(1, letter);
    }
    return doubled;
}

std::string AsQuoted(const std::string& text) {
    return Quote + Doubled(text, Quote) + Quote;
}

/// A category as it is named and as a formula has it.
struct Member {
    std::string Name;
    std::string Written;  ///< empty: the missing data
};

[[noreturn]] void RefuseCategory(const Variable& variable, const std::string& category) {
    throw DataError("The variable " + Quoted(variable.Name) + " has no category " + Quoted(category) +
                    "; several at once go by their names or values, as A|B.");
}

bool IsTimeText(const Variable& variable, const std::string& text) {
    return (variable.Kind == ValueKind::Date && DaysFromText(text)) ||
           (variable.Kind == ValueKind::TimeOfDay && SecondsFromText(text)) ||
           (variable.Kind == ValueKind::DateTime && SecondsFromDateTime(text));
}

Member MemberOf(const Variable& variable, const std::string& category) {
    if (const std::optional<std::string> label = LabelMeant(variable, category)) {
        return {*label, AsQuoted(*label)};
    }
    if (category == MissingData) {
        return {category, ""};
    }
    if (IsTimeText(variable, category)) {
        return {category, AsQuoted(category)};
    }
    const std::optional<double> number = DecimalNumber(category);
    if (!number || variable.Kind != ValueKind::Number) {
        RefuseCategory(variable, category);
    }
    return {category, ExactNumberText(*number)};
}

/// Formula and category of a group.
CategoryGroup GroupOfMembers(const Variable& variable, const std::vector<Member>& members) {
    CategoryGroup group;
    std::string list;
    bool hasMissing = false;
    for (const Member& member : members) {
        group.Category += (group.Category.empty() ? "" : std::string(1, Bar)) + member.Name;
        hasMissing = hasMissing || member.Written.empty();
        list += (list.empty() || member.Written.empty() ? "" : ", ") + member.Written;
    }
    const std::string name = "[" + Doubled(variable.Name, ']') + "]";
    const std::string category = AsQuoted(group.Category);
    std::string formula = "if(" + name + " in (" + list + "), " + category + ", \"other\")";
    if (hasMissing) {
        formula = "if(missing(" + name + "), " + category + ", " + (list.empty() ? "\"other\"" : formula) + ")";
    }
    group.Grouping.Formula = formula;
    return group;
}

std::string FreeName(const DataTable& table, const std::string& name, const std::string& formula) {
    std::string free = name;
    for (int number = 2;; ++number) {
        const std::optional<std::size_t> standing = table.Find(free);
        if (!standing || table.Variables[*standing].LongName == formula) {
            return free;
        }
        free = name + std::to_string(number);
    }
}

}  // namespace

std::vector<std::string> CategoriesIn(const Variable& variable, std::string_view text) {
    if (text.find(Bar) == std::string_view::npos || LabelMeant(variable, std::string(text))) {
        return {std::string(text)};
    }
    std::vector<std::string> categories(1);
    bool isQuoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isDoubled = isQuoted && text.substr(at).starts_with("\"\"");
        if (text[at] == Quote && !isDoubled && (isQuoted || categories.back().empty())) {
            isQuoted = !isQuoted;
        } else if (text[at] == Bar && !isQuoted) {
            categories.emplace_back();
        } else {
            categories.back() += text[at];
            at += isDoubled ? 1 : 0;
        }
    }
    return categories;
}

CategoryGroup GroupOf(const DataTable& table, const Variable& variable, const std::vector<std::string>& categories) {
    std::vector<Member> members;
    std::ranges::transform(categories, std::back_inserter(members),
                           [&](const std::string& category) { return MemberOf(variable, category); });
    CategoryGroup group = GroupOfMembers(variable, members);
    group.Grouping.Name = FreeName(table, variable.Name + "_group", group.Grouping.Formula);
    return group;
}

}  // namespace quillara
