#include "workbench/desktop/window/TipTour.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <array>

#include "workbench/desktop/window/Preferences.h"
#include "workbench/exploration/Exploration.h"

namespace quillara {
namespace {

const char* const AwayForGood = "tourPutAway";
constexpr int Margin = 16;

struct Tip {
    const char* Title;
    const char* Text;
};

// clang-format off
constexpr auto Tips = std::to_array<Tip>({
    {QT_TRANSLATE_NOOP("quillara::TipTour", "Open your data"),
     QT_TRANSLATE_NOOP("quillara::TipTour", "Drop a file on the window, or press Ctrl+O. Statistical files keep their labels.")},
    {QT_TRANSLATE_NOOP("quillara::TipTour", "Look at everything first"),
     QT_TRANSLATE_NOOP("quillara::TipTour", "\"Explore all variables\" (Ctrl+E) shows a chart of each. Or choose a few with \"Drill variables\" (Ctrl+D).")},
    {QT_TRANSLATE_NOOP("quillara::TipTour", "Drill down"),
     QT_TRANSLATE_NOOP("quillara::TipTour", "Press the right button on a bar: only its cases are left. Or select a variable at the side and press Down. \"Brush\" does the same by clicks on bars.")},
    {QT_TRANSLATE_NOOP("quillara::TipTour", "Go back from anywhere"),
     QT_TRANSLATE_NOOP("quillara::TipTour", "The path above the results shows each step and what it leaves. A click goes back there, a cross drills up on that step alone; Ctrl+Z undoes.")},
    {QT_TRANSLATE_NOOP("quillara::TipTour", "Let results follow"),
     QT_TRANSLATE_NOOP("quillara::TipTour", "With \"Auto-update all results\" (Ctrl+U) tables and charts stay where they are and change with each step. Tile them (Ctrl+Shift+T), and you have a dashboard.")},
    {QT_TRANSLATE_NOOP("quillara::TipTour", "Find any command"),
     QT_TRANSLATE_NOOP("quillara::TipTour", "Ctrl+Shift+P lists all commands; type a part of what you want. This tour stands in the Help menu.")},
});
// clang-format on

}  // namespace

TipTour::TipTour(QWidget* parent)
    : QFrame(parent),
      Title(new QLabel(this)),
      Text(new QLabel(this)),
      Place(new QLabel(this)),
      ForGood(new QCheckBox(tr("Don't &show at the start"), this)),
      Back(new QPushButton(tr("&Back"), this)),
      On(new QPushButton(this)) {
    setObjectName(QStringLiteral("tour"));
    setAccessibleName(tr("Tips"));
    setFrameShape(QFrame::StyledPanel);
    setFrameShadow(QFrame::Raised);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Window);
    QFont bold = Title->font();
    bold.setBold(true);
    Title->setFont(bold);
    Text->setWordWrap(true);
    Text->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    Text->setMinimumHeight(fontMetrics().lineSpacing() * 2);
    auto* close = new QPushButton(tr("C&lose"), this);
    ForGood->setToolTip(tr("The Help menu shows the tips again"));
    for (QPushButton* button : {Back, On, close}) {
        button->setAccessibleDescription(tr("Tips"));
    }
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(Margin, Margin / 2, Margin, Margin / 2);
    layout->addWidget(Title, 0, 0);
    layout->addWidget(Place, 0, 1, Qt::AlignRight);
    layout->addWidget(ForGood, 0, 2, 1, 3, Qt::AlignRight);
    layout->addWidget(Text, 1, 0, 1, 2);
    layout->addWidget(Back, 1, 2, Qt::AlignBottom);
    layout->addWidget(On, 1, 3, Qt::AlignBottom);
    layout->addWidget(close, 1, 4, Qt::AlignBottom);
    layout->setColumnStretch(1, 1);
    connect(Back, &QPushButton::clicked, this, [this] { Show(Present - 1); });
    connect(On, &QPushButton::clicked, this, [this] { Show(Present + 1); });
    connect(close, &QPushButton::clicked, this, &TipTour::PutAway);
    hide();
}

void TipTour::Begin() {
    ForGood->setChecked(Preferences::Shared().Value(QString::fromLatin1(AwayForGood)).toBool());
    Show(0);
    On->setFocus();
}

void TipTour::Greet() {
    if (!Preferences::Shared().Value(QString::fromLatin1(AwayForGood)).toBool()) {
        Begin();
    }
}

void TipTour::GoOnAfter(Exploration& exploration) {
    const int followed = !exploration.Steps().empty() ? 3 : !exploration.Documents().empty() ? 2 : 1;
    if (isVisible() && Present < followed) {
        Show(followed);
    }
}

/// Who has read them all needn't see them again.
void TipTour::Show(int tip) {
    if (tip == static_cast<int>(Tips.size())) {
        ForGood->setChecked(true);
        PutAway();
        return;
    }
    Present = tip;
    const Tip& shown = Tips[static_cast<std::size_t>(tip)];
    Title->setText(tr(shown.Title));
    Text->setText(tr(shown.Text));
    Place->setText(tr("%1 of %2").arg(tip + 1).arg(Tips.size()));
    Back->setEnabled(tip > 0);
    On->setText(tip + 1 == static_cast<int>(Tips.size()) ? tr("&Done") : tr("&Next"));
    show();
}

void TipTour::PutAway() {
    Preferences::Shared().Remember(QString::fromLatin1(AwayForGood), ForGood->isChecked());
    hide();
}

void TipTour::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        PutAway();
    } else {
        QFrame::keyPressEvent(event);
    }
}

}  // namespace quillara
