#include "workbench/command/HostResults.h"

#include <algorithm>
#include <set>
#include <utility>

#include "workbench/documents/BoxTypes.h"
#include "workbench/documents/ResultNames.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/recording/PythonText.h"
#include "workbench/scripting/GroupWalk.h"
#include "workbench/views/DocumentViews.h"

namespace quillara {
namespace {

constexpr const char* GroupsName = "groups";
constexpr const char* CrossName = "crosstab";
constexpr const char* BoxesName = "box-by-group";

short VariableNumberOf(const DataTable& table, const std::string& name) {
    return static_cast<short>(table.IndexOf(name) + 1);
}

/// Nothing: as the values of the variable say.
std::optional<Cut> CutOf(const std::string& name, short number, const DrillOptions& options,
                         const VariableChoice& chosen) {
    for (auto one = options.Categorizations.rbegin(); one != options.Categorizations.rend(); ++one) {
        if (one->Variable == name) {
            return CutBy(one->How);
        }
    }
    const auto holds = [number](const std::vector<short>& list) {
        return std::ranges::find(list, number) != list.end();
    };
    const bool isCategorical = holds(chosen.Drill.Categorical) || holds(chosen.Review.Categorical);
    return isCategorical ? std::optional(Cut{}) : std::nullopt;
}

std::string EachLine(const std::vector<std::string>& variables) {
    std::string names;
    for (const std::string& name : variables) {
        names += (names.empty() ? "" : ", ") + PythonText(name);
    }
    return "drill.each(" + names + ")";
}

/// As the categorization is written, where it isn't plain from the variable how it is cut.
std::string CutText(const Variable& variable, const std::optional<Cut>& cut, const DrillOptions& options) {
    for (auto one = options.Categorizations.rbegin(); one != options.Categorizations.rend(); ++one) {
        if (one->Variable == variable.Name) {
            return one->Text;
        }
    }
    return cut && !variable.HasLabels() ? "distinct" : "";
}

}  // namespace

HostResults::HostResults(DrillSession& session, const DataTable& table, OutputCollection& outputs,
                         SessionRecorder* recorder)
    : Session(session), Table(table), Outputs(outputs), Recorder(recorder) {}

void HostResults::Add(SpreadsheetDocument document, int sequence, const char* result) {
    Outputs.Add(std::move(document), {0, sequence, result});
}

void HostResults::Record(const std::string& line) {
    if (Recorder != nullptr) {
        Recorder->RecordLine(line);
    }
}

bool HostResults::Show(int result) {
    const SubsetStatistics statistics(Session.Analysed());
    std::vector<SpreadsheetDocument> documents;
    if (result == DistributionResult) {
        documents = statistics.Distributions();
        RecordDistributions(statistics.Open());
    } else if (std::optional<SpreadsheetDocument> contrast = statistics.WhatDiffers()) {
        documents.push_back(std::move(*contrast));
        Record("drill.what_differs()");
    }
    int sequence = 0;
    for (SpreadsheetDocument& document : documents) {
        Add(std::move(document), ++sequence, NameOfResult(result).data());
    }
    return sequence > 0;
}

/// Scripts cut variables by members, and don't know then how many intervals there are.
void HostResults::RecordRemarks(std::string_view code) {
    for (const Remark& remark : RemarksOn(&Session.Analysed()).All()) {
        if (Recorder != nullptr && remark.Code == code) {
            Recorder->RecordRemark(remark);
        }
    }
}

/// A call for each table.
void HostResults::RecordDistributions(const ComparedVariables& open) {
    if (!open.Continuous.empty()) {
        Record("drill.distribution()");
    }
    for (const std::size_t variable : open.Categorical) {
        Record("drill.distribution(" + PythonText(Table.Variables[variable].Name) + ")");
    }
}

/// The argument of a call that says how these variables are cut, where that isn't plain; empty: it is.
std::string HostResults::CutArgument(const std::vector<std::string>& names, const DrillOptions& options,
                                     const VariableChoice& chosen) const {
    std::string cuts;
    for (const std::string& name : names) {
        const Variable& variable = Table.Variables[Table.IndexOf(name)];
        const std::string cut = CutText(variable, CutOf(name, VariableNumberOf(Table, name), options, chosen), options);
        const std::string entry = PythonText(name) + ": " + PythonText(cut);
        if (!cut.empty() && cuts != entry) {
            cuts += (cuts.empty() ? "" : ", ") + entry;
        }
    }
    return cuts.empty() ? "" : ", categorize={" + cuts + "}";
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
        Record("drill.crosstab(" + PythonText(names.Rows) + ", " + PythonText(names.Columns) +
               CutArgument({names.Rows, names.Columns}, options, chosen) + ")");
        for (SpreadsheetDocument& document : TablesOfCross(cross, statistics.Weight())) {
            Add(std::move(document), ++sequence, CrossName);
        }
        if (options.Charts.Folder || HasPictures(options.Format)) {
            Outputs.Add(MosaicOf(cross, statistics.Weight()), {0, ++mosaics, std::string(MosaicName)});
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
                Record("drill.box(" + PythonText(name) + ", by=" + PythonText(by) +
                       (facts.ShowsMedian() ? "" : ", of=" + PythonText(facts.Word)) +
                       CutArgument({by}, options, chosen) + ")");
            }
        }
    }
}

void HostResults::ShowEach(const DrillOptions& options, const std::function<void()>& showAll) {
    const std::vector<std::string>& variables = options.Groups.Each;
    IntervalCounts intervals;
    for (const CategorizedVariable& each : options.Categorizations) {
        if (const std::optional<std::size_t> count = IntervalsOf(each.How)) {
            intervals[each.Variable] = *count;
        }
    }
    const auto work = [&] { return GroupsSideBySide(Session, Session.Analysed(), variables, intervals); };
    const std::vector<SpreadsheetDocument> tables =
        Recorder == nullptr ? work() : Recorder->RecordAside(EachLine(variables), work);
    if (!intervals.empty()) {
        RecordRemarks(EmptyGroupsCode);
    }
    Outputs.Step = static_cast<int>(Outputs.Steps.size());
    int sequence = 0;
    for (const SpreadsheetDocument& table : tables) {
        Add(table, ++sequence, GroupsName);
    }
    if (showAll) {
        GroupWalk walk(Session, Session.Analysed(), variables);
        walk.Stepped = [this](StepTaken step) {
            step.IsOfGroup = true;
            Outputs.Steps.push_back(std::move(step));
        };
        walk.Arrived = [&showAll](const auto&, const auto&) { showAll(); };
        walk.Run();
    }
}

}  // namespace quillara
