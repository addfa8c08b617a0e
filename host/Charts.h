#pragma once

#include <cstdint>

/// What a chart of the host is: its kind.
class CChartInfo {
  public:
    static constexpr int Stacked = 2;
    static constexpr int Pie = 3;
    static constexpr int Bars = 5;

    CChartInfo() = default;
    explicit CChartInfo(int kind) : ChartKind(kind) {}

    [[nodiscard]] int Kind() const { return ChartKind; }

  private:
    int ChartKind = Bars;
};

/// What a series of a chart is drawn as.
namespace SeriesKind {
inline constexpr std::uint8_t Bars = 5;
inline constexpr std::uint8_t Pie = 10;
}  // namespace SeriesKind

/// The host's numbers of colours; others share these in turn.
namespace ChartColor {
inline constexpr std::uint8_t Grey = 1;
inline constexpr std::uint8_t Indigo = 2;
inline constexpr std::uint8_t Olive = 3;
inline constexpr std::uint8_t Teal = 4;
inline constexpr std::uint8_t DarkGreen = 5;
inline constexpr std::uint8_t Sand = 6;
inline constexpr std::uint8_t Magenta = 7;
inline constexpr std::uint8_t Wine = 8;
inline constexpr std::uint8_t SkyBlue = 9;
inline constexpr std::uint8_t Orange = 10;
inline constexpr std::uint8_t BluishGreen = 11;
inline constexpr std::uint8_t Blue = 12;
inline constexpr std::uint8_t Yellow = 13;
inline constexpr std::uint8_t Purple = 14;
inline constexpr std::uint8_t Vermilion = 15;
}  // namespace ChartColor

/// Which statistics a box-whisker plot shows: middle, box and whiskers.
enum class BoxType : unsigned short {
    MedianQuartilesRange = 52,
    MeanSDAnd196SD = 53,
    MeanSEAndSD = 54,
    MeanSEAnd196SE = 55,
};

/// What the cells of a scatterplot matrix hold besides their points, as bits, and the two words that analyses give.
namespace ScatterFlag {
inline constexpr unsigned short Histograms = 8;  ///< on the diagonal
inline constexpr unsigned short Lines = 128;  ///< a fitted line in each cell
inline constexpr unsigned short PlainMatrix = 68;
inline constexpr unsigned short DetailedMatrix = PlainMatrix | Histograms | Lines;
}  // namespace ScatterFlag

static_assert(ScatterFlag::DetailedMatrix == 204);

/// Asked by plots that the host computes from the cases: whether a case is left out of the plot. `values` holds all
/// values of the case, variable 1 at index 0. 0 keeps the case; other results drop it. `x` and `y` may be null or take
/// the two values to plot. The first two arguments are null. To be called only within the call that it was given to:
/// outside it keeps every case.
using CaseFilter = int (*)(char* reserved1, long* reserved2, const double* values, float* x, float* y);
