#include "workbench/scripting/SubsetStatistics.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "resources/ControlIds.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/hosting/TableServices.h"
#include "workbench/hosting/WeightsInForce.h"
#include "workbench/hosting/WorkerThreads.h"

namespace quillara {
namespace {

RowSet RemainingIn(AnalysisDocument& document) {
    const RowSet* rows = RemainingCases(document);
    if (rows == nullptr) {
        throw DataError("The analysis doesn't tell which cases remain, or there is not enough memory.");
    }
    return *rows;
}

std::vector<CaseCondition> StepsOf(AnalysisDocument& document) {
    std::vector<CaseCondition> conditions;
    return document.Analysis().FindStepConditions(conditions) ? conditions : std::vector<CaseCondition>();
}

bool Holds(const std::vector<std::size_t>& indexes, std::size_t index) {
    return std::ranges::find(indexes, index) != indexes.end();
}

/// Variables chosen by both buttons, but for those with a step in force.
ComparedVariables OpenIn(AnalysisDocument& document) {
    const std::vector<CaseCondition> steps = StepsOf(document);
    ComparedVariables open;
    for (const int button : {DrillVariablesButton, ReviewVariablesButton}) {
        const TwoLists lists = DialogsOf(&document).Chosen.Of(button);
        for (const std::size_t list : {std::size_t{0}, std::size_t{1}}) {
            for (const short number : lists[list]) {
                const std::size_t index = static_cast<std::size_t>(number) - 1;
                const bool isKnown = Holds(open.Categorical, index) || Holds(open.Continuous, index);
                if (!isKnown && std::ranges::find(steps, number, &CaseCondition::Variable) == steps.end()) {
                    (list == 0 ? open.Categorical : open.Continuous).push_back(index);
                }
            }
        }
    }
    return open;
}

void NoticeEmptyGroups(AnalysisDocument& document, const CrossSide& side, bool hasCases) {
    if (side.Empty > 0 && hasCases) {
        Notice(&document, {"group-without-cases",
                           std::to_string(side.Empty) + " of " + std::to_string(side.Empty + side.Names.size()) +
                               " categories of " + Quoted(side.Variable) + (side.Empty == 1 ? " has" : " have") +
                               " no case in the cross table and so no place in it."});
    }
}

}  // namespace

Cut CutBy(const Categorization& how) {
    return {static_cast<CutMethod>(how.Method), how.Count, how.StepSize, how.StepStart, how.StartAtMin, how.Bounds};
}

SubsetStatistics::SubsetStatistics(AnalysisDocument& document)
    : Document(document),
      Table(document.Table()),
      Remaining(RemainingIn(document)),
      Weights(WeightsInForce(quillara::TableOf(&document))),
      Variables(OpenIn(document)) {}

std::vector<SpreadsheetDocument> SubsetStatistics::Distributions() const {
    NoticeWeightless(Document);
    std::vector<SpreadsheetDocument> tables;
    if (!Variables.Continuous.empty()) {
        tables.push_back(DistributionTable(Scope(), Variables.Continuous));
    }
    for (const std::size_t variable : Variables.Categorical) {
        tables.push_back(ShareTable(Scope(), variable));
    }
    return tables;
}

std::optional<SpreadsheetDocument> SubsetStatistics::DistributionOf(std::optional<std::size_t> variable) const {
    NoticeWeightless(Document);
    if (!variable) {
        return Variables.Continuous.empty() ? std::nullopt
                                            : std::optional(DistributionTable(Scope(), Variables.Continuous));
    }
    return Holds(Variables.Categorical, *variable) ? std::optional(ShareTable(Scope(), *variable)) : std::nullopt;
}

std::optional<SpreadsheetDocument> SubsetStatistics::WhatDiffers() const {
    NoticeWeightless(Document);
    RowSet rest = TableServicesOf(&Document).Find({});
    const std::span<std::uint64_t> bits = rest.Bits();
    std::ranges::transform(bits, Remaining.Bits(), bits.begin(),
                           [](std::uint64_t all, std::uint64_t kept) { return all & ~kept; });
    if (rest.IsEmpty() || (Variables.Categorical.empty() && Variables.Continuous.empty())) {
        return std::nullopt;
    }
    const PartRunner runner = [this](std::int32_t parts, const std::function<void(std::int32_t)>& work) {
        WorkersOf(&Document).RunEach(parts, work);
    };
    return ContrastTable(ContrastsOf(Table, Variables, {Remaining, rest, Weights}, runner), Weights.Variable);
}

CrossTable SubsetStatistics::CrossOf(const CrossVariable& rows, const CrossVariable& columns) const {
    NoticeWeightless(Document);
    CrossTable cross = CrossTableOf(Table, rows, columns, Remaining, Weights);
    for (const CrossSide* side : {&cross.Rows, &cross.Columns}) {
        NoticeEmptyGroups(Document, *side, cross.Cases > 0);
    }
    if (cross.Cases == 0) {
        Notice(&Document,
               {"result-empty",
                "The cross table of " + Quoted(cross.Rows.Variable + " by " + cross.Columns.Variable) + " has no case.",
                ""});
    }
    return cross;
}

GraphDocument SubsetStatistics::BoxesBy(std::size_t variable, const CrossVariable& by, BoxType type) const {
    NoticeWeightless(Document);
    GraphDocument boxes = BoxesByGroup(Scope(), variable, by, type);
    const BoxPlot& plot = std::get<BoxPlot>(boxes.Content);
    NoticeLeftOut(&Document, "The plot of " + Quoted(plot.Groups->Variable + " by " + plot.Groups->By),
                  plot.Groups->LeftOut);
    return boxes;
}

GroupTables SubsetStatistics::GroupsBy(const std::vector<std::string>& names) const {
    NoticeWeightless(Document);
    ComparedVariables others = Variables;
    for (const std::string& name : names) {
        std::erase(others.Categorical, Table.IndexOf(name));
        std::erase(others.Continuous, Table.IndexOf(name));
    }
    return {names, std::move(others), Scope()};
}

}  // namespace quillara
