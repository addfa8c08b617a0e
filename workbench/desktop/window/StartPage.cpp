#include "workbench/desktop/window/StartPage.h"

#include <QCommandLinkButton>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QFontMetrics>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "workbench/desktop/window/ViewArea.h"

namespace quillara {
namespace {

constexpr int Widest = 84;  // of the page's content, in mean widths of a letter

QLabel* Heading(const QString& text, double size, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(true);
    label->setFont(font);
    return label;
}

/// A button that says what it does in two lines.
QCommandLinkButton* Link(const QString& text, const QString& more, const char* name, QWidget* parent) {
    auto* button = new QCommandLinkButton(text, more, parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setAccessibleName(text);
    button->setToolTip(more);
    return button;
}

/// What one of its widgets does may run yet.
void Empty(QVBoxLayout& rows) {
    while (QLayoutItem* item = rows.takeAt(0)) {
        if (item->widget() != nullptr) {
            item->widget()->hide();
            item->widget()->deleteLater();
        }
        delete item;
    }
}

}  // namespace

StartPage::StartPage(QWidget* parent)
    : QWidget(parent),
      Left(new QWidget(this)),
      LeftRows(new QVBoxLayout(Left)),
      Recent(new QWidget(this)),
      Rows(new QVBoxLayout(Recent)) {
    setObjectName(QStringLiteral("startPage"));
    auto* content = new QWidget(this);
    content->setMaximumWidth(fontMetrics().averageCharWidth() * Widest);
    auto* column = new QVBoxLayout(content);
    column->setSpacing(8);
    column->addWidget(Heading(tr("Explore your data, step by step"), 1.8, content));
    auto* lines =
        new QLabel(tr("1.  Open a file of data, or drop one on this window.\n"
                      "2.  Choose \"Explore all variables\", or just those that you are curious about.\n"
                      "3.  Keep the cases of a bar with its right button, or press Down; everything follows."),
                   content);
    lines->setWordWrap(true);
    column->addWidget(lines);
    column->addSpacing(8);
    auto* open =
        Link(tr("&Open a file..."), tr("Statistical files, delimited text, workbooks and more"), "openFile", content);
    auto* sample =
        Link(tr("Try the sa&mple survey"), tr("2000 people: their work, income and reading"), "openSample", content);
    sample->setVisible(!Sample().isEmpty());
    LeftRows->setContentsMargins(0, 0, 0, 0);
    column->addWidget(Left);
    Left->hide();
    column->addWidget(open);
    column->addWidget(sample);
    Rows->setContentsMargins(0, 8, 0, 0);
    column->addWidget(Recent);
    auto* around = new QGridLayout(&ScrollingPage());
    around->addWidget(content, 1, 1);
    around->setColumnStretch(0, 1);
    around->setColumnStretch(1, 8);
    around->setColumnStretch(2, 1);
    around->setRowStretch(0, 1);
    around->setRowStretch(2, 2);
    connect(open, &QPushButton::clicked, this, &StartPage::openAsked);
    connect(sample, &QPushButton::clicked, this, [this] { emit fileChosen(Sample()); });
    ShowRecent({});
}

/// All of it can be reached in small windows.
QWidget& StartPage::ScrollingPage() {
    auto* page = new QWidget;
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(new ViewArea(page, this));
    return *page;
}

void StartPage::ShowLeft(const std::vector<LeftRow>& rows) {
    Empty(*LeftRows);
    Left->setVisible(!rows.empty());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        AddLeft(rows[row], row);
    }
}

void StartPage::AddLeft(const LeftRow& left, std::size_t row) {
    auto* line = new QWidget(Left);
    const QString file = QString(left.File).replace('&', QStringLiteral("&&"));
    auto* goOn =
        Link(row == 0 ? tr("&Go on with %1").arg(file) : tr("Go on with %1").arg(file), left.State, "goOn", line);
    auto* forget = new QPushButton(row == 0 ? tr("Forge&t it") : tr("Forget it"), line);
    forget->setObjectName(QStringLiteral("forgetLeft"));
    forget->setToolTip(tr("Don't offer this session again"));
    auto* places = new QHBoxLayout(line);
    places->setContentsMargins(0, 0, 0, 0);
    places->addWidget(goOn, 1);
    places->addWidget(forget);
    LeftRows->addWidget(line);
    connect(goOn, &QPushButton::clicked, this, [this, row] { emit restoreAsked(row); });
    connect(forget, &QPushButton::clicked, this, [this, row] { emit forgetAsked(row); });
}

void StartPage::ShowRecent(const QStringList& files) {
    Empty(*Rows);
    Recent->setVisible(!files.isEmpty());
    if (files.isEmpty()) {
        return;
    }
    Rows->addWidget(Heading(tr("Recent files"), 1.15, Recent));
    for (const QString& path : files) {
        const QFileInfo file(path);
        const QString shown = file.fileName() + QStringLiteral("    ") + QDir::toNativeSeparators(file.path());
        auto* row = new QPushButton(Recent);
        row->setText(row->fontMetrics()
                         .elidedText(shown, Qt::ElideMiddle, fontMetrics().averageCharWidth() * (Widest - 8))
                         .replace('&', QStringLiteral("&&")));
        row->setObjectName(QStringLiteral("recentFile"));
        row->setToolTip(path);
        row->setAccessibleName(tr("Open %1").arg(path));
        row->setFlat(true);
        row->setCursor(Qt::PointingHandCursor);
        row->setStyleSheet(QStringLiteral("text-align: left; padding: 3px 8px;"));
        connect(row, &QPushButton::clicked, this, [this, path] { emit fileChosen(path); });
        Rows->addWidget(row);
    }
}

QString StartPage::Sample() {
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char* folder : {"../share/doc/quillara/samples", "../../../samples"}) {
        const QFileInfo file(program, QString::fromLatin1(folder) + QStringLiteral("/survey.sav"));
        if (file.isFile()) {
            return file.canonicalFilePath();
        }
    }
    return {};
}

}  // namespace quillara
