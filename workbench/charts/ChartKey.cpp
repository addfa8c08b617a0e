#include "workbench/charts/ChartKey.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillara {
namespace {

constexpr double SignWidth = 22.0;
constexpr double SignGap = 6.0;
constexpr double EntryGap = 18.0;
constexpr double KeyRoomAbove = 6.0;
constexpr std::size_t FewEntries = 8;  // each as long as it is
constexpr double MostOfPicture = 0.3;

void DrawWhisker(QCPPainter& painter, const QRectF& place) {
    const double x = place.center().x();
    const double half = place.height() / 4;
    painter.drawLine(QLineF(x, place.top(), x, place.bottom()));
    painter.drawLine(QLineF(x - half, place.top(), x + half, place.top()));
    painter.drawLine(QLineF(x - half, place.bottom(), x + half, place.bottom()));
}

void DrawSign(QCPPainter& painter, const KeyEntry& entry, const QRectF& place, const QColor& ink) {
    painter.setPen(QPen(ink, 1.2));
    painter.setBrush(Qt::NoBrush);
    switch (entry.Kind) {
        case KeyEntry::Sign::Line:
            painter.setPen(QPen(entry.Color, 2.0));
            painter.drawLine(QLineF(place.left(), place.center().y(), place.right(), place.center().y()));
            break;
        case KeyEntry::Sign::Box:
            painter.setBrush(entry.Color);
            painter.drawRect(place);
            break;
        case KeyEntry::Sign::Whisker:
            DrawWhisker(painter, place);
            break;
        case KeyEntry::Sign::Marker:
            entry.Marker.applyTo(&painter, QPen(entry.Color));
            entry.Marker.drawShape(&painter, place.center());
            break;
        case KeyEntry::Sign::None:
            break;
    }
}

/// Of the sign and the SignGap behind it.
double SignRoom(const KeyEntry& entry) {
    return entry.Kind == KeyEntry::Sign::None ? 0.0 : SignWidth + SignGap;
}

}  // namespace

ChartKey::ChartKey(QCustomPlot* plot, ChartStyle style, std::vector<KeyEntry> entries)
    : ChartElement(plot, style), All(std::move(entries)), Entries(All) {}

/// Of many entries two stand beside each other, whatever their names.
double ChartKey::TextWidth(const KeyEntry& entry, double width) const {
    const double whole = WidthOf(entry.Text, Style.Text());
    return All.size() > FewEntries ? std::min(whole, width / 2 - EntryGap - SignRoom(entry)) : whole;
}

void ChartKey::update(UpdatePhase phase) {
    if (phase == upPreparation) {
        Fit();
    }
    ChartElement::update(phase);
}

/// So many of all, and how many more there are.
std::vector<KeyEntry> ChartKey::First(std::size_t shown) const {
    std::vector<KeyEntry> first(All.begin(), All.begin() + static_cast<std::ptrdiff_t>(shown));
    if (shown < All.size()) {
        first.push_back({KeyEntry::Sign::None, Style.Ink, {}, QStringLiteral("and %1 more").arg(All.size() - shown)});
    }
    return first;
}

void ChartKey::Fit() {
    const QSize picture = parentPlot()->plotLayout()->rect().size();
    if (All.size() <= FewEntries || picture == FittedTo) {
        return;
    }
    FittedTo = picture;
    const double most = MostOfPicture * picture.height() - LineHeight(Style.Text());
    std::size_t fitting = FewEntries / 2;
    std::size_t beyond = All.size() + 1;
    while (fitting + 1 < beyond) {
        const std::size_t middle = (fitting + beyond) / 2;
        Entries = First(middle);
        (Places(picture.width()).back().y() <= most ? fitting : beyond) = middle;
    }
    Entries = First(fitting);
}

/// The left ends of the entries, in rows from y = 0 on; each row begins at x = 0.
std::vector<QPointF> ChartKey::Places(double width) const {
    const TextStyle text = Style.Text();
    std::vector<QPointF> places;
    QPointF at(0.0, 0.0);
    for (auto entry = Entries.begin(); entry != Entries.end(); ++entry) {
        const auto roomFor = [&](const KeyEntry& one) { return SignRoom(one) + TextWidth(one, width); };
        const double needed = roomFor(*entry);
        const bool hasNext = entry->IsHeading && entry + 1 != Entries.end();
        const double together = needed + (hasNext ? EntryGap + roomFor(*(entry + 1)) : 0.0);
        if (at.x() > 0.0 && at.x() + together > width) {
            at = {0.0, at.y() + LineHeight(text) + 2.0};
        }
        places.push_back(at);
        at.rx() += needed + EntryGap;
    }
    return places;
}

QSize ChartKey::minimumOuterSizeHint() const {
    if (Entries.empty()) {
        return {0, 0};
    }
    const double width = parentPlot()->plotLayout()->rect().width();
    return {0, static_cast<int>(std::ceil(Places(width).back().y() + LineHeight(Style.Text()) + KeyRoomAbove))};
}

QSize ChartKey::maximumOuterSizeHint() const {
    return {QWIDGETSIZE_MAX, minimumOuterSizeHint().height()};
}

void ChartKey::Arrange(const QRectF& place) {
    Signs.clear();
    const TextStyle text = Style.Text();
    const std::vector<QPointF> places = Places(place.width());
    double end = 0.0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        end = std::max(end, places[i].x() + SignRoom(Entries[i]) + TextWidth(Entries[i], place.width()));
    }
    const double left = place.left() + std::max(0.0, (place.width() - end) / 2);
    const double height = LineHeight(text);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const QPointF middle(left + places[i].x(), place.top() + KeyRoomAbove + places[i].y() + height / 2);
        Signs.push_back(QRectF(middle.x(), middle.y() - height * 0.3, SignWidth, height * 0.6));
        const QPointF pivot = middle + QPointF(SignRoom(Entries[i]), 0.0);
        PlacedTexts.push_back(
            ElidedText(pivot, Qt::AlignLeft | Qt::AlignVCenter, Entries[i].Text, text,
                       std::min(TextWidth(Entries[i], place.width()) + 0.5, place.right() - pivot.x()),
                       Qt::ElideMiddle));  // numbers stand at the ends
    }
}

void ChartKey::draw(QCPPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing, true);
    for (std::size_t i = 0; i < Signs.size(); ++i) {
        DrawSign(*painter, Entries[i], Signs[i], Style.Ink);
    }
}

}  // namespace quillara
