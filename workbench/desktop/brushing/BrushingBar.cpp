#include "workbench/desktop/brushing/BrushingBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>

#include "workbench/exploration/ControlCaption.h"

namespace quillara {

BrushingBar::BrushingBar(QWidget* parent)
    : QFrame(parent), Layout(new QHBoxLayout(this)), Text(new QLabel(this)), Done(new QPushButton(tr("D&one"), this)) {
    setObjectName(QStringLiteral("brushingBar"));
    setAccessibleName(tr("Brushing"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    Layout->setContentsMargins(8, 4, 8, 4);
    Text->setTextFormat(Qt::PlainText);
    Text->setMinimumWidth(60);
    Layout->addWidget(Text, 1);
    Layout->addWidget(Done);
    Done->setToolTip(tr("Ends brushing (Escape)"));
    Done->setAutoDefault(false);
    connect(Done, &QPushButton::clicked, this, &BrushingBar::left);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &BrushingBar::left);
    Tell({});
}

void BrushingBar::Offer(const std::vector<std::string>& options) {
    qDeleteAll(Buttons);
    Buttons.clear();
    const std::vector<QString> tips = {tr("Keeps the cases of the bar that is lit (Enter, or a click on a bar)"),
                                       tr("Undoes the step that is selected in the list of steps (U)")};
    for (std::size_t i = 0; i < options.size(); ++i) {
        auto* button = new QPushButton(QString::fromStdString(CaptionOf(options[i]).Text), this);
        button->setIcon(style()->standardIcon(i == 0 ? QStyle::SP_ArrowDown : QStyle::SP_ArrowUp));
        button->setAutoDefault(false);
        button->setToolTip(i < tips.size() ? tips[i] : QString());
        connect(button, &QPushButton::clicked, this, [this, i] { emit optionTaken(static_cast<int>(i)); });
        Layout->insertWidget(1 + static_cast<int>(i), button);
        Buttons.push_back(button);
    }
}

void BrushingBar::Tell(const QString& bar) {
    Text->setText(bar.isEmpty() ? tr("Click a bar, or choose one with the arrow keys.") : bar);
    Text->setToolTip(bar);
    if (!Buttons.empty()) {
        Buttons.front()->setEnabled(!bar.isEmpty());
    }
}

}  // namespace quillara
