#include "workbench/charts/CategoryAxis.h"

#include <algorithm>

#include "workbench/numbers/NumberFormat.h"

namespace quillara {
namespace {

constexpr int MostCountDecimals = 2;
// Shares that would read as none or as all.
constexpr double LeastPercent = 0.05;
constexpr double MostPercent = 99.95;

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

std::vector<QString> CountTexts(const std::vector<double>& counts) {
    const NumberFormat format(counts, MostCountDecimals);
    std::vector<QString> texts(counts.size());
    std::ranges::transform(counts, texts.begin(),
                           [&](double count) { return QString::fromStdString(format.TextOf(count)); });
    return texts;
}

QString CountText(double count) {
    return QString::fromStdString(NumberFormat({count}, MostCountDecimals).TextOf(count));
}

QString PercentText(double part, double total) {
    const double percent = 100.0 * part / total;
    if (percent > 0.0 && percent < LeastPercent) {
        return QStringLiteral("<0.1%");
    }
    if (percent < 100.0 && percent >= MostPercent) {
        return QStringLiteral(">99.9%");
    }
    return QString::number(percent, 'f', 1) + QStringLiteral("%");
}

QString CountTip(const QString& name, double count, double total) {
    const QString share =
        total > 0.0 ? QStringLiteral(" (") + PercentText(count, total) + QStringLiteral(")") : QString();
    return Isolated(name) + QStringLiteral(": ") + CountText(count) + share;
}

}  // namespace quillara
