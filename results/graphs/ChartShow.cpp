// The operations of CChartBuilder that hand its chart to the host.

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "engine/DrillDown.h"
#include "results/graphs/ChartBuilder.h"
#include "results/graphs/HostGraphs.h"

using namespace drilldown;

namespace {

constexpr std::size_t NotesLookedAt = 400;
constexpr std::uint16_t BarsFlag = 128;
constexpr std::uint16_t PresentationWord = 8;
constexpr unsigned short ScalingBits = 12;
constexpr std::uint8_t PieColour = ChartColor::Grey;
constexpr std::uint8_t LastStackColour = ChartColor::Blue;
constexpr std::array StackColours{
    ChartColor::Orange,    ChartColor::SkyBlue, ChartColor::BluishGreen, ChartColor::Yellow, ChartColor::Purple,
    ChartColor::Vermilion, ChartColor::Indigo,  ChartColor::Teal,        ChartColor::Wine,   ChartColor::Olive};

constexpr char NothingToPlot[] = "Nothing to plot....";
constexpr int NothingToPlotLength = sizeof NothingToPlot - 1;
static_assert(NothingToPlotLength == 19);

/// What a preset gives a series.
struct SeriesStyle {
    std::uint8_t Kind;
    std::uint8_t AttrB;
    std::uint8_t Color;
};

void SetStyle(CChartBuilder& chart, int series, const SeriesStyle& style) {
    chart.SeriesKind[series] = style.Kind;
    chart.SeriesAttrB[series] = style.AttrB;
    chart.SeriesAttrC[series] = 0;
    chart.SeriesColor[series] = style.Color;
}

}  // namespace

void CChartBuilder::Present(unsigned short request) {
    if ((request & ShowAsBars) != 0) {
        ChartFlags |= BarsFlag;
        OptionA = OptionB = OptionC = PresentationWord;
    } else if ((request & ShowAsPreset) != 0) {
        OptionA = PresentationWord;
        OptionB = OptionC = 0;
    } else if ((request & ScalingBits) == ShowScaled) {
        AutoScaleX();
        AutoScaleY();
        std::fill_n(SeriesFlags, SeriesCount, 1);
        CurrentSeries = SeriesCount;  // intended to stay behind the last; no chart uses this request
    }
}

bool CChartBuilder::HasSomethingToShow() {
    if (Suppress == 1 || XMin > XMax || YMin > YMax) {
        return false;
    }
    if (PointCapacity < 1) {
        // Intended: the first argument is the length of the text, unlike the 0 of the engine's messages; the host's
        // message display depends on it.
        Analysis.dsplst(NothingToPlotLength, NothingToPlot);
        return false;
    }
    return true;
}

/// The one place of the call. Ranges go y before x, labels of the axes x before y.
bool CChartBuilder::HandOver() {
    constexpr short titleLines = TitleLines;
    constexpr short captionLines = 1;
    if (std::all_of(NoteBlock, NoteBlock + NotesLookedAt, [](char byte) { return byte == '\0'; })) {
        NoteWidth = 0;
    }
    Analysis.SetResultSubject(std::exchange(Subject, {}));
    return Analysis.NewGeneralMultipleChartLongEx(
               Info, ChartFlags, SeriesCount, SeriesData, PointCounts, SeriesKind, SeriesAttrB, SeriesAttrC,
               SeriesColor, SeriesNames, SeriesWidth,  // 1 - 11
               Title, TitleWidth, titleLines,  // 12 - 14
               XLabel, XLabelLength, captionLines, YLabel, YLabelLength, captionLines,  // 15 - 20
               YMin, YMax, YStep, XMin, XMax, XStep,  // 21 - 26
               XScaleText, XScaleWidth, XScaleValues, XScaleCount,  // 27 - 30
               nullptr, 0, nullptr, 0,  // 31 - 34
               YScaleText, YScaleWidth, YScaleValues, YScaleCount,  // 35 - 38
               ExtraScaleText, ExtraScaleWidth, ExtraScaleValues, ExtraScaleCount,  // 39 - 42
               OptionA, OptionA1, OptionA2, OptionB, OptionB1, OptionB2, OptionC, OptionC1, OptionC2,  // 43 - 51
               NoteBlock, NoteWidth, SeriesFlags, PointLabelRows, PointLabelWidth, PointLabels) == 0;  // 52 - 57
}

bool CChartBuilder::KeepLastGraph() {
    const CountedPointer<IDocumentCollection> outputs = OutputsOf(Analysis);
    std::int32_t count = 0;
    if (!outputs || !Succeeded(outputs->GetCount(&count))) {
        return false;
    }
    LastGraph = QueryFor<IGraph>(ItemOf(*outputs, count).Get());
    return static_cast<bool>(LastGraph);
}

int CChartBuilder::Show(unsigned short request) {
    if (SeriesData == nullptr) {
        return 1;
    }
    Present(request);
    const bool made = HasSomethingToShow() && HandOver();
    FreeBuffers();
    return made && ((request & KeepGraph) == 0 || KeepLastGraph()) ? 0 : 1;
}

void CChartBuilder::ClearOptionNumbers() {
    OptionA1 = OptionA2 = OptionB1 = OptionB2 = OptionC1 = OptionC2 = 0;
}

int CChartBuilder::ShowPie() {
    if (SeriesData == nullptr) {
        return 1;
    }
    Info = CChartInfo(CChartInfo::Pie);
    ChartFlags = 2;
    SetStyle(*this, CurrentSeries, {::SeriesKind::Pie, 1, PieColour});
    ClearOptionNumbers();
    PointLabelRows = 1;
    SeriesNames = nullptr;
    NameStore = nullptr;
    return Show(ShowAsPreset);
}

int CChartBuilder::ShowStacked() {
    if (SeriesData == nullptr) {
        return 1;
    }
    Info = CChartInfo(CChartInfo::Stacked);
    ChartFlags = 0;
    for (int series = 0; series < SeriesCount; ++series) {
        SetStyle(*this, series,
                 {::SeriesKind::Bars, 0, StackColours[static_cast<std::size_t>(series) % StackColours.size()]});
    }
    if (SeriesCount > 0) {
        // Intended: the last series has a colour of its own, unlike the others, which take turns; it is the layer of
        // height 0 of a variable that uses all series.
        SeriesColor[SeriesCount - 1] = LastStackColour;
    }
    ClearOptionNumbers();
    PointLabelRows = 0;
    SeriesNames = nullptr;
    NameStore = nullptr;
    return Show(ShowAsPreset);
}
