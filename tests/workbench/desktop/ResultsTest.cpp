// A person works with result windows: tables, charts, bars that are picked, and the windows themselves.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QImage>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMimeData>
#include <QPrinter>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "workbench/charts/ChartZoom.h"
#include "workbench/desktop/brushing/BrushingBar.h"
#include "workbench/desktop/results/ChartCanvas.h"
#include "workbench/desktop/results/ChartResultView.h"
#include "workbench/desktop/results/Printing.h"
#include "workbench/desktop/results/ReportDialog.h"
#include "workbench/desktop/results/ResultTableModel.h"
#include "workbench/desktop/results/SpotLight.h"
#include "workbench/desktop/results/TableResultView.h"
#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/desktop/window/Workspace.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/exploration/Exploration.h"
#include "workbench/exploration/ExploredOutputs.h"
#include "workbench/formats/DataFile.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

using testing::ElementsAre;

class ResultsTest : public testing::Test {
  protected:
    ResultsTest() {
        ExplorationModel::Answers answers;
        answers.WorkIn = [this](Window& dialog) {
            ChooseVariables(dialog, Categorical, Continuous);
            return dialog.IsClosed();
        };
        answers.Pick = [this](BrushingRun& run) { return Area.PickBar(run); };
        answers.ShowMessage = [this](const QString& text) { Messages.append(text); };
        Model.SetAnswers(std::move(answers));
        Area.resize(1280, 860);
        Area.show();
    }

    void Open(const std::string& path, const std::vector<std::string>& categorical,
              const std::vector<std::string>& continuous, int button = DrillVariablesButton) {
        if (Model.Present() == nullptr) {
            Model.Begin(std::make_shared<DataTable>(ReadDataFile(path)), {path});
        }
        const auto numbers = [this](const std::vector<std::string>& names) {
            std::vector<short> chosen;
            for (const std::string& name : names) {
                chosen.push_back(static_cast<short>(Model.Present()->Table().IndexOf(name) + 1));
            }
            return chosen;
        };
        Categorical = numbers(categorical);
        Continuous = numbers(continuous);
        Press(button);
    }
    void OpenSurvey() { Open(testing_locations::Sample("survey.sav"), {"sex", "region"}, {"age", "income"}); }
    void Press(int id) {
        Model.Do([id](Exploration& exploration) { exploration.Press(id); });
        QCoreApplication::processEvents();
    }
    /// The view of the first document whose name has a text in it.
    template <typename View>
    View& ViewNamed(const std::string& text) {
        for (const auto& document : Model.Present()->Documents()) {
            if (document->Name().find(text) != std::string::npos) {
                return dynamic_cast<View&>(*Area.Find(*document));
            }
        }
        throw std::runtime_error(text);
    }
    ChartCanvas& ChartNamed(const std::string& text) { return ViewNamed<ChartResultView>(text).Canvas(); }
    [[nodiscard]] std::vector<std::string> Steps() {
        std::vector<std::string> steps;
        for (const StepTaken& step : Model.Present()->Steps()) {
            steps.push_back(step.Condition());
        }
        return steps;
    }
    static QPoint MiddleOf(const QCustomPlot& plot, int point) {
        for (const ChartSpot& spot : ChartSpots(plot)) {
            if (spot.Point == point) {
                return spot.Outline.boundingRect().center().toPoint();
            }
        }
        return {};
    }
    static QStringList TextsOf(const QMenu& menu) {
        QStringList texts;
        for (const QAction* action : menu.actions()) {
            texts.append((action->isEnabled() ? "" : "!") + action->text());
        }
        return texts;
    }
    /// Opens the context menu of a place, which the pointer hits as a part of the view, and gives it.
    static QMenu& MenuAt(DocumentView& view, QPoint point) {
        QWidget* hit = view.childAt(point);
        QContextMenuEvent event(QContextMenuEvent::Mouse, hit->mapFrom(&view, point), view.mapToGlobal(point));
        QApplication::sendEvent(hit, &event);
        return *qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    void Shoot(const char* name) {
        if (qEnvironmentVariableIsSet("QUILLARA_SCREENSHOTS")) {
            QCoreApplication::processEvents();
            Area.grab().save(qEnvironmentVariable("QUILLARA_SCREENSHOTS") + u'/' + QLatin1String(name));
        }
    }

    QStringList Messages;
    std::vector<short> Categorical;
    std::vector<short> Continuous;
    ExplorationModel Model{nullptr};
    Workspace Area{Model};
};

TEST_F(ResultsTest, TablesShowCopyAndFollow) {
    OpenSurvey();
    Press(AutoUpdateBox);
    Press(FrequenciesButton);
    auto& view = ViewNamed<TableResultView>("region");
    QTableView& cells = view.Cells();
    QAbstractItemModel& model = *cells.model();
    EXPECT_EQ(model.headerData(0, Qt::Vertical), "Northern Highlands");
    EXPECT_EQ(model.index(0, 0).data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
    EXPECT_EQ(model.index(2, 0).data(ResultTableModel::CountShareRole).toDouble(), 1.0);
    EXPECT_FALSE(model.index(2, 2).data(ResultTableModel::CountShareRole).isValid());
    const QString before = model.index(0, 0).data().toString();
    const QAbstractItemModel& incomes = *ViewNamed<TableResultView>("income").Cells().model();
    EXPECT_TRUE(incomes.index(incomes.rowCount() - 1, 0).data(ResultTableModel::IsMissingRole).toBool());
    cells.setColumnWidth(1, 177);
    cells.selectionModel()->select(QItemSelection(model.index(1, 0), model.index(2, 1)),
                                   QItemSelectionModel::ClearAndSelect);
    Shoot("tables.png");
    Model.Do([](Exploration& exploration) { exploration.Down("income", "0<x<=2000"); });
    EXPECT_NE(model.index(0, 0).data().toString(), before);
    EXPECT_EQ(cells.columnWidth(1), 177);
    EXPECT_EQ(cells.selectionModel()->selectedIndexes().size(), 4);
    cells.setFocus();
    view.Copy();
    const QMimeData* clip = QApplication::clipboard()->mimeData();
    EXPECT_TRUE(clip->text().startsWith(QStringLiteral("\tCount\tCumulative Count\nWestern Coast\t")));
    const QString cell = QStringLiteral("<td align=\"right\">%1</td>").arg(model.index(2, 1).data().toString());
    EXPECT_TRUE(clip->html().contains(cell));
    cells.selectAll();
    view.Copy();
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(QStringLiteral("Frequency table of region")));
    Model.Do([](Exploration& exploration) { exploration.Down("age", "Missing"); });
    EXPECT_EQ(Messages.size(), 1);  // there is no such category
}

TEST_F(ResultsTest, RowsAndBarsOfferTheirSteps) {
    OpenSurvey();
    Press(FrequenciesButton);
    Press(HistogramsButton);
    auto& table = ViewNamed<TableResultView>("Frequency table of sex");
    const QRect row = table.Cells().visualRect(table.Cells().model()->index(1, 0));
    QMenu& menu = MenuAt(table, table.Cells().viewport()->mapTo(&table, row.center()));
    EXPECT_EQ(TextsOf(menu).front(), "Drill down on sex = Male");
    EXPECT_TRUE(TextsOf(menu).contains("&Copy"));
    menu.actions().front()->trigger();
    menu.close();
    EXPECT_THAT(Steps(), ElementsAre("sex = Male"));
    auto& chart = ViewNamed<ChartResultView>("drill-down variable: region");
    QMenu& bars = MenuAt(chart, MiddleOf(chart.Canvas(), 2));
    EXPECT_THAT(TextsOf(bars).first(2), ElementsAre("Drill down on region = Central Plain", "Drill up on sex"));
    bars.actions()[1]->trigger();
    bars.close();
    EXPECT_THAT(Steps(), ElementsAre());
    QTest::keyClick(&chart.Canvas(), Qt::Key_Right);
    QTest::keyClick(&chart.Canvas(), Qt::Key_Left);
    ASSERT_TRUE(chart.Canvas().Current().has_value());
    EXPECT_TRUE(chart.Canvas().Current()->Tip.startsWith(QStringLiteral("Southern Islands")));
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(&chart.Canvas(), &byKey);
    auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    EXPECT_EQ(TextsOf(*popup).front(), "Drill down on region = Southern Islands");
    popup->close();
}

TEST_F(ResultsTest, ChartsZoomCopyAndAreSaved) {
    Open(testing_locations::Sample("survey.sav"), {"age"}, {});
    Press(HistogramsButton);
    auto& view = ViewNamed<ChartResultView>("age");
    ChartCanvas& canvas = view.Canvas();
    QWheelEvent wheel(QPointF(canvas.rect().center()), canvas.mapToGlobal(QPointF(canvas.rect().center())), {},
                      {0, 480}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&canvas, &wheel);
    EXPECT_TRUE(canvas.IsZoomed());
    const auto wheeled = ChartSpots(canvas).size();
    QTest::mousePress(&canvas, Qt::LeftButton, {}, canvas.rect().center());
    QTest::mouseMove(&canvas, canvas.rect().center() + QPoint(60, 40));
    QTest::mouseRelease(&canvas, Qt::LeftButton, {}, canvas.rect().center() + QPoint(60, 40));
    EXPECT_LT(ChartSpots(canvas).size(), wheeled);
    const ChartRanges ranges = ZoomOf(canvas);
    canvas.resize(canvas.size() * 2);
    view.Refresh();
    EXPECT_EQ(ZoomOf(canvas).front().front().Low, ranges.front().front().Low);
    Shoot("zoomed.png");
    QTest::keyClick(&canvas, Qt::Key_Escape);
    EXPECT_FALSE(canvas.IsZoomed());
    view.Copy();
    const QMimeData* clip = QApplication::clipboard()->mimeData();
    EXPECT_TRUE(clip->hasImage());
    EXPECT_TRUE(clip->data(QStringLiteral("image/svg+xml")).contains("<svg"));
    const QTemporaryDir folder;
    const std::pair<const char*, const char*> files[] = {{"a.svg", "<?xml"}, {"a.png", "\x89PNG"},
                                                         {"a.PDF", "%PDF"},  {"a.csv", "Histogram"},
                                                         {"a.xlsx", "PK"},   {"a.html", "<!"}};
    for (const auto& [name, begin] : files) {
        view.SaveTo(folder.filePath(QLatin1String(name)));
        QFile file(folder.filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        EXPECT_TRUE(file.readAll().contains(begin)) << name;
    }
    ReportDialog report(Model, Model.Present()->Documents(), nullptr);
    EXPECT_FALSE(report.SaveTo(QStringLiteral("/nowhere/at/all.html")));
    EXPECT_EQ(Messages.size(), 1);
    EXPECT_TRUE(report.SaveTo(folder.filePath(QStringLiteral("report.html"))));
    report.List().item(0)->setCheckState(Qt::Unchecked);
    for (const QPushButton* button : report.findChildren<QPushButton*>()) {
        EXPECT_EQ(button->isEnabled(), button->text().contains(QStringLiteral("Close")))
            << button->text().toStdString();
    }
}

TEST_F(ResultsTest, ScatterplotsZoomIntoACellAndAllPrint) {
    Open(testing_locations::Sample("survey.sav"), {}, {"age", "income"}, ReviewVariablesButton);
    Press(ReviewScatterplotButton);
    ASSERT_EQ(Model.Present()->Documents().size(), 1U) << Messages.join(u' ').toStdString();
    Press(ReviewDescriptivesButton);
    ChartCanvas& canvas = dynamic_cast<ChartResultView&>(*Area.Find(*Model.Present()->Documents().front())).Canvas();
    const QImage whole = canvas.grab().toImage();
    const QPoint cell = MiddleOf(canvas, 1);
    QTest::mousePress(&canvas, Qt::LeftButton, {}, cell - QPoint(40, 30));
    QTest::mouseMove(&canvas, cell);
    QTest::mouseRelease(&canvas, Qt::LeftButton, {}, cell);
    ASSERT_TRUE(canvas.IsZoomed());
    const ChartRanges ranges = ZoomOf(canvas);
    EXPECT_LT(ranges.front()[0].High - ranges.front()[0].Low, 60.0);  // years of age, of 18 to 96
    EXPECT_NE(canvas.grab().toImage(), whole);
    Shoot("scatter.png");
    QTest::mouseDClick(&canvas, Qt::LeftButton, {}, cell);
    EXPECT_FALSE(canvas.IsZoomed());
    EXPECT_EQ(canvas.grab().toImage(), whole);
    const QTemporaryDir folder;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFileName(folder.filePath(QStringLiteral("pages.pdf")));
    PrintReport(printer, OutputsForPeople(Model.Present(), Model.Present()->Documents()));
    QFile file(printer.outputFileName());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().startsWith("%PDF"));
    if (qEnvironmentVariableIsSet("QUILLARA_SCREENSHOTS")) {
        file.copy(qEnvironmentVariable("QUILLARA_SCREENSHOTS") + QStringLiteral("/pages.pdf"));
    }
}

TEST_F(ResultsTest, BarsSlideToTheirNewHeights) {
    OpenSurvey();
    Press(AutoUpdateBox);
    Press(HistogramsButton);
    ChartCanvas& canvas = ChartNamed("region");
    for (const bool hasMotion : {false, true}) {
        Area.SetOptions({.HasMotion = hasMotion});
        Model.Do([&](Exploration& exploration) {
            hasMotion ? exploration.Down("age", "40<x<=50") : exploration.Down("income", "0<x<=2000");
        });
        const QImage first = canvas.grab().toImage();
        QTest::qWait(300);
        const QImage last = canvas.grab().toImage();
        const bool mayMove = canvas.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &canvas) > 0;
        EXPECT_EQ(first != last, hasMotion && mayMove);
    }
}

/// Works in the picking of bars, one cycle after the other, each as soon as it has begun.
void InCycles(ExplorationModel& model, std::vector<std::function<void()>> cycles) {
    QTimer::singleShot(0, &model, [&model, cycles = std::move(cycles)]() mutable {
        if (model.IsBusy()) {
            const auto work = cycles.front();
            cycles.erase(cycles.begin());
            work();
        }
        if (!cycles.empty()) {
            InCycles(model, std::move(cycles));
        }
    });
}

TEST_F(ResultsTest, BarsArePickedByMouseAndKeyboard) {
    OpenSurvey();
    Press(HistogramsButton);
    std::vector<std::vector<std::string>> seen;
    const auto canvas = [this]() -> ChartCanvas& { return ChartNamed("Histogram for brushing: "); };
    const auto bar = [this] { return Area.findChild<BrushingBar*>(); };
    const auto last = [this]() -> ChartCanvas& {
        return dynamic_cast<ChartResultView&>(*Area.Find(*Model.Present()->Documents().back())).Canvas();
    };
    bool wasBusy = false;
    InCycles(Model, {[&] {
                         wasBusy = Model.IsBusy();
                         const QPoint male = MiddleOf(canvas(), 1);
                         QTest::mouseMove(&canvas(), male);
                         EXPECT_FALSE(canvas().findChild<SpotLight*>()->Lit().isEmpty());
                         Shoot("brushing.png");
                         QTest::mouseClick(&canvas(), Qt::LeftButton, {}, QPoint(3, 3));  // the bare ground
                         QTest::mouseClick(&canvas(), Qt::LeftButton, {}, male);
                     },
                     [&] {
                         seen.push_back(Steps());
                         QTest::keyClick(&last(), Qt::Key_Right);
                         QTest::keyClick(&last(), Qt::Key_Return);
                     },
                     [&] {
                         seen.push_back(Steps());
                         QTest::keyClick(&last(), Qt::Key_U);
                     },
                     [&] {
                         seen.push_back(Steps());
                         QTest::keyClick(&last(), Qt::Key_Escape);
                     }});
    Model.Do([](Exploration& exploration) { exploration.ClickRow(DrillDownListControl, 0); });
    Press(BrushButton);
    EXPECT_TRUE(wasBusy);
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_THAT(seen[0], ElementsAre("sex = Male"));
    EXPECT_THAT(seen[1], ElementsAre("sex = Male", "region = Western Coast"));
    EXPECT_THAT(seen[2], ElementsAre("sex = Male"));
    EXPECT_EQ(bar(), nullptr);
    EXPECT_FALSE(Model.IsBusy());
    // A window that is closed ends it, and goes once the command has ended.
    const std::size_t windows = Model.Present()->Documents().size();
    InCycles(Model, {[&] { Area.activeSubWindow()->close(); }});
    Press(BrushButton);
    QCoreApplication::processEvents();
    EXPECT_FALSE(Model.IsBusy());
    EXPECT_EQ(Model.Present()->Documents().size(), windows);
    // The buttons of the bar do the same.
    InCycles(Model, {[&] { QTest::mouseClick(bar()->Button(1), Qt::LeftButton); },
                     [&] { QTest::mouseClick(bar()->DoneButton(), Qt::LeftButton); }});
    Press(BrushButton);
    EXPECT_THAT(Steps(), ElementsAre());
    EXPECT_TRUE(Messages.isEmpty());
}

TEST_F(ResultsTest, WindowsStayWithWhatTheyAreAbout) {
    Open(testing_locations::Sample("survey.sav"), {"sex", "region", "age"}, {"income"});
    Press(AutoUpdateBox);
    Press(HistogramsButton);
    Press(PieChartsButton);
    Press(DescriptivesButton);
    const auto places = [this] {
        std::map<QString, QRect> all;
        for (const QMdiSubWindow* frame : Area.subWindowList()) {
            EXPECT_EQ(all.count(frame->windowTitle()), 0U);
            all[frame->windowTitle()] = frame->geometry();
        }
        return all;
    };
    std::map<QString, QRect> before = places();
    EXPECT_EQ(before.size(), 9U);
    EXPECT_EQ(before.count(QStringLiteral("Histogram of region")), 1U);
    EXPECT_EQ(before.count(QStringLiteral("Descriptives of income")), 1U);
    ChartNamed("variable: age").Zoom(0.5);
    Model.Do([](Exploration& exploration) { exploration.Down("sex", "Female"); });
    before.erase(QStringLiteral("Histogram of sex"));
    before.erase(QStringLiteral("Pie chart of sex"));
    EXPECT_EQ(places(), before);
    EXPECT_TRUE(ChartNamed("variable: age").IsZoomed());
    EXPECT_FALSE(ChartNamed("variable: region").IsZoomed());
    Model.Do([](Exploration& exploration) { exploration.Up("sex"); });
    for (const auto& [title, place] : places()) {
        EXPECT_TRUE(title.contains(QStringLiteral(" of sex")) || before.at(title) == place) << title.toStdString();
    }
}

TEST_F(ResultsTest, TilesStayADashboard) {
    OpenSurvey();
    Shoot("empty.png");
    Press(AutoUpdateBox);
    Press(HistogramsButton);
    Shoot("free.png");
    Area.Tile();
    Press(DescriptivesButton);
    const auto fill = [this] {
        int covered = 0;
        for (const QMdiSubWindow* frame : Area.subWindowList()) {
            covered += frame->width() * frame->height();
        }
        return covered == Area.viewport()->width() * Area.viewport()->height();
    };
    ASSERT_EQ(Area.subWindowList().size(), 5);
    EXPECT_TRUE(fill());
    Shoot("tiled.png");
    Area.resize(900, 700);
    QCoreApplication::processEvents();
    EXPECT_TRUE(fill());
    Model.Do([](Exploration& exploration) { exploration.Down("sex", "Female"); });
    Area.subWindowList().back()->close();
    EXPECT_TRUE(fill());
    Area.subWindowList().front()->move(30, 30);
    EXPECT_FALSE(Area.IsTiled());
    QMenu menu;
    Area.FillMenu(menu);
    emit menu.aboutToShow();
    EXPECT_TRUE(TextsOf(menu).filter(QStringLiteral("&1 Histogram")).size() == 1);
    const QMdiSubWindow* active = Area.activeSubWindow();
    menu.actions()[4]->trigger();
    EXPECT_NE(Area.activeSubWindow(), active);
    Area.SetTabbed(true);
    EXPECT_EQ(Area.viewMode(), QMdiArea::TabbedView);
    Shoot("tabs.png");
    Area.SetTabbed(false);
    Area.CloseAll();
    EXPECT_TRUE(Area.subWindowList().isEmpty());
    EXPECT_TRUE(Model.Present()->Documents().empty());
}

}  // namespace
}  // namespace quillara
