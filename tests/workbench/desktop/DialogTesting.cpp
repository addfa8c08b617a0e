#include "tests/workbench/desktop/DialogTesting.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "workbench/desktop/dialogs/ModalView.h"
#include "workbench/desktop/window/Workspace.h"
#include "workbench/dialogs/VariableListsDialog.h"

namespace quillara {

ShownDesktop::ShownDesktop() {
    Main.show();
    Main.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Main));
    Main.Model().SetAnswers({[this](Window& window) { return WorkInModal(window, &Main); },
                             [this](BrushingRun& run) { return Main.Results().PickBar(run); },
                             [this](const QString& text) { Said.push_back(text.toStdString()); }});
}

ShownSurvey::ShownSurvey() {
    EXPECT_TRUE(Main.Open(QString::fromStdString(testing_locations::Sample("survey.sav"))));
    const auto choose = [this](int button, std::vector<const char*> first, std::vector<const char*> second) {
        const auto numbers = [this](const std::vector<const char*>& names) {
            std::vector<short> numbers;
            for (const char* name : names) {
                numbers.push_back(static_cast<short>(Main.Model().Present()->Table().IndexOf(name) + 1));
            }
            return numbers;
        };
        Main.Model().Do([&](Exploration& exploration) {
            exploration.Press(button,
                              [&](Window& window) { ChooseVariables(window, numbers(first), numbers(second)); });
        });
    };
    choose(DrillVariablesButton, {"region", "sex", "genre"}, {"age", "income"});
    choose(ReviewVariablesButton, {"region"}, {"income", "hours"});
}

void ShownSurvey::InModal(int button, const std::function<void(DialogView&)>& work) {
    InModalWindow([&] { Click(Dialog(), button); },
                  [&](QWidget& modal) {
                      auto* view = modal.findChild<DialogView*>();
                      ASSERT_NE(view, nullptr);
                      const QPointer<QWidget> isThere(&modal);
                      work(*view);
                      if (isThere && modal.isVisible()) {
                          QTest::keyClick(&modal, Qt::Key_Escape);
                      }
                  });
}

void InModalWindow(const std::function<void()>& action, const std::function<void(QWidget&)>& work) {
    QTimer soon;
    QObject::connect(&soon, &QTimer::timeout, [&] {
        const QPointer<QWidget> modal = QApplication::activeModalWidget();
        if (modal != nullptr && modal->isActiveWindow()) {
            soon.stop();
            work(*modal);
            if (modal && modal->isVisible()) {
                ADD_FAILURE() << modal->windowTitle().toStdString() << " stays open";
                modal->close();
            }
        }
    });
    soon.start(0);
    action();
    EXPECT_FALSE(soon.isActive()) << "no modal window has opened";
}

void Click(DialogView& view, int id) {
    auto* button = qobject_cast<QAbstractButton*>(view.Find(id));
    ASSERT_NE(button, nullptr) << id;
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
}

void ClickRow(QAbstractItemView& list, int row, Qt::KeyboardModifiers keys) {
    const QModelIndex index = list.model()->index(row, 0);
    list.scrollTo(index);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, keys, list.visualRect(index).center());
}

void DoubleClickRow(QAbstractItemView& list, int row) {
    ClickRow(list, row);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(row, 0)).center());
}

void Picture(QWidget& widget, const QString& name) {
    if (qEnvironmentVariableIsSet("QUILLARA_SCREENSHOTS")) {
        widget.grab().save(qEnvironmentVariable("QUILLARA_SCREENSHOTS") + u'/' + name + QStringLiteral(".png"));
    }
}

std::string StateOf(Window& window) {
    std::vector<const DialogResource*> resources = window.Pages();
    resources.push_back(&window.Resource());
    std::string state;
    for (const DialogResource* resource : resources) {
        for (const ControlResource& row : resource->Controls) {
            if (const Control* control = window.Find(row.Id)) {
                state += std::to_string(row.Id) + " " + control->Text + (control->Enabled ? " on" : " off") +
                         (control->Checked ? " checked " : " ") + std::to_string(control->Number) + " row " +
                         std::to_string(control->Selected);
                for (const std::string& text : control->Rows) {
                    state += " | " + text;
                }
                state += " of " + std::to_string(control->ReportRows.size()) + "\n";
            }
        }
    }
    return state;
}

}  // namespace quillara
