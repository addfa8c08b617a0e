#include "workbench/command/GroupOptions.h"

#include <algorithm>

#include "workbench/command/CommandLine.h"
#include "workbench/command/DrillOptions.h"
#include "workbench/command/NamedVariables.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/documents/ResultNames.h"

namespace quillara {
namespace {

constexpr std::size_t MostEach = 2;
constexpr const char* Group = "Groups side by side";

/// The place of the colon that stands outside quotes; npos without one.
std::size_t ColonIn(const std::string& text) {
    bool isQuoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        isQuoted = text[i] == '"' ? !isQuoted : isQuoted;
        if (text[i] == ':' && !isQuoted) {
            return i;
        }
    }
    return std::string::npos;
}

/// Each variable of one side with each of the other.
void TakeCrosses(GroupOptions& groups, const std::string& text) {
    const std::size_t colon = ColonIn(text);
    const auto names = [&](std::size_t from, std::size_t length) { return ParseNames(text.substr(from, length)); };
    const std::vector<std::string> rows = colon == std::string::npos ? names(0, 0) : names(0, colon);
    const std::vector<std::string> columns = colon == std::string::npos ? rows : names(colon + 1, text.size());
    if (rows.empty() || columns.empty()) {
        throw UsageError(Quoted(text) + " can't be used; two variables with a colon between are wanted, as: sex:age.");
    }
    for (const std::string& row : rows) {
        for (const std::string& column : columns) {
            groups.Crosses.push_back({row, column});
        }
    }
}

}  // namespace

void AddGroupOptions(CLI::App& command, GroupOptions& groups) {
    AddRepeated(
        command, "--each", [&groups](const std::string& name) { groups.Each.push_back(ParseName(name)); },
        "for every category of VAR, behind the steps, a step down and up again: a row for each category (N, percent) "
        "in "
        "a table of the continuous variables (sum, mean, deviation, median, quartiles) and one of the categorical ones "
        "(percents of categories); given twice, "
        "for every category of the second within the first; takes the place of the default results; with --show the "
        "results named there too, in full for every category")
        ->type_name("VAR")
        ->group(Group);
    AddRepeated(
        command, "--crosstab", [&groups](const std::string& text) { TakeCrosses(groups, text); },
        "cross tables of the cases left: counts, percents of rows, columns and all, expected counts, chi-square with p "
        "and Cramer's V, weighted; rows and columns are any variables of the file; --categorize cuts those that are "
        "continuous drill variables; takes the place of the default results; repeatable")
        ->type_name("ROWS:COLUMNS")
        ->group(Group);
    AddValue(
        command, "--by", [&groups](const std::string& name) { groups.By = ParseName(name); },
        "with --box VAR: box plots of the variables named there, with a box and n for each category of this one; "
        "--categorize cuts it when it is a continuous drill variable; takes the place of the default results")
        ->type_name("VAR")
        ->group(Group);
    command
        .add_flag("--what-differs", groups.WhatDiffers,
                  "in which open and review variables the cases left differ most from the others that are selected; "
                  "the same as --show what-differs; takes the place of the default results")
        ->disable_flag_override()
        ->group(Group);
}

void CompleteGroups(DrillOptions& options) {
    const GroupOptions& groups = options.Groups;
    if (groups.Each.size() > MostEach || (groups.Each.size() == MostEach && groups.Each[0] == groups.Each[1])) {
        throw UsageError("--each takes one variable, or is given twice with two different ones.");
    }
    if (groups.By && groups.Boxes.empty()) {
        throw UsageError("--by needs the variables whose box plots it divides, as: --box age --by sex.");
    }
    if (!groups.Boxes.empty() && !groups.By) {
        throw UsageError("--box " + groups.Boxes.front() +
                         " needs the variable whose categories have a box each, as: --by sex; --box alone shows the "
                         "box plots of the continuous review variables.");
    }
    if (!groups.IsAnyAskedFor()) {
        return;
    }
    options.Results.erase(options.Results.begin(),
                          options.Results.begin() + static_cast<std::ptrdiff_t>(options.DefaultResults));
    options.DefaultResults = 0;
    if (groups.WhatDiffers && std::ranges::find(options.Results, WhatDiffersResult) == options.Results.end()) {
        options.Results.push_back(WhatDiffersResult);
    }
}

}  // namespace quillara
