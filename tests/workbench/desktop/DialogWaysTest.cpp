// Every control of every dialog does the same whether it is used by mouse, by keyboard or by a script.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <regex>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/dialogs/ModalView.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

enum class Way { Mouse, Keyboard, Script };
constexpr std::array Ways = {Way::Mouse, Way::Keyboard, Way::Script};

/// Does something in a window by a script.
using ByScript = std::function<void(const std::function<void(Window&)>&)>;

/// Goes to a widget by the Tab key alone. Of radio buttons only one is reached so, the others by arrows.
void ReachByTab(QWidget& widget) {
    constexpr int most = 40;
    for (int tabs = 0; tabs < most && !widget.hasFocus(); ++tabs) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_TRUE(widget.hasFocus() || qobject_cast<QRadioButton*>(&widget) != nullptr)
        << widget.objectName().toStdString() << " isn't reached by Tab";
    widget.setFocus(Qt::TabFocusReason);
}

/// The row behind the one that is selected.
void UseList(QAbstractItemView& view, int id, int selected, Way way, const ByScript& byScript) {
    const int rows = view.model()->rowCount();
    if (rows == 0) {
        return;
    }
    const int row = (selected + 1) % rows;
    if (way == Way::Mouse) {
        ClickRow(view, row);
    } else if (way == Way::Keyboard) {  // the focus may have come to it already, which selects nothing
        const bool isThere = view.currentIndex().row() == row;
        QTest::keyClick(&view, isThere ? Qt::Key_Space : row == 0 ? Qt::Key_Home : Qt::Key_Down);
    } else {
        byScript([&](Window& window) { window.ClickRow(id, row); });
    }
}

void UseField(QWidget& widget, const ControlResource& control, const char* text, Way way, const ByScript& byScript) {
    const bool isNumber = control.Kind == ControlKind::IntegerField || control.Kind == ControlKind::RealField;
    if (way == Way::Script) {
        byScript([&](Window& window) {
            isNumber ? window.TypeNumber(control.Id, std::atof(text)) : window.Type(control.Id, text);
        });
        return;
    }
    auto* lines = qobject_cast<QPlainTextEdit*>(&widget);
    if (way == Way::Mouse) {
        QWidget* clicked = lines == nullptr ? &widget : lines->viewport();
        QTest::mouseDClick(clicked, Qt::LeftButton, {}, QPoint(8, std::min(12, clicked->height() / 2)));
    }
    QTest::keyClick(&widget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&widget, QString::fromUtf8(text));
}

void Use(DialogView& view, Window& window, const ControlResource& control, const char* text, Way way,
         const ByScript& byScript) {
    QWidget* widget = view.Find(control.Id);
    const bool isField = control.Kind == ControlKind::IntegerField || control.Kind == ControlKind::RealField ||
                         control.Kind == ControlKind::Edit || control.Kind == ControlKind::MultiLineEdit;
    if (auto* list = qobject_cast<QAbstractItemView*>(widget)) {
        UseList(*list, control.Id, window.At(control.Id).Selected, way, byScript);
    } else if (isField) {
        UseField(*widget, control, text, way, byScript);
    } else if (way == Way::Script) {
        byScript([&](Window& window) { window.Click(control.Id); });
    } else if (way == Way::Mouse) {
        Click(view, control.Id);
    } else {
        QTest::keyClick(widget, Qt::Key_Space);
    }
}

TEST(DialogWays, EveryControlOfTheStartupDialogDoesTheSame) {
    ShownSurvey surveys[3];
    for (ShownSurvey& survey : surveys) {
        survey.Main.Model().SetAnswers({[](Window&) { return false; }, [](BrushingRun&) { return false; },
                                        [&](const QString& text) { survey.Said.push_back(text.toStdString()); }});
    }
    const std::array first = {DrillDownListControl, DrillDownListControl, DrillDownListControl};  // to a number
    std::vector<std::pair<int, const ControlResource*>> walk;  // the page, the control
    std::vector<const DialogResource*> resources = surveys[0].Startup().Pages();
    resources.insert(resources.begin(), &surveys[0].Startup().Resource());
    const auto& main = resources.front()->Controls;
    for (const int id : first) {
        walk.emplace_back(0, &*std::ranges::find(main, id, &ControlResource::Id));
    }
    for (std::size_t page = 0; page < resources.size(); ++page) {
        for (const ControlResource& control : resources[page]->Controls) {
            if (control.Id != NoControlId && control.Id != CancelCommand && control.Id != PageTabs) {
                walk.emplace_back(static_cast<int>(page) - 1, &control);
            }
        }
    }
    int used = 0;
    for (const auto& [page, control] : walk) {
        for (int way = 0; way < 3; ++way) {
            ShownSurvey& survey = surveys[way];
            QWidget* widget = survey.Dialog().Find(control->Id);
            if (page >= 0) {
                qobject_cast<QTabWidget*>(survey.Dialog().Find(PageTabs))->setCurrentIndex(page);
            }
            if (widget->isEnabled() && widget->isVisible() && widget->focusPolicy() != Qt::NoFocus) {
                widget->setFocus(Qt::TabFocusReason);
                Use(survey.Dialog(), survey.Startup(), *control, "17", static_cast<Way>(way), [&](const auto& action) {
                    survey.Main.Model().Do(
                        [&](Exploration& exploration) { exploration.Use(exploration.Startup(), action); });
                });
                ++used;
            }
        }
        const std::string state = StateOf(surveys[2].Startup());
        const std::size_t documents = surveys[2].Main.Model().Present()->Documents().size();
        for (ShownSurvey& survey : surveys) {
            ASSERT_EQ(StateOf(survey.Startup()), state) << control->Id << " " << control->Caption;
            ASSERT_EQ(survey.Main.Model().Present()->Documents().size(), documents) << control->Id;
            ASSERT_EQ(survey.Said, surveys[2].Said) << control->Id;
        }
    }
    EXPECT_GE(used, 3 * 40);  // nearly all can be used here
}

/// A modal dialog and what opens it.
struct Opened {
    int Button;
    int Page;  ///< that the button stands on
    std::string Text;  ///< for its fields
    int First = 0;  ///< a control of the startup dialog to be clicked first; 0: none
    bool SelectsOn = false;  ///< the view selects the next row where one has been moved away; a script doesn't
};

/// Uses all that can be used of a dialog, then confirms; the state behind each.
std::vector<std::string> UseAll(DialogView& view, Window& window, const Opened& opened, Way way) {
    std::vector<std::string> states;
    for (const ControlResource& control : window.Resource().Controls) {
        QWidget* widget = view.Find(control.Id);
        if (control.Id == NoControlId || control.Id == CancelCommand || control.Id == OkCommand ||
            !widget->isEnabled() || widget->focusPolicy() == Qt::NoFocus) {
            continue;
        }
        if (way == Way::Keyboard) {
            ReachByTab(*widget);
        }
        Use(view, window, control, opened.Text.c_str(), way, [&](const auto& action) {
            action(window);
            view.Refresh();
        });
        view.Commit();
        const std::string state = StateOf(window);
        states.push_back(std::to_string(control.Id) + "\n" +
                         (opened.SelectsOn ? std::regex_replace(state, std::regex(" row -?[0-9]+"), "") : state));
    }
    const auto& controls = window.Resource().Controls;
    const auto ok = std::ranges::find(controls, OkCommand, &ControlResource::Id);
    if (way == Way::Keyboard) {
        ReachByTab(*view.Find(OkCommand));
    }
    Use(view, window, *ok, "", way, [&](const auto& action) {
        action(window);
        view.window()->close();
    });
    return states;
}

/// The states of a dialog, and that of the startup dialog behind it.
std::vector<std::string> WorkIn(ShownSurvey& survey, const Opened& opened, Way way) {
    std::vector<std::string> states;
    Window* modal = nullptr;
    survey.Main.Model().SetAnswers({[&](Window& window) {
                                        modal = &window;
                                        return WorkInModal(window, &survey.Main);
                                    },
                                    [](BrushingRun&) { return false; },
                                    [&](const QString& text) { survey.Said.push_back(text.toStdString()); }});
    qobject_cast<QTabWidget*>(survey.Dialog().Find(PageTabs))->setCurrentIndex(opened.Page);
    if (opened.First != 0) {
        qobject_cast<QListWidget*>(survey.Dialog().Find(DrillDownListControl))->setCurrentRow(3);
        Click(survey.Dialog(), opened.First);
    }
    survey.InModal(opened.Button, [&](DialogView& view) { states = UseAll(view, *modal, opened, way); });
    states.push_back(StateOf(survey.Startup()));
    return states;
}

TEST(DialogWays, EveryControlOfEveryModalDialogDoesTheSame) {
    const Opened dialogs[] = {
        {SelectCasesButton, 0, "age > 40"},
        {WeightButton, 0, ""},
        {BoundariesButton, 1, "20 30", UserIntervalsRadio},
        {OrderButton, 0, "", 0, true},
        {Review3DHistogramsButton, 2, ""},
        {DownButton, 0, ""},
        {DrillVariablesButton, 0, ""},
        {ReviewVariablesButton, 2, ""},
        {OpenDataButton, 0, testing_locations::Sample("orders.csv")},
    };
    ShownSurvey surveys[Ways.size()];
    for (const Opened& opened : dialogs) {
        const std::vector<std::string> expected = WorkIn(surveys[2], opened, Way::Script);
        for (const Way way : {Way::Mouse, Way::Keyboard}) {
            ShownSurvey& survey = surveys[static_cast<std::size_t>(way)];
            EXPECT_EQ(WorkIn(survey, opened, way), expected) << opened.Button << " " << static_cast<int>(way);
            EXPECT_EQ(survey.Said, surveys[2].Said) << opened.Button;
        }
    }
    EXPECT_EQ(surveys[0].Main.Model().Present()->Table().FileName, "orders.csv");
}

}  // namespace
}  // namespace quillara
