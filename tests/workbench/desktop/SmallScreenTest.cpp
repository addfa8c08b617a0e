// Windows on small screens, and on large ones with everything drawn larger.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDockWidget>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QTabWidget>
#include <memory>
#include <utility>

#include "resources/ControlIds.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/data/ValueLabelsDialog.h"
#include "workbench/desktop/results/ReportDialog.h"
#include "workbench/desktop/window/CommandSearch.h"
#include "workbench/desktop/window/PreferencesDialog.h"
#include "workbench/desktop/window/ScreenFit.h"

namespace quillara {
namespace {

/// Screens of laptops, in the pixels that windows count in at 100 %, 150 % and 200 %.
std::vector<QSize> Screens() {
    std::vector<QSize> screens;
    for (const QSize& screen : {QSize(1366, 768), QSize(1280, 720)}) {
        for (const double scale : {1.0, 1.5, 2.0}) {
            screens.push_back((screen.toSizeF() / scale).toSize());
        }
    }
    return screens;
}

/// The buttons and labels of a window whose texts are cut.
std::string CutIn(const QWidget& window) {
    std::string cut;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const auto* label = qobject_cast<const QLabel*>(widget);
        const bool isText = (button != nullptr && !button->text().isEmpty()) ||
                            (label != nullptr && label->metaObject() == &QLabel::staticMetaObject);
        if (!isText || widget->visibleRegion().isEmpty()) {
            continue;
        }
        const QString text = button != nullptr ? button->text() : label->text();
        const QSize room = button != nullptr ? widget->size() : widget->contentsRect().size();
        const QSize needed = widget->fontMetrics().size(Qt::TextShowMnemonic, text);
        const bool isWrapped = label != nullptr && (label->wordWrap() || label->textFormat() == Qt::RichText);
        const bool isCut = isWrapped ? label->heightForWidth(label->width()) > label->height()
                                     : needed.width() > room.width() || needed.height() > room.height();
        cut += isCut ? text.toStdString() + "; " : "";
    }
    return cut;
}

/// The window as it would be on each of the screens.
void ExpectFits(QWidget& window, const char* name) {
    const QSize usual = window.size();
    for (const QSize& screen : Screens()) {
        window.resize(usual);
        KeepWithin(window, {QPoint(0, 0), screen});
        QCoreApplication::processEvents();
        EXPECT_LE(window.width(), screen.width()) << name;
        EXPECT_LE(window.height(), screen.height()) << name;
        EXPECT_EQ(CutIn(window), "") << name << " on " << screen.width() << " x " << screen.height();
        Picture(window, QStringLiteral("small-%1-%2").arg(QLatin1String(name)).arg(screen.width()));
    }
}

TEST(SmallScreens, AllOfEveryDialogCanBeReached) {
    ShownSurvey survey;
    auto* tabs = qobject_cast<QTabWidget*>(survey.Dialog().Find(PageTabs));
    const auto expectModal = [&](int button, const char* name) {
        survey.InModal(button, [&](const DialogView& view) { ExpectFits(*view.window(), name); });
    };
    const std::pair<int, const char*> buttons[] = {
        {DownButton, "category"},     {OrderButton, "order"},   {DrillVariablesButton, "variables"},
        {SelectCasesButton, "cases"}, {WeightButton, "weight"}, {OpenDataButton, "data"}};
    for (const auto& [button, name] : buttons) {
        expectModal(button, name);
    }
    tabs->setCurrentIndex(1);
    qobject_cast<QListWidget*>(survey.Dialog().Find(DrillDownListControl))->setCurrentRow(3);
    Click(survey.Dialog(), UserIntervalsRadio);
    expectModal(BoundariesButton, "boundaries");
    tabs->setCurrentIndex(2);
    expectModal(Review3DHistogramsButton, "pairs");
}

TEST(SmallScreens, AllOfEveryWindowCanBeReached) {
    ShownDesktop empty;
    ExpectFits(empty.Main, "start");
    ShownSurvey survey;
    ExpectFits(survey.Main, "main");
    for (QDockWidget* dock : survey.Main.findChildren<QDockWidget*>()) {
        dock->show();
    }
    ExpectFits(survey.Main, "all-panels");
    Click(survey.Dialog(), HistogramsButton);
    const auto value = [](int number) { return EditedValue{double(number), QString::number(number), {}}; };
    const std::unique_ptr<QWidget> windows[] = {
        std::make_unique<PreferencesDialog>(nullptr),
        std::make_unique<ReportDialog>(survey.Main.Model(), survey.Main.Model().Present()->Documents(), nullptr),
        std::make_unique<ValueLabelsDialog>(QStringLiteral("region"), std::vector({value(1), value(2)})),
        std::make_unique<CommandSearch>(*survey.Main.menuBar(), nullptr),
    };
    for (const std::unique_ptr<QWidget>& window : windows) {
        window->show();
        ExpectFits(*window, window->metaObject()->className() + std::size("quillara:"));
    }
}

}  // namespace
}  // namespace quillara
