// What a person does in dialogs by hand.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/dialogs/ReorderList.h"
#include "workbench/desktop/dialogs/ReportList.h"
#include "workbench/desktop/dialogs/ShownControls.h"
#include "workbench/desktop/window/Appearance.h"
#include "workbench/desktop/window/OutlinedStyle.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

using testing::ElementsAre;

struct Dialogs : testing::Test {
    template <typename Widget>
    Widget& At(int id) {
        return *qobject_cast<Widget*>(Survey.Dialog().Find(id));
    }
    [[nodiscard]] std::vector<std::string> Rows() { return Survey.Startup().At(DrillDownListControl).Rows; }
    /// Shows the Categorization page of the variable age.
    void Categorize() {
        At<QTabWidget>(PageTabs).setCurrentIndex(1);
        At<ReorderList>(DrillDownListControl).setCurrentRow(3);
    }

    ShownSurvey Survey;
};

TEST_F(Dialogs, RowsAreDraggedWithTheMouseAndByKeys) {
    auto& list = At<ReorderList>(DrillDownListControl);
    const auto drag = [&](int row, int target, bool isHigher, bool isGivenUp) {
        const QRect from = list.visualItemRect(list.item(row));
        const QRect before = list.visualItemRect(list.item(std::min(target, list.count() - 1)));
        const QPoint to = isHigher ? before.center() - QPoint(0, 2) : before.center() + QPoint(0, 2);
        QTest::mousePress(list.viewport(), Qt::LeftButton, {}, from.center());
        for (const QPoint& way : {from.center() + QPoint(0, 3), to}) {
            QMouseEvent move(QEvent::MouseMove, way, list.viewport()->mapToGlobal(way), Qt::NoButton, Qt::LeftButton,
                             {});
            QApplication::sendEvent(list.viewport(), &move);
        }
        EXPECT_EQ(list.DropRow(), target);
        if (isGivenUp) {
            QTest::keyClick(&list, Qt::Key_Escape);
        }
        Picture(list, QStringLiteral("drop-line"));
        QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, to);
    };
    drag(0, 3, true, true);
    EXPECT_THAT(Rows(), ElementsAre("region", "sex", "genre", "age", "income"));
    drag(0, 3, true, false);
    EXPECT_THAT(Rows(), ElementsAre("sex", "genre", "region", "age", "income"));
    EXPECT_EQ(list.currentRow(), 2);
    drag(3, 0, true, false);
    EXPECT_THAT(Rows(), ElementsAre("age", "sex", "genre", "region", "income"));
    drag(1, 5, false, false);
    EXPECT_THAT(Rows(), ElementsAre("age", "genre", "region", "income", "sex"));
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Up}) {  // the first can't: it is the last row
        QTest::keyClick(&list, key, Qt::AltModifier);
    }
    EXPECT_THAT(Rows(), ElementsAre("age", "genre", "sex", "region", "income"));
    EXPECT_EQ(list.currentRow(), 2);
}

TEST_F(Dialogs, WhatIsTypedIsThereBeforeAnyButtonActs) {
    Categorize();
    Click(Survey.Dialog(), ExactIntervalsRadio);
    auto& count = At<QSpinBox>(ExactCountField);
    const auto type = [&](const char* text) {
        count.setFocus();
        count.selectAll();
        QTest::keyClicks(&count, QString::fromLatin1(text));
    };
    type("1");  // below the range, and not finished
    Survey.InModal(DownButton, [](DialogView& view) {
        EXPECT_EQ(qobject_cast<ReportList*>(view.Find(CategoryListControl))->topLevelItemCount(), 2);
    });
    type("7");
    QTest::keyClick(&count, Qt::Key_Return);
    EXPECT_EQ(Survey.Startup().At(ExactCountField).Number, 7);

    Click(Survey.Dialog(), StepIntervalsRadio);
    Click(Survey.Dialog(), StartAtMinimumBox);  // off, where it is on
    auto& step = At<QLineEdit>(StepSizeField);
    step.setFocus();
    step.selectAll();
    QTest::keyClicks(&step, QStringLiteral("-2.5e1x"));
    EXPECT_EQ(step.text(), "-2.5e1");  // a letter is no part of a number
    EXPECT_EQ(Survey.Startup().At(StepSizeField).Number, 0);  // the nearest that is allowed
    step.selectAll();
    QTest::keyClicks(&step, QStringLiteral("2.5e1"));
    EXPECT_EQ(step.text(), "2.5e1");
    QTest::keyClick(&step, Qt::Key_Return);
    EXPECT_EQ(step.text(), "25");
    EXPECT_EQ(Survey.Startup().At(StepSizeField).Number, 25);
}

TEST_F(Dialogs, RadioButtonsAreOneGroupForTheArrowKeys) {
    Categorize();
    auto& chosen = At<QRadioButton>(DistinctValuesRadio);
    Click(Survey.Dialog(), DistinctValuesRadio);
    chosen.setFocus();
    QTest::keyClick(&chosen, Qt::Key_Down);
    EXPECT_TRUE(Survey.Startup().At(ExactIntervalsRadio).Checked);
    EXPECT_FALSE(chosen.isChecked());
    At<ReorderList>(DrillDownListControl).setCurrentRow(0);  // of categories: all the others are off
    EXPECT_TRUE(chosen.isChecked());
    EXPECT_FALSE(At<QRadioButton>(ExactIntervalsRadio).isChecked());
}

TEST_F(Dialogs, CategoriesAreChosenByReturnAndDoubleClickAndLeftByEscape) {
    const auto steps = [&] { return Survey.Main.Model().Present()->Steps(); };
    Survey.InModal(DownButton, [](DialogView&) {});  // Escape
    EXPECT_EQ(steps().size(), 0U);
    EXPECT_FALSE(Survey.Main.Model().IsBusy());
    Survey.InModal(DownButton, [](DialogView& view) {
        const auto* list = qobject_cast<ReportList*>(view.Find(CategoryListControl));
        EXPECT_TRUE(QTest::qWaitFor([&] { return list->hasFocus(); }));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    });
    ASSERT_EQ(steps().size(), 1U);
    EXPECT_EQ(steps().front().Category, "Western Coast");
    Survey.InModal(DownButton, [](DialogView& view) {
        auto* list = qobject_cast<ReportList*>(view.Find(CategoryListControl));
        DoubleClickRow(*list, 1);
    });
    EXPECT_EQ(steps().size(), 2U);
}

TEST_F(Dialogs, AnOrderIsMadeRowByRow) {
    Survey.InModal(OrderButton, [](DialogView& view) {
        auto* old = qobject_cast<ReorderList*>(view.Find(CurrentOrderList));
        const auto* made = qobject_cast<ReorderList*>(view.Find(NewOrderList));
        QTest::mouseClick(old->viewport(), Qt::LeftButton, {}, old->visualItemRect(old->item(3)).center());
        for (const int rows : {1, 2, 3}) {
            Click(view, PlaceButton);  // age, then income, then the last row that is left
            EXPECT_EQ(made->count(), rows);
        }
        EXPECT_EQ(old->currentRow(), 1);
        const QPoint first = old->visualItemRect(old->item(0)).center();
        QTest::mouseClick(old->viewport(), Qt::LeftButton, {}, first);
        QTest::mouseDClick(old->viewport(), Qt::LeftButton, {}, first);
        EXPECT_EQ(made->count(), 4);
        Click(view, OkCommand);
    });
    EXPECT_THAT(Rows(), ElementsAre("age", "income", "genre", "region", "sex"));
}

TEST_F(Dialogs, RowsOfTheListsOfferTheirStepsAndKeysTurnPages) {
    const auto choose = [&](int id, const QString& text) {
        auto& list = At<ReorderList>(id);
        const QPoint place = list.visualItemRect(list.item(0)).center();
        emit list.customContextMenuRequested(place);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        const QList<QAction*> actions = menu->actions();
        const auto action = std::ranges::find(actions, text, &QAction::text);
        ASSERT_NE(action, actions.end());
        menu->hide();
        QTimer::singleShot(0, [] {
            if (QWidget* categories = QApplication::activeModalWidget()) {
                QTest::keyClick(categories, Qt::Key_Return);
            }
        });
        (*action)->trigger();
        menu->close();
    };
    choose(DrillDownListControl, QStringLiteral("Drill down on region..."));
    EXPECT_EQ(Survey.Main.Model().Present()->Steps().size(), 1U);
    choose(DrillUpListControl, QStringLiteral("Drill up on region"));
    EXPECT_EQ(Survey.Main.Model().Present()->Steps().size(), 0U);
    auto& tabs = At<QTabWidget>(PageTabs);
    Survey.Main.activateWindow();
    Survey.Dialog().Find(HistogramsButton)->setFocus();
    for (const auto& [key, page] : {std::pair(Qt::Key_PageDown, 1), {Qt::Key_PageUp, 0}, {Qt::Key_PageUp, 3}}) {
        ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::focusWidget() != nullptr; }));
        QTest::keyClick(QApplication::focusWidget(), key, Qt::ControlModifier);
        EXPECT_EQ(tabs.currentIndex(), page);
    }
}

TEST_F(Dialogs, RefusedBoundariesStayAndThenAreTaken) {
    Categorize();
    Click(Survey.Dialog(), UserIntervalsRadio);
    Survey.InModal(BoundariesButton, [&](DialogView& view) {
        auto* typed = qobject_cast<QPlainTextEdit*>(view.Find(BoundariesEdit));
        for (const char* text : {"30 20", "20 30"}) {
            typed->selectAll();
            QTest::keyClicks(typed, QString::fromLatin1(text));
            Click(view, OkCommand);
        }
    });
    EXPECT_THAT(Survey.Said, ElementsAre("Lower boundary greater than upper boundary."));
    Survey.InModal(DownButton, [](DialogView& view) {
        EXPECT_EQ(qobject_cast<ReportList*>(view.Find(CategoryListControl))->topLevelItem(1)->text(0), "20<x<=30");
    });
}

TEST_F(Dialogs, AListKeepsItsRowsAndPlaceWhenNothingOfItHasChanged) {
    auto& list = At<ReorderList>(DrillDownListControl);
    list.setFixedHeight(2 * list.sizeHintForRow(0) + 4);
    list.verticalScrollBar()->setValue(7);
    const QListWidgetItem* row = list.item(1);
    list.setFocus();
    Click(Survey.Dialog(), CasewiseBox);
    Survey.Dialog().Refresh();
    EXPECT_EQ(list.item(1), row);
    EXPECT_EQ(list.verticalScrollBar()->value(), 7);
    EXPECT_EQ(list.palette().color(QPalette::Inactive, QPalette::Highlight),
              list.palette().color(QPalette::Active, QPalette::Highlight));
}

TEST_F(Dialogs, AccessKeysReachTheButtonsOfThePageThatIsShown) {
    QWindow* main = Survey.Main.windowHandle();
    const auto isSoon = [](const std::function<bool()>& holds) { return QTest::qWaitFor(holds, 2000); };
    At<ReorderList>(DrillDownListControl).setFocus();
    QTest::keyClick(main, Qt::Key_D, Qt::AltModifier);  // here the dialog goes before menus
    EXPECT_TRUE(isSoon([&] { return Survey.Startup().At(CasewiseBox).Checked; }));
    At<QTabWidget>(PageTabs).setCurrentIndex(3);
    QTest::keyClick(main, Qt::Key_R, Qt::AltModifier);  // also that of a button of two other pages
    EXPECT_TRUE(isSoon([&] { return Survey.Startup().At(MedianQuartileRangeBox).Checked; }));
    Categorize();
    Click(Survey.Dialog(), StepIntervalsRadio);
    Click(Survey.Dialog(), StartAtMinimumBox);
    QTest::keyClick(main, Qt::Key_R, Qt::AltModifier);  // of a label: goes to its field
    EXPECT_TRUE(At<QLineEdit>(StepStartField).hasFocus());
    At<QLineEdit>(StepStartField).selectAll();
    QTest::keyClicks(&At<QLineEdit>(StepStartField), QStringLiteral("5.5"));
    QTimer choose;
    QObject::connect(&choose, &QTimer::timeout, [] {
        if (QWidget* categories = QApplication::activeModalWidget()) {
            QTest::keyClick(categories, Qt::Key_Return);
        }
    });
    choose.start(10);
    QTest::keyClick(main, Qt::Key_N, Qt::AltModifier);  // down, with what has been typed
    ASSERT_TRUE(isSoon([&] { return !Survey.Main.Model().Present()->Steps().empty(); }));
    EXPECT_EQ(Survey.Main.Model().Present()->Steps().front().Category, "17.5<=x<18.5");
}

TEST_F(Dialogs, AccessKeysHoldAfterAClickOnATabAndShowWhatTheyChoose) {
    Survey.Main.resize(900, 460);
    auto& tabs = *At<QTabWidget>(PageTabs).tabBar();
    At<ReorderList>(DrillDownListControl).setCurrentRow(3);
    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(1).center());
    auto& chosen = At<QRadioButton>(UserIntervalsRadio);
    ASSERT_TRUE(chosen.visibleRegion().isEmpty()) << "below what is seen of the dialog";
    QTest::keyClick(Survey.Main.windowHandle(), Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return chosen.isChecked(); }, 2000));
    EXPECT_FALSE(chosen.visibleRegion().isEmpty());
}

TEST_F(Dialogs, AClickOnTheRowThatIsSelectedChoosesItAgain) {
    auto& list = At<ReorderList>(DrillDownListControl);
    const QSignalSpy again(&list, &ReorderList::rowChosenAgain);
    const auto clicks = [&](int row) {
        ClickRow(list, row);
        return again.count();
    };
    EXPECT_EQ(clicks(3), 0);
    EXPECT_EQ(clicks(3), 1);
    EXPECT_EQ(clicks(1), 1);
}

TEST_F(Dialogs, NumbersAreReadInTheNotationOfTheMoment) {
    Categorize();
    Click(Survey.Dialog(), StepIntervalsRadio);
    auto& step = At<QLineEdit>(StepSizeField);
    const auto type = [&](const char* text) {
        step.setFocus();
        step.selectAll();
        QTest::keyClicks(&step, QString::fromLatin1(text));
        return Survey.Startup().At(StepSizeField).Number;
    };
    EXPECT_EQ(type("2.5"), 2.5);
    EXPECT_EQ(type("0,75"), 0.75);  // a comma that can't set off thousands
    EXPECT_EQ(step.text(), "0,75");
    step.clearFocus();
    EXPECT_EQ(step.text(), "0.75");
    EXPECT_EQ(type("2,5"), 2.5);
    Survey.Main.setLocale(QLocale(QLocale::German));
    EXPECT_EQ(step.text(), "2,5");
    EXPECT_EQ(type("3,75"), 3.75);
    EXPECT_EQ(type("4.25"), 4.25);
}

TEST(OutlinedStyle, BoxesAreSeenInDarkWindows) {
    OutlinedStyle style;
    QCheckBox box;
    QRadioButton radio;
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{&box, &radio}) {
        button->setStyle(&style);
        button->setPalette(Appearance::DarkColours());
        button->resize(button->sizeHint());
        const QImage picture = button->grab().toImage();
        const QColor ground = button->palette().color(QPalette::Window);
        double contrast = 0;
        for (int x = 0; x < picture.width(); ++x) {
            contrast = std::max(contrast, ContrastOf(picture.pixelColor(x, picture.height() / 2), ground));
        }
        EXPECT_GE(contrast, 3.0);
    }
}

TEST(ResultColour, CanBeReadOnAnyBackground) {
    for (const std::uint32_t colour : {0x800000U, 0xFF0000U, 0U, 0xFFFFFFU, 0x0000FFU}) {
        for (const int grey : {0, 40, 128, 200, 255}) {
            const QColor background(grey, grey, grey);
            EXPECT_GE(ContrastOf(ReadableColour(colour, background), background), 3.9) << colour << " on " << grey;
        }
    }
    EXPECT_EQ(ReadableColour(0x800000, Qt::white), QColor(0, 0, 128));  // as it is where that can be read
}

}  // namespace
}  // namespace quillara
