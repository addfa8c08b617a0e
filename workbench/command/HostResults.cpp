#include "workbench/command/HostResults.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/documents/BoxTypes.h"
#include "workbench/documents/ResultNames.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/scripting/CategoryLookup.h"

namespace quillara {
namespace {

constexpr const char* GroupsName = "groups";
constexpr const char* CrossName = "crosstab";
constexpr const char* MosaicName = "mosaic";
constexpr const char* BoxesName = "box-by-group";

short VariableNumberOf(const DataTable& table, const std::string& name) {
    return static_cast<short>(table.IndexOf(name) + 1);
}

/// Nothing: as the values of the variable say.
std::optional<Cut> CutOf(const std::string& name, short number, const DrillOptions& options,
                         const VariableChoice& chosen) {
    for (auto one = options.Categorizations.rbegin(); one != options.Categorizations.rend(); ++one) {
        if (one->Variable == name) {
            const Categorization& how = one->How;
            return Cut{
                static_cast<CutMethod>(how.Method), how.Count, how.StepSize, how.StepStart, how.StartAtMin, how.Bounds};
        }
    }
    const auto holds = [number](const std::vector<short>& list) {
        return std::ranges::find(list, number) != list.end();
    };
    const bool isCategorical = holds(chosen.Drill.Categorical) || holds(chosen.Review.Categorical);
    return isCategorical ? std::optional(Cut{}) : std::nullopt;
}

/// " where cut = Fair and color = D"; nothing without a step.
std::string Where(const std::vector<std::string>& variables, const std::vector<std::string>& categories) {
    std::string text;
    for (std::size_t i = 0; i < categories.size(); ++i) {
        text += (text.empty() ? " where " : " and ") + variables[i] + " = " + categories[i];
    }
    return text;
}

/// A list of categories is empty.
struct NoCategories {};

}  // namespace

HostResults::HostResults(DrillSession& session, const DataTable& table, OutputCollection& outputs)
    : Session(session), Table(table), Outputs(outputs) {}

void HostResults::Add(SpreadsheetDocument document, int sequence, const char* result) {
    Outputs.Add(std::move(document), {0, sequence, result});
}

void HostResults::Tell(Remark remark) {
    Notice(&Session.Analysed(), std::move(remark));
}

bool HostResults::Show(int result) {
    const SubsetStatistics statistics(Session.Analysed());
    std::vector<SpreadsheetDocument> documents;
    if (result == DistributionResult) {
        documents = statistics.Distributions();
    } else if (std::optional<SpreadsheetDocument> contrast = statistics.WhatDiffers()) {
        documents.push_back(std::move(*contrast));
    }
    int sequence = 0;
    for (SpreadsheetDocument& document : documents) {
        Add(std::move(document), ++sequence, NameOfResult(result).data());
    }
    return sequence > 0;
}

void HostResults::ShowCrosses(const DrillOptions& options, const VariableChoice& chosen) {
    if (options.Groups.Crosses.empty()) {
        return;
    }
    const SubsetStatistics statistics(Session.Analysed());
    const auto side = [&](const std::string& name) {
        return CrossVariable{Table.IndexOf(name), CutOf(name, VariableNumberOf(Table, name), options, chosen)};
    };
    int sequence = 0;
    int mosaics = 0;
    for (const CrossNames& names : options.Groups.Crosses) {
        const CrossTable cross = statistics.CrossOf(side(names.Rows), side(names.Columns));
        for (SpreadsheetDocument& document : TablesOfCross(cross, statistics.Weight())) {
            Add(std::move(document), ++sequence, CrossName);
        }
        if (options.Charts.Folder || options.Format == OutputFormat::Html) {
            Outputs.Add(MosaicOf(cross, statistics.Weight()), {0, ++mosaics, MosaicName});
        }
    }
}

void HostResults::ShowBoxes(const DrillOptions& options, const VariableChoice& chosen) {
    if (options.Groups.Boxes.empty()) {
        return;
    }
    const SubsetStatistics statistics(Session.Analysed());
    const std::string& by = *options.Groups.By;
    const CrossVariable groups{Table.IndexOf(by), CutOf(by, VariableNumberOf(Table, by), options, chosen)};
    int sequence = 0;
    for (const std::string& name : options.Groups.Boxes) {
        for (const BoxTypeFacts& facts : BoxTypes) {
            const std::set<int>& wanted = options.Charts.BoxTypes;
            if (wanted.empty() ? facts.ShowsMedian() : wanted.contains(facts.CheckBox)) {
                Outputs.Add(statistics.BoxesBy(Table.IndexOf(name), groups, facts.Type), {0, ++sequence, BoxesName});
            }
        }
    }
}

/// The tables come before what is shown within the categories, as they are of the state before.
void HostResults::ShowEach(const std::vector<std::string>& variables, const std::function<void()>& showAll) {
    for (const std::string& name : variables) {
        if (!Session.CanGoDown(VariableNumberOf(Table, name))) {
            throw DataError("The variable " + Quoted(name) +
                            " has no categories to go through: it has a step already, or is no drill variable.");
        }
    }
    const SubsetStatistics statistics(Session.Analysed());
    const std::size_t place = Outputs.Entries.size();
    const int step = static_cast<int>(Outputs.Steps.size());
    Walk walk{variables, showAll, statistics.GroupsBy(variables), {}};
    Descend(walk);
    TellOfRest(walk, static_cast<std::int64_t>(statistics.Subset().Count()));
    OutputCollection tables;
    tables.Step = step;
    int sequence = 0;
    for (SpreadsheetDocument& document : walk.Tables.Documents()) {
        tables.Add(std::move(document), {0, ++sequence, GroupsName});
    }
    Outputs.Entries.insert(Outputs.Entries.begin() + static_cast<std::ptrdiff_t>(place),
                           std::make_move_iterator(tables.Entries.begin()),
                           std::make_move_iterator(tables.Entries.end()));
}

void HostResults::Descend(Walk& walk) {
    const std::string& name = walk.Variables[walk.Categories.size()];
    const short variable = VariableNumberOf(Table, name);
    std::size_t rows = 1;
    for (std::size_t row = 0; row < rows; ++row) {
        std::string category;
        const auto chooseRow = [&](const CategoryList& list) {
            rows = list.Rows.size();
            if (rows == 0) {
                throw NoCategories();
            }
            category = NameForPeople(list, list.Rows[row]);
            return row;
        };
        try {
            Session.Down(variable, chooseRow);
        } catch (const NoCategories&) {
            Tell({"group-without-categories", "The variable " + Quoted(name) + " has no category with cases" +
                                                  Where(walk.Variables, walk.Categories) + "; that is passed over."});
            return;
        }
        if (walk.ShowAll) {
            Outputs.Steps.push_back({StepKind::Down, name, category, CountRemaining(Session.Analysed())});
        }
        walk.Categories.push_back(std::move(category));
        Arrive(walk);
        walk.Categories.pop_back();
        Session.Up(variable);
        if (walk.ShowAll) {
            Outputs.Steps.push_back({StepKind::Up, name, {}, CountRemaining(Session.Analysed())});
        }
    }
}

/// A category may be shown with cases that its own step leaves out.
void HostResults::Arrive(Walk& walk) {
    const SubsetStatistics statistics(Session.Analysed());
    if (statistics.Subset().IsEmpty()) {
        Tell({"group-without-cases",
              "No case is left" + Where(walk.Variables, walk.Categories) + "; that is passed over."});
    } else if (walk.Categories.size() < walk.Variables.size()) {
        Descend(walk);
    } else {
        walk.Tables.Add(walk.Categories, statistics.Subset());
        walk.Cases += static_cast<std::int64_t>(statistics.Subset().Count());
        if (walk.ShowAll) {
            walk.ShowAll();
        }
    }
}

void HostResults::TellOfRest(const Walk& walk, std::int64_t cases) {
    if (walk.Cases >= cases) {
        return;
    }
    std::string names;
    for (const std::string& name : walk.Variables) {
        names += (names.empty() ? "" : " and ") + Quoted(name);
    }
    Tell({"groups-leave-out", std::to_string(cases - walk.Cases) + " of " + std::to_string(cases) +
                                  " cases are in no category of " + names + " and so in no group."});
}

}  // namespace quillara
