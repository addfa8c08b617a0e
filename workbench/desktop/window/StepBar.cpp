#include "workbench/desktop/window/StepBar.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QStyle>
#include <QToolButton>
#include <algorithm>
#include <utility>

namespace quillara {
namespace {

constexpr int LongestCrumb = 34;  // in mean widths of a letter
constexpr int Gap = 2;
constexpr int Overlap = 6;  // a cross belongs to its crumb

QString TextOf(const std::string& text) {
    return QString::fromStdString(text);
}

QString CountOf(const std::optional<SubsetSize>& size) {
    return size ? QLocale().toString(size->Cases) : QString();
}

}  // namespace

StepBar::StepBar(QWidget* parent) : QWidget(parent), More(new QToolButton(this)), Hidden(new QMenu(this)) {
    setObjectName(QStringLiteral("steps"));
    setAccessibleName(tr("Steps"));
    More->setText(QStringLiteral("…"));
    More->setToolTip(tr("More steps"));
    More->setAccessibleName(tr("More steps"));
    More->setAutoRaise(true);
    More->setPopupMode(QToolButton::InstantPopup);
    More->setMenu(Hidden);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    hide();
}

void StepBar::Show(std::vector<TrailPlace> trail) {
    const bool hadFocus = focusWidget() != nullptr && focusWidget()->hasFocus();
    for (const Place& place : std::exchange(Places, {})) {
        for (QWidget* widget : std::initializer_list<QWidget*>{place.Arrow, place.Crumb, place.Cross}) {
            if (widget != nullptr) {
                widget->hide();
                widget->deleteLater();  // it may be the one that was clicked
            }
        }
    }
    Trail = std::move(trail);
    for (std::size_t place = 0; place < Trail.size(); ++place) {
        Add(place);
    }
    setVisible(!Trail.empty());
    updateGeometry();
    Arrange();
    if (hadFocus && !Places.empty()) {
        Places.back().Crumb->setFocus();
    }
}

void StepBar::Add(std::size_t place) {
    const TrailPlace& shown = Trail[place];
    const bool isFirst = place == 0;
    const bool isLast = place + 1 == Trail.size();
    const QString condition = isFirst ? tr("All") : TextOf(shown.Condition);
    auto* crumb = new QToolButton(this);
    crumb->setObjectName(QStringLiteral("crumb%1").arg(place));
    const QString elided =
        fontMetrics().elidedText(condition, Qt::ElideMiddle, fontMetrics().averageCharWidth() * LongestCrumb);
    crumb->setText((elided + QStringLiteral("  ") + CountOf(shown.Left)).trimmed().replace('&', QStringLiteral("&&")));
    const QString what =
        isFirst ? tr("All %1 cases").arg(CountOf(shown.Left)) : tr("%1: %2 cases").arg(condition, CountOf(shown.Left));
    crumb->setToolTip(isLast ? what : tr("%1. Click to come back here.").arg(what));
    crumb->setAccessibleName(what);
    crumb->setAutoRaise(true);
    QFont font = crumb->font();
    font.setBold(isLast);
    crumb->setFont(font);
    crumb->setFocusPolicy(Qt::StrongFocus);
    crumb->installEventFilter(this);
    connect(crumb, &QToolButton::clicked, this, [this, place] {
        if (place + 1 < Trail.size()) {
            emit wentBack(place);
        }
    });
    crumb->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(crumb, &QWidget::customContextMenuRequested, this,
            [this, crumb, place](const QPoint& point) { OpenMenu(place, crumb->mapToGlobal(point)); });
    Place made{nullptr, crumb, nullptr};
    if (!isFirst) {
        made.Arrow = new QLabel(QStringLiteral("›"), this);
        made.Cross = new QToolButton(this);
        made.Cross->setObjectName(QStringLiteral("cross%1").arg(place));
        made.Cross->setText(QStringLiteral("×"));
        made.Cross->setAutoRaise(true);
        made.Cross->setFocusPolicy(Qt::TabFocus);
        made.Cross->setToolTip(tr("Drill up on %1").arg(TextOf(shown.Variable)));
        made.Cross->setAccessibleName(tr("Drill up on %1").arg(TextOf(shown.Variable)));
        connect(made.Cross, &QToolButton::clicked, this, [this, place] { Undo(place); });
    }
    Places.push_back(made);
}

QToolButton* StepBar::Crumb(std::size_t place) const {
    return place < Places.size() ? Places[place].Crumb : nullptr;
}

QToolButton* StepBar::Cross(std::size_t place) const {
    return place < Places.size() ? Places[place].Cross : nullptr;
}

QSize StepBar::sizeHint() const {
    return {fontMetrics().averageCharWidth() * LongestCrumb, More->sizeHint().height() + Gap};
}

QSize StepBar::minimumSizeHint() const {
    return {More->sizeHint().width(), sizeHint().height()};
}

void StepBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Arrange();
}

void StepBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutDirectionChange) {
        Show(Trail);
    }
}

int StepBar::WidthOf(const Place& place) const {
    int width = place.Crumb->sizeHint().width() + Gap;
    if (place.Arrow != nullptr) {
        width += place.Arrow->sizeHint().width() + place.Cross->sizeHint().width() + 2 * Gap;
    }
    return width;
}

int StepBar::Put(QWidget& widget, int x) {
    const QSize size = widget.sizeHint();
    widget.setGeometry(QStyle::visualRect(layoutDirection(), rect(),
                                          QRect(x, (height() - size.height()) / 2, size.width(), size.height())));
    widget.show();
    return x + size.width() + Gap;
}

/// The first place stays, then as many of the last ones as there is room for, one at least.
void StepBar::Arrange() {
    if (Places.empty()) {
        return;
    }
    int whole = 0;
    for (const Place& place : Places) {
        whole += WidthOf(place);
    }
    std::size_t left = 1;  // the first of those behind the menu
    for (int room = width() - More->sizeHint().width() - Gap; whole > room && left + 1 < Places.size(); ++left) {
        if (left == 1 && whole <= width()) {
            break;
        }
        whole -= WidthOf(Places[left]);
    }
    Hidden->clear();
    FillMenu(*Hidden, 1, left - 1);
    int x = Put(*Places.front().Crumb, 0);
    More->setVisible(left > 1);
    if (left > 1) {
        x = Put(*More, x);
    }
    for (std::size_t place = 1; place < Places.size(); ++place) {
        const Place& shown = Places[place];
        for (QWidget* widget : std::initializer_list<QWidget*>{shown.Arrow, shown.Crumb, shown.Cross}) {
            if (place < left) {
                widget->hide();
            } else {
                x = Put(*widget, widget == shown.Cross ? x - Overlap : x);
            }
        }
    }
}

/// What a click and the cross do, by name.
void StepBar::OpenMenu(std::size_t place, const QPoint& point) {
    if (Trail.size() > 1) {
        auto* menu = new QMenu(this);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        FillMenu(*menu, place, 1);
        menu->popup(point);
    }
}

void StepBar::FillMenu(QMenu& menu, std::size_t first, std::size_t count) {
    for (std::size_t place = first; place < first + count; ++place) {
        const QString step =
            place == 0 ? tr("all cases") : TextOf(Trail[place].Condition).replace('&', QStringLiteral("&&"));
        QAction* back = menu.addAction(tr("Back to %1 (%2)").arg(step, CountOf(Trail[place].Left)), this,
                                       [this, place] { emit wentBack(place); });
        back->setEnabled(place + 1 < Trail.size());
    }
    menu.addSeparator();
    for (std::size_t place = qMax<std::size_t>(first, 1); place < first + count; ++place) {
        const QString variable = TextOf(Trail[place].Variable);
        menu.addAction(tr("Drill up on %1").arg(QString(variable).replace('&', QStringLiteral("&&"))), this,
                       [this, variable] { emit undone(variable); });
    }
}

void StepBar::Undo(std::size_t place) {
    emit undone(TextOf(Trail[place].Variable));
}

bool StepBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const auto found = std::ranges::find(Places, watched, [](const Place& place) -> QObject* { return place.Crumb; });
    if (found == Places.end()) {
        return false;
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    const auto place = static_cast<std::size_t>(found - Places.begin());
    if ((key == Qt::Key_Delete || key == Qt::Key_Backspace) && place > 0) {
        Undo(place);
    } else if (key == Qt::Key_Left || key == Qt::Key_Right) {
        const std::size_t next = place + (key == Qt::Key_Left ? std::size_t(0) - 1 : 1);
        if (next < Places.size() && Places[next].Crumb->isVisible()) {
            Places[next].Crumb->setFocus();
        }
    } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        Places[place].Crumb->click();
    } else {
        return false;
    }
    return true;
}

}  // namespace quillara
