// Charts that an analysis hands over: the arrays of the call as plain data.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <utility>

#include "host/AnalysisSupport.h"
#include "workbench/documents/NamedParts.h"
#include "workbench/hosting/DocumentSubjects.h"
#include "workbench/hosting/ResultRouting.h"
#include "workbench/hosting/TextFields.h"

using quillara::AxisLabel;
using quillara::FieldArray;
using quillara::GraphContent;
using quillara::GraphDocument;
using quillara::GraphPoint;
using quillara::GraphSeries;
using quillara::SeriesChart;
using quillara::TextOfField;

namespace {

constexpr int SeriesNameWidth = 40;
constexpr std::uint64_t NeverWritten = ~std::uint64_t{0};

GraphContent ContentOf(const CChartInfo& info, SeriesChart chart) {
    switch (info.Kind()) {
        case CChartInfo::Pie:
            return quillara::PieChart{std::move(chart)};
        case CChartInfo::Stacked:
            return quillara::StackedPlot{std::move(chart)};
        default:
            return quillara::Histogram{std::move(chart)};
    }
}

double NumberOf(double written) {
    return std::bit_cast<std::uint64_t>(written) == NeverWritten ? std::numeric_limits<double>::quiet_NaN() : written;
}

std::string CaptionOf(const char* text, short length) {
    return text == nullptr ? "" : TextOfField({text, static_cast<std::size_t>(std::max<short>(length, 0))});
}

std::vector<std::string> TitleOf(const FieldArray& lines, short count) {
    std::vector<std::string> title;
    for (short line = 0; line < count; ++line) {
        title.push_back(TextOfField(lines.Field(static_cast<std::size_t>(line))));
    }
    while (!title.empty() && title.back().empty()) {
        title.pop_back();
    }
    return title;
}

/// The labels of a scale from the slot `first` on.
std::vector<AxisLabel> LabelsOf(const FieldArray& texts, const double* values, int count, int first) {
    std::vector<AxisLabel> labels;
    for (int slot = first; values != nullptr && slot < count; ++slot) {
        labels.push_back({values[slot], TextOfField(texts.Field(static_cast<std::size_t>(slot)))});
    }
    return labels;
}

std::vector<GraphPoint> PointsOf(const double* block, std::int32_t count) {
    std::vector<GraphPoint> points;
    for (std::int32_t i = 0; block != nullptr && i < count; ++i) {
        points.push_back({NumberOf(block[i]), NumberOf(block[count + i])});
    }
    return points;
}

std::vector<std::string> PointLabelsOf(const FieldArray& labels, std::int32_t count) {
    std::vector<std::string> texts;
    for (std::int32_t i = 0; labels.Start != nullptr && i < count; ++i) {
        texts.push_back(TextOfField(labels.Field(static_cast<std::size_t>(i))));
    }
    return texts;
}

}  // namespace

short CAnalysisSupport::NewGeneralMultipleChartLongEx(
    const CChartInfo& info, unsigned short chartFlags, short seriesCount, double** seriesData,
    std::int32_t* pointCounts, std::uint8_t* seriesKinds, std::uint8_t* seriesAttributesB,
    std::uint8_t* seriesAttributesC, std::uint8_t* seriesColors, char** seriesNames, double* seriesWidths,
    const char* title, short titleWidth, short titleLines, const char* xCaption, short xCaptionLength,
    short /*xCaptionLines*/, const char* yCaption, short yCaptionLength, short /*yCaptionLines*/, double yMin,
    double yMax, double yStep, double xMin, double xMax, double xStep, const char* xScaleText, short xScaleWidth,
    const double* xScaleValues, int xScaleCount, const char* /*secondXScaleText*/, short /*secondXScaleWidth*/,
    const double* /*secondXScaleValues*/, int /*secondXScaleCount*/, const char* yScaleText, short yScaleWidth,
    const double* yScaleValues, int yScaleCount, const char* /*extraScaleText*/, short /*extraScaleWidth*/,
    const double* /*extraScaleValues*/, int /*extraScaleCount*/, unsigned short optionA, short optionA1, short optionA2,
    unsigned short optionB, short optionB1, short optionB2, unsigned short optionC, short optionC1, short optionC2,
    const char* /*noteBlock*/, short /*noteWidth*/, std::int32_t* seriesFlags, short pointLabelRows,
    short pointLabelWidth, char** pointLabels) {
    SeriesChart chart;
    chart.Flags = chartFlags;
    chart.Options = {{{optionA, optionA1, optionA2}, {optionB, optionB1, optionB2}, {optionC, optionC1, optionC2}}};
    chart.X = {CaptionOf(xCaption, xCaptionLength), xMin, xMax, xStep,
               LabelsOf({xScaleText, xScaleWidth}, xScaleValues, xScaleCount, 1)};
    chart.Y = {CaptionOf(yCaption, yCaptionLength), yMin, yMax, yStep,
               LabelsOf({yScaleText, yScaleWidth}, yScaleValues, yScaleCount, 0)};
    for (short i = 0; i < seriesCount; ++i) {
        GraphSeries series;
        if (seriesNames != nullptr) {
            series.Name = TextOfField(FieldArray{seriesNames[i], SeriesNameWidth}.Field(0));
        }
        series.Kind = seriesKinds[i];
        series.AttributeB = seriesAttributesB[i];
        series.AttributeC = seriesAttributesC[i];
        series.Color = seriesColors[i];
        series.Width = seriesWidths[i];
        series.Flags = seriesFlags[i];
        series.Points = PointsOf(seriesData[i], pointCounts[i]);
        if (pointLabelRows > 0 && pointLabels != nullptr) {
            series.Labels = PointLabelsOf({pointLabels[i], pointLabelWidth}, pointCounts[i]);
        }
        chart.Series.push_back(std::move(series));
    }
    GraphDocument graph{TitleOf({title, titleWidth}, titleLines), quillara::TakeSubject(Document),
                        ContentOf(info, std::move(chart))};
    quillara::NameParts(graph);
    quillara::RouteResult(*this, std::move(graph));
    return 0;
}
