#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "host/Charts.h"
#include "host/GraphAutomation.h"
#include "host/ResultSubject.h"
#include "platform/CountedPointer.h"

class CDrillDown;

/// How a chart is presented; bits of the request that CChartBuilder::Show takes.
enum ShowRequest : unsigned short {
    ShowAsBars = 1,
    ShowAsPreset = 2,  ///< pies and stacked bars
    ShowScaled = 8,  ///< ranges made round; holds only without bit 4
    KeepGraph = 64,  ///< the graph just made goes to LastGraph
};

/// One chart on its way to the host: all buffers of CAnalysisSupport::NewGeneralMultipleChartLongEx with their
/// defaults, which a result fills before it calls Show, ShowPie or ShowStacked. Series and points count from 0. A
/// builder makes one chart and holds no data after that.
///
/// A series is one block: the x values, then the y values from PointCounts[series] on. SetPointX and SetPointY write it
/// for builders in which PointCounts is PointCapacity. A point never written is not a number.
///
/// Without memory AllocFailed is 1 and there are no buffers: the writers do nothing and no chart is made.
class CChartBuilder {
  public:
    static constexpr std::size_t TitleLines = 3;
    static constexpr std::size_t TitleLineWidth = 62;
    static constexpr std::size_t CaptionRoom = 80;
    static constexpr std::int16_t PointLabelSlot = 12;
    static constexpr std::int16_t ScaleSlot = 20;

    /// Takes the buffers from the host. The analysis outlives the builder.
    CChartBuilder(CDrillDown& analysis, std::int16_t seriesCount, std::int32_t points);
    CChartBuilder(const CChartBuilder&) = delete;
    CChartBuilder& operator=(const CChartBuilder&) = delete;
    ~CChartBuilder();

    // Buffers

    /// Takes the buffers anew. Gives 0; 1 without memory, and then sets AllocFailed.
    int AllocBuffers();
    /// Gives all buffers back; may be repeated.
    void FreeBuffers();
    /// Room for `count` labels of an axis, slots of 20 bytes, all blank. Gives 0; 1 without memory, and then the axis
    /// has none.
    int AllocXScale(std::int32_t count);
    int AllocYScale(std::int32_t count);

    // Filling

    /// One line of the title, from 0, cut to its width; a full line has no zero at its end.
    void SetTitle(std::size_t line, std::string_view text);
    /// The caption of an axis, cut to the room.
    void SetXLabel(const char* text);
    void SetYLabel(const char* text);
    /// A label of an axis: its position, and its text cut to the slot. Places that aren't there are passed over.
    void SetXScale(std::int32_t slot, double value, std::string_view text);
    void SetYScale(std::int32_t slot, double value, std::string_view text);
    /// The label of a point of the one series, cut to its slot, in the block that PointLabels starts with.
    void SetPointLabel(std::int32_t index, std::string_view text);
    /// A coordinate of a point of CurrentSeries. A valid value widens the range of the axis.
    void SetPointX(std::int32_t index, double x);
    void SetPointY(std::int32_t index, double y);
    /// Clears `points` points of a series to 0.0.
    void ClearPoints(std::int16_t series, std::int32_t points);
    /// Makes the range of an axis round.
    void AutoScaleX();
    void AutoScaleY();

    // Showing

    /// Tells the host the subject, hands the chart over and gives all buffers back. 0 when the host made the chart,
    /// else 1. A chart without room for points is reported to the user; one of which a range was never set is left out
    /// silently.
    int Show(unsigned short request);
    /// The same for a pie of CurrentSeries.
    int ShowPie();
    /// The same for stacked bars.
    int ShowStacked();

    // Data, in the order of the record. The buffers are the host's memory.

    std::int32_t PointCapacity;  ///< points of a series
    std::int32_t LabelSlotWidth = PointLabelSlot;  ///< what PointLabelWidth starts with
    char Title[TitleLines * TitleLineWidth] = {};  ///< three lines
    char XLabel[CaptionRoom] = {};  ///< caption of the x axis
    char YLabel[CaptionRoom] = {};  ///< caption of the y axis
    char* PointLabelBlock = nullptr;  ///< slots of point labels
    double** SeriesData = nullptr;  ///< a block a series
    char** SeriesNames = nullptr;  ///< names of the series, all blank
    char* NameStore = nullptr;  ///< storage behind them
    std::int16_t NameWidth = 40;  ///< bytes of a series name
    std::int32_t* PointCounts = nullptr;  ///< points in use; where the y values of a series begin
    std::int32_t* SeriesFlags = nullptr;  ///< 0 bars, 192 pie, 384 stacked bars
    std::uint8_t* SeriesKind = nullptr;  ///< 5 bars, 10 pie
    std::uint8_t* SeriesAttrB = nullptr;  ///< 1 for a pie
    std::uint8_t* SeriesAttrC = nullptr;  ///< 0 on all charts
    std::uint8_t* SeriesColor = nullptr;  ///< colour index
    double* SeriesWidth = nullptr;  ///< width of a bar in units of the x axis
    std::int16_t SeriesCount;  ///< number of series
    std::int16_t XLabelLength = 0;  ///< bytes of XLabel
    std::int16_t YLabelLength = 0;  ///< bytes of YLabel
    std::int16_t PointLabelRows = 0;  ///< 1 for a pie
    std::int16_t PointLabelWidth = 0;  ///< bytes of a point label
    std::int16_t CurrentSeries = 0;  ///< the series that points are written to
    char** PointLabels = nullptr;  ///< block of point labels of each series
    char* NoteBlock = nullptr;  ///< a blank text
    std::int16_t NoteWidth = 20;  ///< width beside it
    std::int16_t TitleWidth = TitleLineWidth;  ///< bytes of a title line
    double XMin = 3e300;
    double XMax = -3e300;
    double XStep = 1.0;
    double YMin = 3e300;
    double YMax = -3e300;
    double YStep = 1.0;
    char* ExtraScaleText = nullptr;  ///< a scale that stays empty
    std::int16_t ExtraScaleWidth = 0;
    double* ExtraScaleValues = nullptr;
    std::int32_t ExtraScaleCount = -1;
    std::int16_t Suppress = 0;  ///< 1: Show makes no chart
    CChartInfo Info{CChartInfo::Bars};
    std::uint16_t ChartFlags = 2;
    std::uint16_t OptionA = 0;
    std::int16_t OptionA1 = 0;
    std::int16_t OptionA2 = 0;
    std::uint16_t OptionB = 0;
    std::int16_t OptionB1 = 0;
    std::int16_t OptionB2 = 0;
    std::uint16_t OptionC = 65535;
    std::int16_t OptionC1 = 0;
    std::int16_t OptionC2 = 0;
    char* XScaleText = nullptr;  ///< texts of the x axis labels
    std::int16_t XScaleWidth = 0;  ///< bytes of one
    double* XScaleValues = nullptr;  ///< their positions
    std::int32_t XScaleCount = 0;
    char* YScaleText = nullptr;  ///< the same of the y axis
    std::int16_t YScaleWidth = 0;
    double* YScaleValues = nullptr;
    std::int32_t YScaleCount = 0;
    std::int16_t AllocFailed = 0;  ///< 1: there was no memory
    CountedPointer<IGraph> LastGraph;  ///< the graph made last, if Show was asked to keep it

    ResultSubject Subject;  ///< what the chart is about

  private:
    [[nodiscard]] bool TakeSeriesArrays();
    [[nodiscard]] bool TakeSeriesBlocks(std::size_t room);
    void SetSeriesDefaults();
    /// Where the coordinates of a point of CurrentSeries stand; null for a point that isn't there.
    [[nodiscard]] double* PlaceOfPoint(std::int32_t index, std::int32_t offset) const;
    void Present(unsigned short request);
    [[nodiscard]] bool HasSomethingToShow();
    [[nodiscard]] bool HandOver();
    [[nodiscard]] bool KeepLastGraph();
    void ClearOptionNumbers();

    CDrillDown& Analysis;
};
