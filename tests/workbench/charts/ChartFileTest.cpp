#include "workbench/charts/ChartFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/workbench/charts/TestGraphs.h"
#include "workbench/charts/ChartColors.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const GraphDocument PlainBars = Titled(Bars({"<basic> & \"more\"", "Missing"}, {3, 1}, 5), {"A < B", "x > 1"});

TEST(ChartFile, EachFormatBeginsAsItShould) {
    EXPECT_THAT(PaintedChart(PlainBars, {}, ChartFormat::Png), StartsWith("\x89PNG"));
    EXPECT_THAT(PaintedChart(PlainBars, {}, ChartFormat::Pdf), StartsWith("%PDF"));
    EXPECT_THAT(PaintedChart(PlainBars, {}, ChartFormat::Svg), StartsWith("<?xml"));
}

TEST(ChartFile, SvgHoldsTextsAsCharactersAndTips) {
    const std::string svg = PaintedChart(PlainBars, {}, ChartFormat::Svg);
    EXPECT_THAT(svg, HasSubstr("A &lt; B</text>"));
    EXPECT_THAT(svg, HasSubstr("x &gt; 1</text>"));
    EXPECT_THAT(svg, HasSubstr("<title>&lt;basic&gt; &amp; &quot;more&quot;: 3 (75.0%)</title>"));
    EXPECT_THAT(svg, Not(HasSubstr("<basic>")));
}

TEST(ChartFile, SvgIsTheSameEachTime) {
    for (const GraphDocument& document : {PlainBars, Pie({"a", "b"}, {1, 2}), Boxes(3, BoxType::MeanSEAndSD),
                                          Matrix(3, "x"), Bars3D({"a", "b"}, {"c", "d"})}) {
        EXPECT_EQ(PaintedChart(document, {}, ChartFormat::Svg), PaintedChart(document, {}, ChartFormat::Svg));
    }
}

TEST(ChartFile, LooksDiffer) {
    EXPECT_NE(PaintedChart(PlainBars, {.Dark = true}, ChartFormat::Png), PaintedChart(PlainBars, {}, ChartFormat::Png));
    EXPECT_THAT(PaintedChart(PlainBars, {.Width = 480, .Height = 320}, ChartFormat::Svg),
                HasSubstr("viewBox=\"0 0 480 320\""));
}

TEST(ChartFile, SizesThatCannotBePaintedAreRefused) {
    EXPECT_THROW(static_cast<void>(PaintedChart(PlainBars, {.Width = 0}, ChartFormat::Png)), DataError);
    EXPECT_THROW(static_cast<void>(PaintedChart(PlainBars, {.Height = 100000}, ChartFormat::Png)), DataError);
}

TEST(ChartFile, TextsThatArentWellFormedArePainted) {
    GraphDocument broken = Bars({"caf\xC3", std::string("\x01key\xFF", 5)}, {1, 2}, 5);
    EXPECT_THAT(PaintedChart(broken, {}, ChartFormat::Svg), HasSubstr("caf</text>"));
}

TEST(ChartColors, NeighbouringSlicesDiffer) {
    for (int slice = 0; slice < 40; ++slice) {
        EXPECT_NE(SliceColor(slice, false), SliceColor(slice + 1, false));
    }
    EXPECT_EQ(SeriesColor(12, false), SeriesColor(12 + 15, false));
    EXPECT_TRUE(SeriesColor(-7, true).isValid());
}

}  // namespace
}  // namespace quillara
