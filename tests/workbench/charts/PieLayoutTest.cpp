#include "workbench/charts/PieLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>

#include "workbench/charts/OffscreenApplication.h"

namespace quillara {
namespace {

using Slices = std::vector<PieSlice>;

PieSlice Category(const QString& name, double count, int point) {
    return {name, count, QString::number(count), QColor(), name == QStringLiteral("Missing"), point};
}

/// "Name Count" of each slice.
std::string TextOf(const Slices& slices) {
    QStringList texts;
    for (const PieSlice& slice : slices) {
        texts << slice.Name + u' ' + slice.CountText;
    }
    return texts.join(QStringLiteral("; ")).toStdString();
}

Slices Categories(const std::vector<double>& counts, double missing) {
    Slices slices;
    for (const double count : counts) {
        slices.push_back(
            Category(QString(QChar('a' + static_cast<char>(slices.size()))), count, static_cast<int>(slices.size())));
    }
    if (missing > 0.0) {
        slices.push_back(Category(QStringLiteral("Missing"), missing, static_cast<int>(slices.size())));
    }
    return slices;
}

TEST(PieSlices, TheLargestStayTheFirstOfEqualOnesAndMissingAlways) {
    struct Row {
        std::vector<double> Counts;
        double Missing;
        std::size_t Most;
        const char* Left;
    };
    // clang-format off
    const Row rows[] = {
        {{5, 1, 4, 1},    0.0, 2, "a 5; c 4; Other (2 categories) 2"},
        {{2, 2, 2, 2, 2}, 0.5, 2, "a 2; b 2; Other (3 categories) 6; Missing 0.5"},
        {{1, 3, 1, 1, 9}, 7.0, 3, "a 1; b 3; e 9; Other (2 categories) 2; Missing 7"},
        {{3, 2, 1},       1.0, 2, "a 3; b 2; c 1; Missing 1"},
        {{},              4.0, 2, "Missing 4"},
    };
    // clang-format on
    for (const Row& row : rows) {
        EXPECT_EQ(TextOf(Gathered(Categories(row.Counts, row.Missing), row.Most)), row.Left);
    }
}

class RandomPie {
  public:
    explicit RandomPie(unsigned seed) : Random(seed) {
        const int count = Below(3) == 0 ? Below(2049) : Below(40);
        const double magnitude = std::pow(10.0, Below(7));
        const int longest = 1 + Below(60);
        const bool areEqual = Below(4) == 0;
        for (int i = 0; i < count; ++i) {
            const QString name = QStringLiteral("n%1 ").arg(i) + QString(Below(longest), QChar(u'm'));
            const double skewed = std::pow(std::uniform_real_distribution(0.0, 1.0)(Random), 4.0);
            Given.push_back(Category(name.trimmed(), areEqual ? 3.0 : std::ceil(skewed * magnitude) + 1.0, i));
        }
        if (Below(2) == 0 || count == 0) {
            Given.push_back(Category(QStringLiteral("Missing"), 1.0 + Below(1000), count));
        }
        Place = QRectF(10.0, 60.0, 300.0 + Below(2000), 150.0 + Below(1400));
        Style = StyleOf({.Width = static_cast<int>(Place.width()), .Height = static_cast<int>(Place.height() * 1.3)});
        Pie = LayOutPie(Given, Place, Style);
    }

    /// What is wrong with the slices or their labels; empty: nothing.
    [[nodiscard]] std::string Fault() const {
        std::set<QRgb> colors;
        std::size_t named = 0;
        for (const PieSlice& slice : Pie.Slices) {
            named += slice.Point >= 0 && !slice.IsMissing ? 1 : 0;
            if (slice.Point >= 0 && !slice.IsMissing && !colors.insert(slice.Color.rgb()).second) {
                return "a colour stands twice";
            }
        }
        if (named > 13 || std::ranges::count(Pie.Slices, true, &PieSlice::IsMissing) !=
                              std::ranges::count(Given, true, &PieSlice::IsMissing)) {
            return "slices: " + TextOf(Pie.Slices);
        }
        if (std::fabs(TotalOf(Pie.Slices) - TotalOf(Given)) > 1e-9 * TotalOf(Given)) {
            return "cases are lost";
        }
        return LabelFault();
    }

  private:
    [[nodiscard]] std::string LabelFault() const {
        if (Pie.Labels.Faults > 0 || Pie.Labels.Leaders.size() != Pie.Slices.size()) {
            return "a label is left out, or leaders cross";
        }
        for (const PieSlice& slice : Pie.Slices) {
            const QString front = slice.Name.left(2);
            if (std::ranges::none_of(Pie.Labels.Texts,
                                     [&](const PlacedText& text) { return text.Text.startsWith(front); })) {
                return "no name: " + slice.Name.toStdString();
            }
        }
        const QRectF ground = Place.adjusted(-1.0, -1.0, 1.0, 1.0);
        for (auto text = Pie.Labels.Texts.begin(); text != Pie.Labels.Texts.end(); ++text) {
            if (!ground.contains(text->Outline().boundingRect()) ||
                std::any_of(Pie.Labels.Texts.begin(), text, [&](const auto& other) { return Overlap(other, *text); })) {
                return "misplaced: " + text->Text.toStdString();
            }
        }
        return {};
    }

    int Below(int bound) { return std::uniform_int_distribution(0, bound - 1)(Random); }

    std::mt19937 Random;
    Slices Given;
    QRectF Place;
    ChartStyle Style;
    PieLayout Pie;
};

TEST(PieLayout, EverySliceHasItsNameAndColourAtAnySize) {
    EnsureApplication();
    for (unsigned seed = 0; seed < 400; ++seed) {
        EXPECT_EQ(RandomPie(seed).Fault(), "") << "seed " << seed;
    }
}

}  // namespace
}  // namespace quillara
