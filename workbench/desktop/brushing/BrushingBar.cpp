#include "workbench/desktop/brushing/BrushingBar.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>

#include "workbench/desktop/dialogs/ElidedLabel.h"
#include "workbench/desktop/dialogs/MarkIcons.h"
#include "workbench/desktop/dialogs/ResourceTexts.h"

namespace quillara {

BrushingBar::BrushingBar(QWidget* parent)
    : QFrame(parent),
      Layout(new QHBoxLayout(this)),
      Text(new ElidedLabel(this)),
      Done(new QPushButton(tr("D&one"), this)) {
    setObjectName(QStringLiteral("brushingBar"));
    setAccessibleName(tr("Brushing"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    Layout->setContentsMargins(8, 4, 8, 4);
    Layout->addWidget(Text, 1);
    Layout->addWidget(Done);
    Done->setToolTip(tr("Ends brushing (Escape)"));
    Done->setAutoDefault(false);
    connect(Done, &QPushButton::clicked, this, &BrushingBar::left);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &BrushingBar::left);
    Tell({});
}

void BrushingBar::Offer(const std::vector<std::string>& options, const QString& stepUp) {
    qDeleteAll(Buttons);
    Buttons.clear();
    const std::vector<QString> tips = {tr("Keeps the cases of the bar that is lit (Enter, or a click on a bar)"),
                                       stepUp};
    for (std::size_t i = 0; i < options.size(); ++i) {
        const ControlCaption caption = ResourceCaption(options[i]);
        auto* button = new QPushButton(MarkIcon(caption.Mark), QString::fromStdString(caption.Text), this);
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
