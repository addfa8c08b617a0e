// Plots that the host computes itself from the cases that a filter keeps.

#include <algorithm>
#include <cstdint>
#include <functional>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/AnalysisSupport.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/RowSet.h"
#include "workbench/documents/GraphDocument.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/CaseRows.h"
#include "workbench/hosting/CaseServices.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/DocumentSubjects.h"
#include "workbench/hosting/LongTexts.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/hosting/ResultRouting.h"
#include "workbench/hosting/RoutedResults.h"
#include "workbench/hosting/Surroundings.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/hosting/TableServices.h"
#include "workbench/hosting/WeightsInForce.h"
#include "workbench/hosting/WorkerThreads.h"
#include "workbench/plots/BoxPlots.h"
#include "workbench/plots/Histograms3D.h"
#include "workbench/plots/ScatterMatrices.h"

using quillara::CaseRows;
using quillara::GraphDocument;
using quillara::Histogram3DPlot;
using quillara::Interrupted;
using quillara::PlotRows;
using quillara::Surroundings;
using quillara::TableInUse;

namespace {

constexpr short Made = 0;
constexpr short NotMade = 1;
constexpr char NoMemory[] = "There is not enough memory for this plot; close other programs and try again.";
constexpr char ProgressText[] = "Making plots ";
constexpr std::int32_t CasesPerBlock = 1024;

/// What a plot asks its filter.
enum class FilterUse : std::uint8_t {
    Cases,  ///< whether a case is kept
    Pairs,  ///< the two values of the case too
};

/// Which cases a plot is made of.
struct RowChoice {
    CaseFilter Filter;
    FilterUse Use = FilterUse::Cases;
};

bool Keeps(RowChoice choice, const double* values) {
    float x = 0.0F;
    float y = 0.0F;
    const bool asksForPair = choice.Use == FilterUse::Pairs;
    return choice.Filter(nullptr, nullptr, values, asksForPair ? &x : nullptr, asksForPair ? &y : nullptr) == 0;
}

/// The selected cases that a filter keeps. Throws Interrupted when the user cancels.
PlotRows FilterRows(const TableInUse& data, const Surroundings& around, RowChoice choice) {
    const std::int32_t cases = data.Table().Cases;
    CaseRows values(data.Table());
    PlotRows rows(static_cast<std::size_t>(cases));
    for (std::int32_t first = 0; first < cases; first += CasesPerBlock) {
        if (around.AskForBreak()) {
            throw Interrupted();
        }
        around.ReportProgress(first / 2);
        const std::int32_t count = std::min(CasesPerBlock, cases - first);
        for (std::int32_t row = first; row < first + count; ++row) {
            const auto place = static_cast<std::size_t>(row);
            if (data.ResultOf(row + 1) == CaseResult::Use && Keeps(choice, values.Row(place))) {
                rows.Insert(place);
            }
        }
    }
    return rows;
}

/// The same without asking the filter, whose conditions are known.
const PlotRows& RowsThatMeet(CAnalysisDoc* document, const std::vector<CaseCondition>& conditions) {
    if (quillara::SurroundingsOf(document).AskForBreak()) {
        throw Interrupted();
    }
    return quillara::TableServicesOf(document).Find(conditions);
}

/// The same once for all plots of one command, between which neither the steps nor the selection can change.
const PlotRows& KeptRows(CAnalysisDoc* document, RowChoice choice) {
    const std::vector<CaseCondition>* conditions = quillara::ResultsOf(document).PlotConditions;
    if (conditions != nullptr && quillara::CaseServicesOf(document).Conditions != nullptr) {
        return RowsThatMeet(document, *conditions);
    }
    const quillara::DialogState& dialogs = quillara::DialogsOf(document);
    quillara::KeptPlotRows& kept = quillara::ResultsOf(document).PlotRowsOfCommand;
    const bool isKnown = dialogs.Command && kept.Filter == choice.Filter && kept.Command == dialogs.CommandCount;
    if (!isKnown) {
        kept = {};
        kept.Rows = FilterRows(quillara::TableOf(document), quillara::SurroundingsOf(document), choice);
        kept.Filter = choice.Filter;
        kept.Command = dialogs.CommandCount;
    }
    return kept.Rows;
}

/// Indexes of variables in the table; numbers of none are passed over.
std::vector<std::size_t> IndexesOf(const TableInUse& data, const short* variables, short count) {
    std::vector<std::size_t> indexes;
    for (short i = 0; i < count; ++i) {
        if (data.Find(variables[i]) != nullptr) {
            indexes.push_back(static_cast<std::size_t>(variables[i]) - 1);
        }
    }
    return indexes;
}

quillara::PartRunner RunnerOf(CAnalysisDoc* document) {
    return [document](std::int32_t parts, const std::function<void(std::int32_t)>& work) {
        quillara::WorkersOf(document).RunEach(parts, work);
    };
}

std::vector<std::string> TitleOf(const char* title, const char* caption) {
    std::vector<std::string> lines{quillara::Replace8CharGrow(title == nullptr ? "" : title)};
    if (caption != nullptr && *caption != '\0') {
        lines.push_back(quillara::Replace8CharGrow(caption));
    }
    return lines;
}

/// The title of a scatterplot matrix holds its caption behind a line feed.
std::vector<std::string> TitleOf(const std::string& title) {
    const std::size_t end = title.find('\n');
    return end == std::string::npos ? TitleOf(title.c_str(), nullptr)
                                    : TitleOf(title.substr(0, end).c_str(), title.substr(end + 1).c_str());
}

/// The progress display of one plot, until it is there or isn't made: reading the cases is half of the work.
class PlotProgress {
  public:
    PlotProgress(Surroundings& around, std::int32_t cases) : Around(around), Cases(cases) {
        Around.ProgressText = ProgressText;
        Around.StartProgress(Cases);
    }
    PlotProgress(const PlotProgress&) = delete;
    PlotProgress& operator=(const PlotProgress&) = delete;
    ~PlotProgress() { Around.EndProgress(); }

    void TellCasesAreRead() const { Around.ReportProgress(Cases / 2); }

  private:
    Surroundings& Around;
    std::int32_t Cases;
};

/// Computes a plot from the cases that its filter keeps and sends it on its way. None is made when the user cancels or
/// there isn't enough memory.
template <typename Compute>
short MakePlot(CAnalysisSupport& analysis, GraphDocument graph, const RowChoice& choice, Compute compute) {
    CAnalysisDoc* document = analysis.GetDocument();
    quillara::ResultsOf(document).NextSubject = {};
    try {
        const PlotProgress progress(quillara::SurroundingsOf(document), quillara::TableOf(document).Table().Cases);
        const PlotRows& rows = KeptRows(document, choice);
        progress.TellCasesAreRead();
        graph.About.IsEmptied = rows.IsEmpty() && quillara::TableOf(document).HasCases();
        graph.Content = compute(rows);
        if (!quillara::WeightsInForce(quillara::TableOf(document)).Variable.empty()) {
            const bool isBoxPlot = std::holds_alternative<quillara::BoxPlot>(graph.Content);
            graph.About.Weights = isBoxPlot ? quillara::WeightUse::Exact : quillara::WeightUse::Unused;
        }
    } catch (const Interrupted&) {
        return NotMade;
    } catch (const std::bad_alloc&) {
        quillara::SurroundingsOf(document).SayMemoryLacked(NoMemory);
        return NotMade;
    }
    quillara::RouteResult(analysis, std::move(graph));
    return Made;
}

/// Of the cases that the steps leave; none where a step on missing data drops all of a review plot.
void NoticePairs(CAnalysisDoc* document, const std::string& pair, std::int64_t shown) {
    const quillara::RowSet* rows = quillara::RemainingCases(*static_cast<quillara::AnalysisDocument*>(document));
    if (rows != nullptr && shown > 0) {
        quillara::NoticeLeftOut(document, "The plot of " + quillara::Quoted(pair),
                                static_cast<std::int64_t>(rows->Count()) - shown);
    }
}

/// The pair of a matrix that leaves out most.
void NoticeCells(CAnalysisDoc* document, const quillara::ScatterMatrix& matrix) {
    const std::size_t count = matrix.Variables.size();
    std::optional<std::size_t> least;
    for (std::size_t cell = 0; cell < matrix.Cells.size(); ++cell) {
        const bool isPair = cell / count < cell % count;
        if (isPair && (!least || matrix.Cells[cell].Cases < matrix.Cells[*least].Cases)) {
            least = cell;
        }
    }
    if (least) {
        NoticePairs(document, matrix.Variables[*least / count].Name + " by " + matrix.Variables[*least % count].Name,
                    matrix.Cells[*least].Cases);
    }
}

}  // namespace

void CAnalysisSupport::SetPlotConditions(const std::vector<CaseCondition>* conditions) {
    if (Document != nullptr) {
        quillara::ResultsOf(Document).PlotConditions = conditions;
    }
}

short CAnalysisSupport::CategorizedVarBoxAndWhisker(unsigned short type, const char* title, const char* caption,
                                                    const char* /*reserved1*/, const char* /*reserved2*/,
                                                    int /*reserved3*/, short count, const short* variables,
                                                    const char* /*reserved4*/, CaseFilter filter) {
    const TableInUse& data = quillara::TableOf(Document);
    const std::vector<std::size_t> shown = IndexesOf(data, variables, count);
    return MakePlot(*this, {TitleOf(title, caption), quillara::ReviewSubject(data, shown), {}}, {filter},
                    [&](const PlotRows& rows) {
                        return quillara::BoxPlotOf({data.Table(), shown, rows, static_cast<BoxType>(type),
                                                    quillara::WeightsInForce(data), RunnerOf(Document)});
                    });
}

short CAnalysisSupport::CorrelationScatterplot(unsigned short flags, int /*reserved1*/, short count,
                                               const short* variables, short /*secondCount*/,
                                               const short* /*secondVariables*/, unsigned short /*reserved2*/,
                                               const double* /*reserved3*/, const double* /*reserved4*/,
                                               const char* /*caseLine*/, CaseFilter filter, const std::string& title) {
    const TableInUse& data = quillara::TableOf(Document);
    const std::vector<std::size_t> shown = IndexesOf(data, variables, count);
    quillara::NoticeUnweighted(Document, "scatter");
    return MakePlot(
        *this, {TitleOf(title), quillara::ReviewSubject(data, shown), {}}, {filter}, [&](const PlotRows& rows) {
            quillara::ScatterMatrix matrix = quillara::ScatterMatrixOf(
                {data.Table(), shown, rows, flags, [this] { return quillara::SurroundingsOf(Document).AskForBreak(); },
                 quillara::WeightsInForce(data).Variable, RunnerOf(Document)});
            NoticeCells(Document, matrix);
            return matrix;
        });
}

short CAnalysisSupport::Histogram3D(unsigned short /*type*/, short x, short y, short /*reserved1*/, short /*reserved2*/,
                                    const short* /*reserved3*/, const short* /*reserved4*/, short /*reserved5*/,
                                    const char* title, const char* /*reserved6*/, const char* caption,
                                    const char* /*reserved7*/, int /*reserved8*/, const char* /*reserved9*/,
                                    CaseFilter filter) {
    const TableInUse& data = quillara::TableOf(Document);
    if (data.Find(x + 1) == nullptr || data.Find(y + 1) == nullptr) {
        return NotMade;
    }
    quillara::NoticeUnweighted(Document, "hist3d");
    const std::vector<std::size_t> shown{static_cast<std::size_t>(x), static_cast<std::size_t>(y)};
    return MakePlot(*this, {TitleOf(title, caption), quillara::ReviewSubject(data, shown), {}},
                    {filter, FilterUse::Pairs}, [&](const PlotRows& rows) {
                        Histogram3DPlot plot = Histogram3DOf(data.Table(), shown[0], shown[1], rows);
                        plot.UnusedWeight = quillara::WeightsInForce(data).Variable;
                        NoticePairs(Document, plot.Y.Variable + " by " + plot.X.Variable, plot.Cases);
                        return plot;
                    });
}
