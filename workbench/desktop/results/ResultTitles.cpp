#include "workbench/desktop/results/ResultTitles.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <array>

#include "resources/ControlIds.h"
#include "workbench/desktop/dialogs/MarkIcons.h"
#include "workbench/documents/ResultDocument.h"

namespace quillara {
namespace {

constexpr const char* Context = "quillara::ResultTitles";
constexpr qsizetype MostNamed = 3;  // variables that a title names one by one
constexpr qsizetype MostLetters = 28;  // of a name where there is little room

struct TitleRow {
    int Command;
    const char* Title;  ///< "%1" stands for the variables
    const char* Icon;
};

// clang-format off
constexpr std::array<TitleRow, 15> Titles{{
    {SummaryButton,             QT_TRANSLATE_NOOP("quillara::ResultTitles", "Summary of steps"), "!249"},
    {FrequenciesButton,         QT_TRANSLATE_NOOP("quillara::ResultTitles", "Frequencies of %1"), "e"},
    {DescriptivesButton,        QT_TRANSLATE_NOOP("quillara::ResultTitles", "Descriptives of %1"), "e"},
    {HistogramsButton,          QT_TRANSLATE_NOOP("quillara::ResultTitles", "Histogram of %1"), "!223"},
    {PieChartsButton,           QT_TRANSLATE_NOOP("quillara::ResultTitles", "Pie chart of %1"), "!280"},
    {StackedPlotsButton,        QT_TRANSLATE_NOOP("quillara::ResultTitles", "Stacked plot of %1"), "!248"},
    {BrushingGraphCommand,      QT_TRANSLATE_NOOP("quillara::ResultTitles", "Brushing of %1"), "!664"},
    {ReviewFrequenciesButton,   QT_TRANSLATE_NOOP("quillara::ResultTitles", "Review: frequencies of %1"), "e"},
    {ReviewDescriptivesButton,  QT_TRANSLATE_NOOP("quillara::ResultTitles", "Review: descriptives of %1"), "e"},
    {ReviewHistogramsButton,    QT_TRANSLATE_NOOP("quillara::ResultTitles", "Review: histogram of %1"), "!223"},
    {ReviewPieChartsButton,     QT_TRANSLATE_NOOP("quillara::ResultTitles", "Review: pie chart of %1"), "!280"},
    {ReviewStackedPlotsButton,  QT_TRANSLATE_NOOP("quillara::ResultTitles", "Review: stacked plot of %1"), "!248"},
    {ReviewBoxWhiskerButton,    QT_TRANSLATE_NOOP("quillara::ResultTitles", "Review: box plot of %1"), "!225"},
    {ReviewScatterplotButton,   QT_TRANSLATE_NOOP("quillara::ResultTitles", "Review: scatterplots of %1"), "!229"},
    {Review3DHistogramsButton,  QT_TRANSLATE_NOOP("quillara::ResultTitles", "Review: 3D histogram of %1"), "!231"},
}};
// clang-format on

const TitleRow* RowOf(const ResultDocument& document) {
    const int command = document.IsBrushable() ? BrushingGraphCommand : document.Origin().Command;
    const auto* found = std::ranges::find(Titles, command, &TitleRow::Command);
    return found == Titles.end() ? nullptr : found;
}

QString Shortened(const QString& name, qsizetype letters) {
    if (name.size() <= letters) {
        return name;
    }
    const qsizetype end = letters / 3;
    return name.left(letters - end - 1) + QChar(0x2026) + name.right(end);
}

/// "age", "age, sex and region", or "12 variables".
QString NamesIn(const std::vector<ShownVariable>& variables, qsizetype letters) {
    QStringList names;
    for (const ShownVariable& variable : variables) {
        names.append(Shortened(QString::fromStdString(variable.Name), letters));
    }
    if (names.size() > MostNamed) {
        return QCoreApplication::translate(Context, "%1 variables").arg(names.size());
    }
    const QString last = names.takeLast();
    return names.isEmpty() ? last : QCoreApplication::translate(Context, "%1 and %2").arg(names.join(u", "), last);
}

QString Title(const ResultDocument& document, qsizetype letters) {
    const TitleRow* row = RowOf(document);
    const Subject& about =
        std::visit([](const auto& content) -> const Subject& { return content.About; }, document.Content());
    const QString title = row == nullptr ? QString() : QCoreApplication::translate(Context, row->Title);
    const bool namesVariables = title.contains(QStringLiteral("%1"));
    if (row == nullptr || (namesVariables && about.Variables.empty())) {
        return Shortened(QString::fromStdString(document.Name()), 2 * letters);
    }
    return namesVariables ? title.arg(NamesIn(about.Variables, letters)) : title;
}

}  // namespace

QString TitleOf(const ResultDocument& document) {
    return Title(document, 1000);
}

QString ShortTitleOf(const ResultDocument& document) {
    return Title(document, MostLetters);
}

QIcon IconOf(const ResultDocument& document) {
    const TitleRow* row = RowOf(document);
    return MarkIcon(row != nullptr ? row->Icon : document.Graph() != nullptr ? "!223" : "e");
}

}  // namespace quillara
