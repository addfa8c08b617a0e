#include "workbench/desktop/window/RemarkBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace quillara {
namespace {

QToolButton* Button(QWidget* parent, const QString& text, const QString& what) {
    auto* button = new QToolButton(parent);
    button->setText(text);
    button->setToolTip(what);
    button->setAccessibleName(what);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

/// Advice on options of the command line is none for who sits before a window.
QString TextOf(const Remark& remark) {
    const bool isForCommands = remark.Advice.starts_with("--") && remark.Advice.find('(') != std::string::npos;
    if (remark.Code == "weight-unused") {
        return QString::fromStdString(remark.Text) + ' ' + RemarkBar::tr("Explore > Weight... puts it in force.");
    }
    if (remark.Code == "weight-fractions") {
        return QString::fromStdString(remark.Text) + ' ' +
               RemarkBar::tr("\"Weighted moments\" takes fractions as they are.");
    }
    return QString::fromStdString(isForCommands ? remark.Text : remark.Line());
}

}  // namespace

RemarkBar::RemarkBar(QWidget* parent) : QFrame(parent), Text(new QLabel(this)), Place(new QLabel(this)) {
    setObjectName(QStringLiteral("remarks"));
    setAccessibleName(tr("Remarks"));
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::AlternateBase);
    setAutoFillBackground(true);
    auto* icon = new QLabel(this);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(size));
    Text->setTextFormat(Qt::PlainText);
    Text->setWordWrap(true);
    Text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Back = Button(this, QStringLiteral("‹"), tr("Previous remark"));
    On = Button(this, QStringLiteral("›"), tr("Next remark"));
    QToolButton* away = Button(this, QStringLiteral("×"), tr("Put the remarks away"));
    away->setObjectName(QStringLiteral("putAway"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 3, 4, 3);
    layout->addWidget(icon);
    layout->addWidget(Text, 1);
    for (QWidget* widget : std::initializer_list<QWidget*>{Back, Place, On, away}) {
        layout->addWidget(widget);
    }
    connect(Back, &QToolButton::clicked, this, [this] { Turn(-1); });
    connect(On, &QToolButton::clicked, this, [this] { Turn(1); });
    connect(away, &QToolButton::clicked, this, &QWidget::hide);
    hide();
}

void RemarkBar::Add(const Remark& remark) {
    const std::size_t next = Made.All().size();
    if (Made.Add(remark)) {
        Present = isHidden() ? next : Present;
        ShowPresent();
        show();
    }
}

void RemarkBar::Clear() {
    Made = {};
    Present = 0;
    hide();
}

void RemarkBar::ShowAgain() {
    if (!Made.All().empty()) {
        ShowPresent();
        show();
    }
}

void RemarkBar::Turn(int by) {
    const std::size_t count = Made.All().size();
    Present = (Present + count + static_cast<std::size_t>(by)) % count;
    ShowPresent();
}

void RemarkBar::ShowPresent() {
    const std::vector<Remark>& all = Made.All();
    Text->setText(TextOf(all[Present]));
    Place->setText(tr("%1 of %2").arg(Present + 1).arg(all.size()));
    for (QWidget* widget : std::initializer_list<QWidget*>{Back, Place, On}) {
        widget->setVisible(all.size() > 1);
    }
}

}  // namespace quillara
