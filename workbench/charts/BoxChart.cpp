#include <algorithm>
#include <cmath>
#include <memory>

#include "workbench/charts/BoxArea.h"
#include "workbench/charts/ChartKey.h"
#include "workbench/charts/NoCases.h"
#include "workbench/documents/BoxTypes.h"

namespace quillara {
namespace {

constexpr double LeastPanelWidth = 150.0;  // pixels, where panels can stand below each other instead
constexpr double LeastPanelHeight = 110.0;

/// Panels beside each other, as wide as their boxes need; in several rows where they would become too narrow.
class PanelGrid : public QCPLayoutGrid {
  public:
    explicit PanelGrid(std::vector<BoxArea*> areas) : Areas(std::move(areas)) {
        setFillOrder(foColumnsFirst, false);
        setColumnSpacing(Spacing);
        setRowSpacing(Spacing);
        for (BoxArea* area : Areas) {
            addElement(area);
        }
    }

    void updateLayout() override {
        const int columns = ColumnsFor(QSizeF(rect().size()));
        setWrap(columns);
        setFillOrder(foColumnsFirst, true);
        for (int column = 0; column < columnCount(); ++column) {
            const bool isOneRow = rowCount() == 1;
            const auto boxes = static_cast<double>(Areas[static_cast<std::size_t>(column)]->Count());
            setColumnStretchFactor(column, isOneRow ? boxes + 1.0 : 1.0);
        }
        QCPLayoutGrid::updateLayout();
    }

  private:
    static constexpr int Spacing = 12;

    /// As many as have room beside each other, but no fewer than leave room for the rows.
    [[nodiscard]] int ColumnsFor(QSizeF size) const {
        const auto count = static_cast<double>(Areas.size());
        const double rows = std::max(1.0, std::floor(size.height() / LeastPanelHeight));
        const double fewest = std::ceil(count / rows);
        const double wanted = std::max(1.0, std::floor(size.width() / LeastPanelWidth));
        const double columns = std::clamp(std::max(wanted, fewest), 1.0, count);
        return static_cast<int>(std::ceil(count / std::ceil(count / columns)));  // rows of equal length
    }

    const std::vector<BoxArea*> Areas;  // owned by the layout
};

/// Stands in for a plot without a box.
class EmptyPlot : public ChartElement {
  public:
    explicit EmptyPlot(const ChartSheet& sheet) : ChartElement(sheet.Plot, sheet.Style), Document(sheet.Document) {}

  protected:
    void Arrange(const QRectF& place) override {
        PlacedTexts = NoCasesOfReview(Document->About, place, Style.FaintText());
    }

  private:
    const std::shared_ptr<const GraphDocument> Document;
};

std::vector<KeyEntry> KeyOf(const BoxPlot& plot, const ChartStyle& style) {
    const auto anyHas = [&](std::vector<double> BoxStatistics::*values) {
        return std::ranges::any_of(plot.Boxes, [&](const BoxStatistics& box) { return !(box.*values).empty(); });
    };
    const bool hasOutliers = anyHas(&BoxStatistics::Outliers);
    const bool hasExtremes = anyHas(&BoxStatistics::Extremes);
    const BoxTypeFacts& facts = FactsOf(plot.Type);
    const bool isWholeRange = facts.ShowsMedian() && !hasOutliers && !hasExtremes;
    const BoxMarkers markers = MarkersOf(style);
    using Sign = KeyEntry::Sign;
    std::vector<KeyEntry> entries = {
        {facts.ShowsMedian() ? Sign::Line : Sign::Marker, style.Ink, markers.Middle,
         QString::fromUtf8(facts.MiddleName)},
        {Sign::Box, BoxFill(style), {}, QString::fromUtf8(facts.BoxText)},
        {Sign::Whisker, style.Ink, {}, isWholeRange ? QStringLiteral("Range") : QString::fromUtf8(facts.WhiskerText)}};
    if (hasOutliers) {
        entries.push_back({Sign::Marker, style.Ink, markers.Outlier, QStringLiteral("Outliers")});
    }
    if (hasExtremes) {
        entries.push_back({Sign::Marker, style.Ink, markers.Extreme, QStringLiteral("Extremes")});
    }
    if (!plot.Weight.empty()) {
        entries.push_back({Sign::None,
                           style.Ink,
                           {},
                           QStringLiteral("Weighted by %1, fractions as they are").arg(Shown(plot.Weight))});
    }
    return entries;
}

}  // namespace

ChartBody BodyOf(const ChartSheet& sheet, const BoxPlot& plot) {
    std::vector<BoxArea*> areas;
    for (const BoxPanel& panel : PanelsOf(plot, sheet.Document->About)) {
        areas.push_back(new BoxArea(sheet, plot, panel));  // owned by the layout
    }
    if (areas.empty()) {
        return {new EmptyPlot(sheet)};
    }
    return {new PanelGrid(std::move(areas)), new ChartKey(sheet.Plot, sheet.Style, KeyOf(plot, sheet.Style))};
}

}  // namespace quillara
