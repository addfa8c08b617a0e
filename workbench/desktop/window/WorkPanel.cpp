#include "workbench/desktop/window/WorkPanel.h"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace quillara {

WorkPanel::WorkPanel(QWidget* window)
    : QFrame(window),
      What(new QLabel(this)),
      Bar(new QProgressBar(this)),
      Button(new QPushButton(tr("&Cancel"), this)) {
    setObjectName(QStringLiteral("workPanel"));
    setAccessibleName(tr("Work under way"));
    setFrameShape(QFrame::StyledPanel);
    setFrameShadow(QFrame::Raised);
    setAutoFillBackground(true);
    What->setTextFormat(Qt::PlainText);
    Bar->setAccessibleName(tr("Share that is done"));
    Bar->setMinimumWidth(fontMetrics().averageCharWidth() * 48);
    Button->setToolTip(tr("Cancel (Escape)"));
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(18, 14, 18, 14);
    layout->addWidget(What, 0, 0, 1, 2);
    layout->addWidget(Bar, 1, 0);
    layout->addWidget(Button, 1, 1);
    connect(Button, &QPushButton::clicked, this, &WorkPanel::cancelled);
    hide();
}

void WorkPanel::Show(const QString& text, int total) {
    What->setText(text.trimmed());
    Bar->setRange(0, total);
    Bar->setValue(0);
    Button->setEnabled(true);
}

void WorkPanel::ShowDone(int done) {
    Bar->setValue(done);
}

void WorkPanel::ShowCancelled() {
    What->setText(tr("Cancelling..."));
    Button->setEnabled(false);
}

void WorkPanel::Rise() {
    if (isVisible()) {
        return;
    }
    adjustSize();
    move((parentWidget()->width() - width()) / 2, (parentWidget()->height() - height()) / 3);
    show();
    raise();
}

}  // namespace quillara
