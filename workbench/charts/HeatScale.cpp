#include "workbench/charts/HeatScale.h"

#include <algorithm>
#include <cmath>

#include "workbench/charts/CategoryAxis.h"

namespace quillara {
namespace {

constexpr double LeastColor = 0.06;  // of the colours, for a field with a case
constexpr double Flattening = 8.0;  // times the middle count: a highest one beyond it leaves the rest alike
constexpr int MostMarks = 6;

std::vector<double> Positive(const std::vector<double>& counts) {
    std::vector<double> positive;
    std::ranges::copy_if(counts, std::back_inserter(positive), [](double count) { return count > 0.0; });
    return positive;
}

}  // namespace

HeatScale::HeatScale(const std::vector<double>& counts) {
    std::vector<double> positive = Positive(counts);
    if (positive.empty()) {
        return;
    }
    const auto middle = positive.begin() + static_cast<std::ptrdiff_t>(positive.size() / 2);
    std::ranges::nth_element(positive, middle);
    High = std::ranges::max(positive);
    Logarithmic = High > Flattening * *middle;
    Low = Logarithmic ? std::ranges::min(positive) : 0.0;
}

double HeatScale::PlaceOf(double count) const {
    const double place = Logarithmic ? std::log(count / Low) / std::log(High / Low) : count / High;
    return std::clamp(place, 0.0, 1.0);
}

double HeatScale::ColorAt(double place) {
    return LeastColor + (1.0 - LeastColor) * place;
}

double HeatScale::ShareOf(double count) const {
    return ColorAt(PlaceOf(count));
}

std::vector<AxisMark> HeatScale::Marks() const {
    if (!Logarithmic) {
        return RoundNumbers(Low, High, MostMarks);
    }
    const double first = std::ceil(std::log10(Low) - 1e-9);
    const double last = std::floor(std::log10(High) + 1e-9);
    const double stride = std::max(1.0, std::ceil((last - first + 1) / MostMarks));
    std::vector<AxisMark> marks;
    for (double power = first; power <= last; power += stride) {
        const double count = std::pow(10.0, power);
        marks.push_back({count, CountText(count)});
    }
    return marks;
}

}  // namespace quillara
