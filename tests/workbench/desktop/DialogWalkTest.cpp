// A walk over all controls of all dialogs: how they look at different sizes of letters, light and dark.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <sstream>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/dialogs/ControlWidgets.h"
#include "workbench/desktop/dialogs/ShownControls.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

using testing::IsEmpty;

/// The part of a button or box that its text has, less its icon.
QSize RoomForText(const QAbstractButton& button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    const bool isBox = qobject_cast<const QCheckBox*>(&button) != nullptr;
    const bool isRadio = qobject_cast<const QRadioButton*>(&button) != nullptr;
    const auto part = isBox     ? QStyle::SE_CheckBoxContents
                      : isRadio ? QStyle::SE_RadioButtonContents
                                : QStyle::SE_PushButtonContents;
    const QSize room = button.style()->subElementRect(part, &option, &button).size();
    const bool hasIcon = !button.icon().isNull() && !button.text().isEmpty();
    return hasIcon ? room - QSize(button.iconSize().width() + 4, 0) : room;
}

bool Fits(const QSize& needed, const QSize& room) {
    return needed.width() <= room.width() && needed.height() <= room.height();
}

bool IsCut(const ControlResource& control, QWidget& widget) {
    const auto sizeOf = [&](const QString& text) { return widget.fontMetrics().size(Qt::TextShowMnemonic, text); };
    if (auto* button = qobject_cast<QAbstractButton*>(&widget)) {
        return !Fits(sizeOf(button->text()), RoomForText(*button));
    }
    if (auto* group = qobject_cast<QGroupBox*>(&widget)) {
        return sizeOf(group->title()).width() > group->width();
    }
    if (auto* label = qobject_cast<QLabel*>(&widget)) {
        return label->wordWrap() ? label->heightForWidth(label->width()) > label->height()
                                 : !ShowsResult(control) && !Fits(sizeOf(label->text()), label->contentsRect().size());
    }
    if (auto* tabs = qobject_cast<QTabWidget*>(&widget)) {
        return tabs->tabBar()->sizeHint().width() > tabs->width() ||
               !Fits(tabs->currentWidget()->minimumSize(), tabs->currentWidget()->size());
    }
    return qobject_cast<QLineEdit*>(&widget) != nullptr && widget.height() < widget.sizeHint().height();
}

bool MayLieOn(const QWidget& one, const QWidget& other) {
    return qobject_cast<const QGroupBox*>(&one) != nullptr || qobject_cast<const QGroupBox*>(&other) != nullptr;
}

/// Where two texts or a text and its background are too alike, of those that the module colours.
bool IsUnreadable(const QWidget& widget) {
    const bool isView = qobject_cast<const QAbstractItemView*>(&widget) != nullptr;
    const QPalette& palette = widget.palette();
    return ContrastOf(palette.color(isView ? QPalette::Text : QPalette::WindowText),
                      palette.color(isView ? QPalette::Base : QPalette::Window)) < 3;
}

/// What is wrong with the looks of a dialog, a line each.
std::string Faults(DialogView& view) {
    std::ostringstream faults;
    const auto& all = view.All();
    for (std::size_t i = 0; i < all.size(); ++i) {
        const ControlResource* control = all[i].Control;
        QWidget* widget = all[i].Widget;
        if (!widget->isVisible()) {
            continue;
        }
        const auto complain = [&](const std::string& text) {
            faults << control->Id << " " << control->Caption << ": " << text << "\n";
        };
        const bool isUsed = widget->focusPolicy() != Qt::NoFocus;
        if (isUsed && widget->accessibleName().isEmpty()) {
            complain("no name");
        }
        if (isUsed && widget->toolTip().isEmpty() && !CaptionText(*control).contains(u'&')) {
            complain("no access key or tip");
        }
        if (IsCut(*control, *widget)) {
            complain("cut");
        }
        if (!widget->parentWidget()->rect().contains(widget->geometry())) {
            complain("beyond its dialog");
        }
        if (widget->isEnabled() && IsUnreadable(*widget)) {
            complain("unreadable");
        }
        for (std::size_t j = i + 1; j < all.size(); ++j) {
            const QWidget& other = *all[j].Widget;
            if (other.isVisible() && other.parentWidget() == widget->parentWidget() &&
                other.geometry().intersects(widget->geometry()) && !MayLieOn(*widget, other)) {
                complain("lies on " + std::to_string(all[j].Control->Id) + " " + all[j].Control->Caption);
            }
        }
    }
    return faults.str();
}

QPalette DarkPalette() {
    QPalette dark(QColor(45, 45, 48));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    return dark;
}

/// An application with other letters and colours, for the time of a test.
struct Looks {
    Looks(double letters, bool isDark) {
        QFont font = FontBefore;
        font.setPointSizeF(font.pointSizeF() * letters);
        QApplication::setFont(font);
        QApplication::setPalette(isDark ? DarkPalette() : PaletteBefore);
    }
    Looks(const Looks&) = delete;
    Looks& operator=(const Looks&) = delete;
    ~Looks() {
        QApplication::setFont(FontBefore);
        QApplication::setPalette(PaletteBefore);
    }

    const QFont FontBefore = QApplication::font();
    const QPalette PaletteBefore = QApplication::palette();
};

TEST(DialogWalk, NothingIsCutOrWithoutANameAtAnySize) {
    for (const double letters : {1.0, 1.5, 2.0}) {
        for (const bool isDark : {false, true}) {
            const Looks looks(letters, isDark);
            ShownSurvey survey;
            const QString suffix = QStringLiteral("-%1%2").arg(100 * letters).arg(QLatin1String(isDark ? "-dark" : ""));
            auto* tabs = qobject_cast<QTabWidget*>(survey.Dialog().Find(PageTabs));
            for (int page = 0; page < tabs->count(); ++page) {
                tabs->setCurrentIndex(page);
                EXPECT_THAT(Faults(survey.Dialog()), IsEmpty()) << suffix.toStdString();
                Picture(survey.Dialog(), tabs->tabText(page) + suffix);
            }
            for (const int button : {DownButton, OrderButton, DrillVariablesButton, SelectCasesButton, WeightButton,
                                     OpenDataButton, BoundariesButton, Review3DHistogramsButton}) {
                if (button == BoundariesButton) {
                    tabs->setCurrentIndex(1);
                    qobject_cast<QListWidget*>(survey.Dialog().Find(DrillDownListControl))->setCurrentRow(3);
                    Click(survey.Dialog(), UserIntervalsRadio);
                } else if (button == Review3DHistogramsButton) {
                    tabs->setCurrentIndex(2);
                }
                survey.InModal(button, [&](DialogView& view) {
                    EXPECT_THAT(Faults(view), IsEmpty()) << suffix.toStdString();
                    Picture(*view.window(), view.windowTitle().trimmed() + suffix);
                });
            }
        }
    }
}

}  // namespace
}  // namespace quillara
