#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "engine/DrillDown.h"
#include "resources/StringTable.h"
#include "results/graphs/ReviewCaseFilter.h"
#include "results/texts/ResultSubjects.h"
#include "results/texts/ResultTexts.h"

using namespace drilldown;

namespace {

/// An option of the startup dialog and the box plot that it asks for.
struct BoxPlotOption {
    std::int16_t CDrillDown::*IsOn;
    BoxType Type;
};

// Intended: the types aren't in the order of their numbers, unlike the host's list of them; the plots come in the order
// of the options.
// clang-format off
constexpr std::array<BoxPlotOption, 4> BoxPlotOptions{{
    // Option                              Type
    {&CDrillDown::PlotMedianQuartileRange, BoxType::MedianQuartilesRange},
    {&CDrillDown::PlotMeanSEAndSD,         BoxType::MeanSEAndSD},
    {&CDrillDown::PlotMeanSD196TimesSD,    BoxType::MeanSDAnd196SD},
    {&CDrillDown::PlotMeanSE196TimesSE,    BoxType::MeanSEAnd196SE},
}};
// clang-format on

constexpr int DetailedMatrixLimit = 15;
constexpr unsigned short Histogram3DType = 4;

/// Says what the next plot is about: review variables.
void TellSubject(CDrillDown& analysis, const std::int16_t* variables, std::ptrdiff_t count) {
    SubjectWriter subject(analysis, ResultSide::Review);
    std::for_each(variables, variables + count, [&](std::int16_t var) { subject.AddVariable(var); });
    analysis.SetResultSubject(subject.Take());
}

void ShowBoxPlot(CDrillDown& analysis, BoxType type) {
    TellSubject(analysis, analysis.RVContinuous, analysis.NoRVContinuous);
    analysis.CategorizedVarBoxAndWhisker(
        static_cast<unsigned short>(type), analysis.GetResourceString(BoxPlotTitleText), analysis.DrillString().c_str(),
        nullptr, nullptr, 0, analysis.NoRVContinuous, analysis.RVContinuous, nullptr, ReviewCaseFilter);
}

/// Lets the user choose the two lists of variables to pair. Gives the dialog's result.
int ChoosePairs(CDrillDown& analysis, HWND parent) {
    const int reviews = analysis.GetDrillReviewsSize();
    std::int16_t* const behind = std::copy_n(analysis.RVCategorical, analysis.NoRVCategorical, analysis.AllReviewVars);
    std::copy_n(analysis.RVContinuous, analysis.NoRVContinuous, behind);
    return analysis.DoubleVarListDialog(
        parent, 0, analysis.GetResourceString(SelectPairsText), analysis.AllReviewVars, 1, reviews, 1, reviews,
        2 * reviews, analysis.FirstVarList, &analysis.FirstVarCount, analysis.SecondVarList, &analysis.SecondVarCount,
        analysis.GetResourceString(FirstListText), analysis.GetResourceString(SecondListText), 0, nullptr, 0, 0);
}

void ShowHistogram3D(CDrillDown& analysis, std::int16_t first, std::int16_t second) {
    Histogram3DXVar = static_cast<std::int16_t>(first - 1);
    Histogram3DYVar = static_cast<std::int16_t>(second - 1);
    const std::string title = FillFormat(analysis.GetResourceString(Histogram3DTitleText),
                                         {NameField(analysis, first), NameField(analysis, second)});
    const std::array<std::int16_t, 2> pair{first, second};
    TellSubject(analysis, pair.data(), pair.size());
    analysis.Histogram3D(Histogram3DType, Histogram3DXVar, Histogram3DYVar, 0, 0, nullptr, nullptr, 0, title.c_str(),
                         nullptr, analysis.DrillString().c_str(), nullptr, 0, nullptr, ReviewCaseFilterXY);
}

}  // namespace

std::int16_t CDrillDown::RVBoxWhiker(HWND) {
    // Intended: the options are looked at before anything is brought up to date, unlike in every other result, which
    // begins with that; a refused command costs no pass.
    if (std::all_of(BoxPlotOptions.begin(), BoxPlotOptions.end(),
                    [this](const BoxPlotOption& option) { return this->*option.IsOn == 0; })) {
        dsplst(0, GetResourceString(CheckBoxPlotText));
        return 0;
    }
    BringUpToDate();
    const ReviewCaseFilterScope filter(*this);
    if (!filter) {
        return 0;
    }
    for (const BoxPlotOption& option : BoxPlotOptions) {
        if (this->*option.IsOn != 0) {
            ShowBoxPlot(*this, option.Type);
        }
    }
    return 1;
}

std::int16_t CDrillDown::RVScatterPlot(HWND) {
    BringUpToDate();
    const ReviewCaseFilterScope filter(*this);
    if (!filter) {
        return 0;
    }
    // Intended: the caption is part of the title and stands as the full text, unlike in other graphs, which give its
    // key as a line of its own; the host's matrix has one title.
    std::string caption = DrillString();
    ExpandPossible8CharHash(caption);
    const std::string title = FillFormat(GetResourceString(CorrelationsTitleText), {caption});
    // Intended: from 15 variables on the cells are plain, unlike in a smaller matrix; what a detailed cell shows
    // depends on its room.
    const unsigned short flags =
        NoRVContinuous < DetailedMatrixLimit ? ScatterFlag::DetailedMatrix : ScatterFlag::PlainMatrix;
    TellSubject(*this, RVContinuous, NoRVContinuous);
    const short status = CorrelationScatterplot(flags, 0, NoRVContinuous, RVContinuous, 0, nullptr, 0, nullptr, nullptr,
                                                CaseLine.Line, ReviewCaseFilter, title);
    // Intended: the sense is the reverse of the host's, and only its 1 is a failure, unlike in the other plots, which
    // don't look; scripts take the result as success.
    return status == 1 ? 0 : 1;
}

int CDrillDown::RV3DHistograms(short, HWND window) {
    // Intended: nothing is brought up to date here, unlike in the other two; the caption of the first plot does it, but
    // for what a pass without memory has left.
    if (ChoosePairs(*this, window) == 0) {
        return 0;
    }
    if (ReadFailed) {
        BringUpToDate();
    }
    const ReviewCaseFilterScope filter(*this);
    if (!filter) {
        return 0;
    }
    for (std::int16_t first = 0; first < FirstVarCount; ++first) {
        for (std::int16_t second = 0; second < SecondVarCount; ++second) {
            ShowHistogram3D(*this, FirstVarList[first], SecondVarList[second]);
        }
    }
    return 1;
}
