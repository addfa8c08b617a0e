#include "workbench/charts/CategoryAxis.h"

#include <algorithm>

#include "workbench/numbers/NumberFormat.h"

namespace quillara {
namespace {

constexpr int mostDecimals = 2;

}  // namespace

AreaAxis GivenAxis(const GraphAxis& axis) {
    AreaAxis given{Shown(axis.Caption), {axis.Min, axis.Max}, {}, false};
    for (const AxisLabel& label : axis.Labels) {
        given.Labels.push_back({label.At, Shown(label.Name()), label.IsMissing});
    }
    return given;
}

QString LabelAt(const GraphAxis& axis, double at) {
    const auto label = std::ranges::lower_bound(axis.Labels, at, {}, &AxisLabel::At);
    return label == axis.Labels.end() || label->At != at ? QString() : Shown(label->Name());
}

std::vector<QString> CountTexts(const std::vector<GraphPoint>& points) {
    std::vector<double> counts(points.size());
    std::ranges::transform(points, counts.begin(), &GraphPoint::Y);
    const NumberFormat format(counts, mostDecimals);
    std::vector<QString> texts(points.size());
    std::ranges::transform(counts, texts.begin(),
                           [&](double count) { return QString::fromStdString(format.TextOf(count)); });
    return texts;
}

QString CountText(double count) {
    return QString::fromStdString(NumberFormat({count}, mostDecimals).TextOf(count));
}

QString PercentText(double part, double total) {
    return QString::number(100.0 * part / total, 'f', 1) + QStringLiteral("%");
}

QString CountTip(const QString& name, double count, double total) {
    const QString share =
        total > 0.0 ? QStringLiteral(" (") + PercentText(count, total) + QStringLiteral(")") : QString();
    return name + QStringLiteral(": ") + CountText(count) + share;
}

}  // namespace quillara
