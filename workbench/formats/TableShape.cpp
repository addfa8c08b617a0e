#include "workbench/formats/TableShape.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string_view>

#include "workbench/data/QuotedText.h"
#include "workbench/data/WrittenValue.h"

namespace quillara {
namespace {

constexpr std::array<std::string_view, 4> Separators = {",", ";", "\t", "|"};

using RemarkList = std::vector<Remark>;

std::string CountOf(std::size_t count, std::size_t all, const std::string& things) {
    return std::to_string(count) + " of " + std::to_string(all) + ' ' + things;
}

std::string AdviceToSkip(std::size_t aboveNames) {
    if (aboveNames == 0) {
        return "See whether the names stand in another line: --skip N (skip=N in Python) passes over lines above them.";
    }
    const std::string skip = std::to_string(aboveNames);
    return "The names seem to stand in line " + std::to_string(aboveNames + 1) + ": --skip " + skip + " (skip=" + skip +
           " in Python) passes over what is above.";
}

void RemarkOnSingle(const DataTable& table, const TableOrigin& origin, RemarkList& remarks) {
    if (table.Variables.size() != 1) {
        return;
    }
    const std::string& name = table.Variables.front().Name;
    const std::string text = "The file has a single variable, " + Quoted(name);
    if (origin.AboveNames > 0) {
        remarks.push_back({"single-variable", text + '.', AdviceToSkip(origin.AboveNames)});
        return;
    }
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

void RemarkOnValues(const std::vector<std::string>& names, RemarkList& remarks) {
    const auto value =
        std::ranges::find_if(names, [](const std::string& name) { return ReadWrittenValue(name).has_value(); });
    if (value != names.end()) {
        remarks.push_back({"names-like-values",
                           "The first record is taken for names, but " + Quoted(*value) + " looks like a value.",
                           "Read a file without names with --no-header."});
    }
}

/// A single one in front may be that of row names.
void RemarkOnMissing(const TableOrigin& origin, RemarkList& remarks) {
    const std::vector<std::string>& names = origin.Names;
    const auto missing = static_cast<std::size_t>(std::ranges::count(names, std::string()));
    if (missing > 1 || (missing == 1 && !names.front().empty() && origin.AboveNames > 0)) {
        remarks.push_back({"names-missing",
                           CountOf(missing, names.size(), "variables") + (missing == 1 ? " has" : " have") +
                               " no name in the first record and " +
                               (missing == 1 ? "is called by its place." : "are called by their places."),
                           AdviceToSkip(origin.AboveNames)});
    }
}

void RemarkOnRepeated(const std::vector<std::string>& names, const DataTable& table, RemarkList& remarks) {
    std::set<std::string_view> met;
    std::vector<std::string> renamed;
    for (std::size_t place = 0; place < names.size(); ++place) {
        if (!names[place].empty() && !met.insert(names[place]).second) {
            renamed.push_back(table.Variables[place].Name);
        }
    }
    if (!renamed.empty()) {
        remarks.push_back({"names-repeated",
                           std::to_string(renamed.size()) +
                               (renamed.size() == 1 ? " variable has" : " variables have") +
                               " the name of another and " + (renamed.size() == 1 ? "is" : "are") + " called " +
                               QuotedList(renamed) + '.',
                           "Give each a name of its own in the file to tell them apart."});
    }
}

bool HasNoValue(const Variable& variable) {
    return HoldsForAll(variable.Values, [&](double value) { return variable.IsMissing(value); });
}

}  // namespace

std::vector<Remark> RemarksOnShape(const DataTable& table, const TableOrigin& origin) {
    RemarkList remarks;
    if (origin.IsDelimited) {
        RemarkOnSingle(table, origin, remarks);
        RemarkOnValues(origin.Names, remarks);
    }
    RemarkOnMissing(origin, remarks);
    RemarkOnRepeated(origin.Names, table, remarks);
    return remarks;
}

std::optional<Remark> RemarkOnEmptyVariables(const DataTable& table) {
    std::vector<std::string> empty;
    for (const Variable& variable : table.Variables) {
        if (HasNoValue(variable)) {
            empty.push_back(variable.Name);
        }
    }
    if (table.Cases == 0 || empty.empty()) {
        return std::nullopt;
    }
    return Remark{"columns-empty", CountOf(empty.size(), table.Variables.size(), "variables") +
                                       (empty.size() == 1 ? " has" : " have") +
                                       " no value at all: " + QuotedList(empty) + '.'};
}

}  // namespace quillara
