#include "workbench/desktop/data/MadeTableWindow.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <utility>

#include "workbench/desktop/data/CaseGridView.h"
#include "workbench/desktop/dialogs/MarkIcons.h"

namespace quillara {

MadeTableWindow::Answers MadeTableWindow::AnswersOfUser() {
    const auto ask = [](MadeTableWindow& window) {
        const auto answer = QMessageBox::question(
            &window, tr("Unsaved table"), tr("The table \"%1\" isn't saved. Save it?").arg(window.TableName()),
            QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
        return answer == QMessageBox::Save      ? Unsaved::Save
               : answer == QMessageBox::Discard ? Unsaved::Discard
                                                : Unsaved::Keep;
    };
    const auto open = [](const QString& path) {
        QProcess::startDetached(QCoreApplication::applicationFilePath(), {path});
    };
    return {quillara::AnswersOfUser(), ask, open};
}

MadeTableWindow::MadeTableWindow(std::shared_ptr<const DataTable> table, const QString& name, Answers answers)
    : Table(std::move(table)), Name(name), Answering(std::move(answers)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("madeTable"));
    setWindowIcon(MarkIcon("e"));
    setWidget(MakeContent());
    resize(640, 420);
    ShowName();
}

QWidget* MadeTableWindow::MakeContent() {
    auto* content = new QWidget(this);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(6, 6, 6, 0);
    auto* save = new QPushButton(tr("&Save as..."), content);
    save->setObjectName(QStringLiteral("saveTable"));
    save->setToolTip(tr("Save these cases as a data file"));
    connect(save, &QPushButton::clicked, this, &MadeTableWindow::SaveAs);
    auto* open = new QPushButton(tr("Open as new &exploration"), content);
    open->setObjectName(QStringLiteral("exploreTable"));
    open->setToolTip(tr("Explore these cases in a window of their own; they are saved as a file first"));
    connect(open, &QPushButton::clicked, this, &MadeTableWindow::OpenAsExploration);
    bar->addWidget(save);
    bar->addWidget(open);
    bar->addStretch();
    auto* grid = new CaseGridView(content);
    grid->Show(Table);
    layout->addLayout(bar);
    layout->addWidget(grid);
    return content;
}

void MadeTableWindow::ShowName() {
    setWindowTitle(IsSaved() ? QFileInfo(File).fileName() : tr("%1 (not saved)").arg(Name));
}

bool MadeTableWindow::SaveAs() {
    if (IsSaving) {
        return false;
    }
    const QScopedValueRollback saving(IsSaving, true);
    QString path = Answering.Saving.ChoosePath(this, IsSaved() ? File : Name + QStringLiteral(".sav"));
    if (path.isEmpty()) {
        return false;
    }
    if (QFileInfo(path).suffix().isEmpty()) {
        path += QStringLiteral(".sav");
    }
    if (!SaveTable(this, Table, path, Answering.Saving)) {
        return false;
    }
    File = QFileInfo(path).absoluteFilePath();
    ShowName();
    return true;
}

void MadeTableWindow::OpenAsExploration() {
    if (IsSaved() || SaveAs()) {
        Answering.OpenAnew(File);
    }
}

bool MadeTableWindow::MayClose() {
    if (IsSaved()) {
        return true;
    }
    if (IsSaving) {
        return false;
    }
    switch (Answering.AskUnsaved(*this)) {
        case Unsaved::Save:
            return SaveAs();
        case Unsaved::Discard:
            return true;
        case Unsaved::Keep:
            break;
    }
    return false;
}

void MadeTableWindow::closeEvent(QCloseEvent* event) {
    if (MayClose()) {
        QMdiSubWindow::closeEvent(event);
    } else {
        event->ignore();
    }
}

}  // namespace quillara
