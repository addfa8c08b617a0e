#include "workbench/desktop/window/RemarkBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>
#include <algorithm>
#include <array>
#include <string>
#include <string_view>

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

constexpr std::string_view SelectOption = "--select ";
constexpr std::array<std::string_view, 11> ReadingOptions = {"--dates",   "--decimal",   "--encoding", "--keep-texts",
                                                             "--missing", "--no-header", "--numbers",  "--separator",
                                                             "--sheet",   "--skip",      "--texts"};

/// Advice on options of the command line as one that sits before a window can follow it; empty: it can't be followed.
QString AdviceOf(const Remark& remark) {
    std::string advice = remark.Advice;
    const auto isIn = [&advice](std::string_view option) { return advice.find(option) != std::string::npos; };
    if (remark.Code == "weight-unused") {
        return RemarkBar::tr("Explore > Weight... puts it in force.");
    }
    if (remark.Code == "weight-fractions") {
        return RemarkBar::tr("\"Weighted moments\" takes fractions as they are.");
    }
    if (std::ranges::any_of(ReadingOptions, isIn)) {
        return RemarkBar::tr("On the command line (quillara convert): %1").arg(QString::fromStdString(advice));
    }
    const QString shown = QString::fromStdString(advice).replace(QString::fromLatin1(SelectOption),
                                                                 RemarkBar::tr("Explore > Select cases...: "));
    return shown.contains(QStringLiteral("--")) ? QString() : shown;
}

QString TextOf(const Remark& remark) {
    return (QString::fromStdString(remark.Text) + ' ' + AdviceOf(remark)).trimmed();
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
        Present = next;
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
