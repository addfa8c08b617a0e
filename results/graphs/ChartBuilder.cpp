#include "results/graphs/ChartBuilder.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "engine/DrillDown.h"
#include "engine/HostArrays.h"
#include "host/TextFunctions.h"

using namespace drilldown;

namespace {

constexpr std::size_t SmallestRoom = 20;
constexpr std::size_t LargestRoom = 0xFFFFFFF;
constexpr std::size_t SmallestNoteBlock = 400;
constexpr std::size_t SeriesArraysSize = 54;  ///< bytes of one series in all arrays but the names, with spare room
constexpr std::size_t ScaleMargin = 10;
constexpr short ScaleParts = 12;

/// Takes an array of zeros; false without memory.
template <typename T>
bool Take(CDrillDown& analysis, T*& array, std::size_t bytes) {
    void* address = nullptr;
    if (analysis.AllocMem(&address, static_cast<unsigned long>(bytes)) != 0) {
        return false;
    }
    std::memset(address, 0, bytes);
    array = static_cast<T*>(address);
    return true;
}

/// Cuts arrays out of a block, one behind the other, each where its type may stand.
class Carver {
  public:
    Carver(void* block, std::size_t bytes) : Next(block), Left(bytes) {}

    template <typename T>
    void Cut(T*& array, std::size_t count) {
        void* place = std::align(alignof(T), count * sizeof(T), Next, Left);
        array = static_cast<T*>(place);
        Next = static_cast<char*>(place) + count * sizeof(T);
        Left -= count * sizeof(T);
    }

  private:
    void* Next;
    std::size_t Left;
};

void FillField(char* field, std::size_t width, std::string_view text) {
    std::memset(field, 0, width);
    std::memcpy(field, text.data(), std::min(width, text.size()));
}

/// Writes a caption, which ends in a zero, and gives its length.
std::int16_t FillCaption(char (&field)[CChartBuilder::CaptionRoom], std::string_view text) {
    const std::string_view shown = text.substr(0, CChartBuilder::CaptionRoom - 1);
    FillField(field, CChartBuilder::CaptionRoom, shown);
    return static_cast<std::int16_t>(shown.size());
}

/// The labels of one axis.
struct Scale {
    char*& Text;
    std::int16_t& Width;
    double*& Values;
    std::int32_t& Count;

    void Free(CDrillDown& analysis) const {
        GiveBack(analysis, Text);
        GiveBack(analysis, Values);
        Count = 0;
    }

    [[nodiscard]] int Alloc(CDrillDown& analysis, std::int32_t count) const {
        Free(analysis);
        Width = CChartBuilder::ScaleSlot;
        const auto slots = static_cast<std::size_t>(std::max(count, 0));
        if (count < 0 || !Take(analysis, Values, slots * sizeof(double) + ScaleMargin) ||
            !Take(analysis, Text, slots * CChartBuilder::ScaleSlot + ScaleMargin)) {
            Free(analysis);
            return 1;
        }
        Count = count;
        return 0;
    }

    void Set(std::int32_t slot, double value, std::string_view text) const {
        if (slot >= 0 && slot < Count) {
            const auto place = static_cast<std::size_t>(slot);
            Values[place] = value;
            FillField(Text + place * CChartBuilder::ScaleSlot, CChartBuilder::ScaleSlot, text);
        }
    }
};

Scale XScaleOf(CChartBuilder& chart) {
    return {chart.XScaleText, chart.XScaleWidth, chart.XScaleValues, chart.XScaleCount};
}

Scale YScaleOf(CChartBuilder& chart) {
    return {chart.YScaleText, chart.YScaleWidth, chart.YScaleValues, chart.YScaleCount};
}

/// Points that a series has room for, whatever its capacity.
std::size_t RoomOf(const CChartBuilder& chart) {
    return std::max(SmallestRoom, static_cast<std::size_t>(std::max(chart.PointCapacity, 0)));
}

void Widen(double value, double& lowest, double& highest) {
    if (ValueIsValid(&value) != 0) {
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
}

}  // namespace

CChartBuilder::CChartBuilder(CDrillDown& analysis, std::int16_t seriesCount, std::int32_t points)
    : PointCapacity(points), SeriesCount(std::max<std::int16_t>(seriesCount, 0)), Analysis(analysis) {
    AllocBuffers();
    PointLabelWidth = static_cast<std::int16_t>(LabelSlotWidth);
}

CChartBuilder::~CChartBuilder() {
    FreeBuffers();
}

int CChartBuilder::AllocBuffers() {
    FreeBuffers();
    const std::size_t room = RoomOf(*this);
    const std::size_t noteSize = static_cast<std::size_t>(NoteWidth) * static_cast<std::size_t>(SeriesCount);
    const bool taken = room <= LargestRoom && TakeSeriesArrays() &&
                       Take(Analysis, PointLabelBlock, PointLabelSlot * room) &&
                       Take(Analysis, NoteBlock, std::max(SmallestNoteBlock, noteSize)) && TakeSeriesBlocks(room);
    if (!taken) {
        AllocFailed = 1;
        FreeBuffers();
        return 1;
    }
    SetSeriesDefaults();
    return 0;
}

bool CChartBuilder::TakeSeriesArrays() {
    const auto series = static_cast<std::size_t>(SeriesCount);
    const auto nameWidth = static_cast<std::size_t>(NameWidth);
    const std::size_t size = (nameWidth + SeriesArraysSize) * series;
    if (!Take(Analysis, PointCounts, size)) {
        return false;
    }
    Carver block(PointCounts, size);
    block.Cut(PointCounts, series);
    block.Cut(SeriesKind, series);
    block.Cut(SeriesAttrB, series);
    block.Cut(SeriesAttrC, series);
    block.Cut(SeriesColor, series);
    block.Cut(SeriesData, series);
    block.Cut(SeriesNames, series);
    block.Cut(NameStore, series * nameWidth);
    block.Cut(SeriesFlags, series);
    block.Cut(PointLabels, series);
    block.Cut(SeriesWidth, series);
    return true;
}

bool CChartBuilder::TakeSeriesBlocks(std::size_t room) {
    const std::size_t size = 2 * room * sizeof(double);
    return std::all_of(SeriesData, SeriesData + SeriesCount, [&](double*& block) {
        const bool taken = Take(Analysis, block, size);
        if (taken) {
            std::memset(block, 0xFF, size);
        }
        return taken;
    });
}

void CChartBuilder::SetSeriesDefaults() {
    constexpr int coloursOfTurn = 244;
    constexpr int firstColour = 12;
    for (int series = 0; series < SeriesCount; ++series) {
        SeriesNames[series] = NameStore;
        SeriesAttrC[series] = 1;
        SeriesColor[series] = static_cast<std::uint8_t>((series / coloursOfTurn + 1) * firstColour + series);
    }
    if (SeriesCount > 0) {
        PointLabels[0] = PointLabelBlock;
    }
}

void CChartBuilder::FreeBuffers() {
    if (SeriesData != nullptr) {
        std::for_each(SeriesData, SeriesData + SeriesCount, [this](double*& block) { GiveBack(Analysis, block); });
    }
    GiveBack(Analysis, NoteBlock);
    GiveBack(Analysis, PointCounts);  // the block behind all arrays of the series
    SeriesKind = SeriesAttrB = SeriesAttrC = SeriesColor = nullptr;
    SeriesData = nullptr;
    SeriesNames = PointLabels = nullptr;
    NameStore = nullptr;
    SeriesFlags = nullptr;
    SeriesWidth = nullptr;
    GiveBack(Analysis, PointLabelBlock);
    XScaleOf(*this).Free(Analysis);
    YScaleOf(*this).Free(Analysis);
    GiveBack(Analysis, ExtraScaleText);
    GiveBack(Analysis, ExtraScaleValues);
}

int CChartBuilder::AllocXScale(std::int32_t count) {
    return XScaleOf(*this).Alloc(Analysis, count);
}

int CChartBuilder::AllocYScale(std::int32_t count) {
    return YScaleOf(*this).Alloc(Analysis, count);
}

void CChartBuilder::SetTitle(std::size_t line, std::string_view text) {
    if (line < TitleLines) {
        FillField(Title + line * TitleLineWidth, TitleLineWidth, text);
    }
}

void CChartBuilder::SetXLabel(const char* text) {
    XLabelLength = FillCaption(XLabel, text);
}

void CChartBuilder::SetYLabel(const char* text) {
    YLabelLength = FillCaption(YLabel, text);
}

void CChartBuilder::SetXScale(std::int32_t slot, double value, std::string_view text) {
    XScaleOf(*this).Set(slot, value, text);
}

void CChartBuilder::SetYScale(std::int32_t slot, double value, std::string_view text) {
    YScaleOf(*this).Set(slot, value, text);
}

void CChartBuilder::SetPointLabel(std::int32_t index, std::string_view text) {
    if (PointLabelBlock != nullptr && index >= 0 && static_cast<std::size_t>(index) < RoomOf(*this)) {
        FillField(PointLabelBlock + static_cast<std::size_t>(index) * PointLabelSlot, PointLabelSlot, text);
    }
}

double* CChartBuilder::PlaceOfPoint(std::int32_t index, std::int32_t offset) const {
    const bool there = SeriesData != nullptr && CurrentSeries >= 0 && CurrentSeries < SeriesCount && index >= 0 &&
                       static_cast<std::size_t>(index) < RoomOf(*this);
    return there ? SeriesData[CurrentSeries] + std::max(offset, 0) + index : nullptr;
}

void CChartBuilder::SetPointX(std::int32_t index, double x) {
    if (double* place = PlaceOfPoint(index, 0)) {
        *place = x;
        Widen(x, XMin, XMax);
    }
}

void CChartBuilder::SetPointY(std::int32_t index, double y) {
    if (double* place = PlaceOfPoint(index, PointCapacity)) {
        *place = y;
        Widen(y, YMin, YMax);
    }
}

void CChartBuilder::ClearPoints(std::int16_t series, std::int32_t points) {
    if (SeriesData != nullptr && series >= 0 && series < SeriesCount && points > 0) {
        std::fill_n(SeriesData[series], 2 * std::min(RoomOf(*this), static_cast<std::size_t>(points)), 0.0);
    }
}

void CChartBuilder::AutoScaleX() {
    scling_double_QUA(&XMin, &XMax, &XStep, ScaleParts, ScaleParts);
}

void CChartBuilder::AutoScaleY() {
    scling_double_QUA(&YMin, &YMax, &YStep, ScaleParts, ScaleParts);
}
