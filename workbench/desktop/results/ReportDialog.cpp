#include "workbench/desktop/results/ReportDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "workbench/desktop/results/DocumentFile.h"
#include "workbench/desktop/results/Printing.h"
#include "workbench/desktop/results/ResultTitles.h"
#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/exploration/ExploredOutputs.h"

namespace quillara {

ReportDialog::ReportDialog(ExplorationModel& model, std::vector<CountedPointer<ResultDocument>> documents,
                           QWidget* parent)
    : QDialog(parent), Model(model), Documents(std::move(documents)), Choices(new QListWidget(this)) {
    setWindowTitle(tr("Report"));
    auto* label = new QLabel(tr("&Results in the report:"), this);
    label->setBuddy(Choices);
    Choices->setAccessibleName(tr("Results in the report"));
    for (const CountedPointer<ResultDocument>& document : Documents) {
        auto* item = new QListWidgetItem(IconOf(*document), TitleOf(*document), Choices);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Checked);
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(Choices, 1);
    AddButtons();
    connect(Choices, &QListWidget::itemChanged, this, [this] { ShowState(); });
    ShowState();
    resize(460, 380);
}

void ReportDialog::AddButtons() {
    auto* box = new QDialogButtonBox(QDialogButtonBox::Close, this);
    const auto print = [this](QPrinter& printer) { PrintReport(printer, OutputsForPeople(Model.Present(), Chosen())); };
    Makers = {box->addButton(tr("&Save..."), QDialogButtonBox::ActionRole),
              box->addButton(tr("&Print..."), QDialogButtonBox::ActionRole),
              box->addButton(tr("Pre&view..."), QDialogButtonBox::ActionRole)};
    connect(Makers[0], &QPushButton::clicked, this, [this] { AskWhereToSave(); });
    connect(Makers[1], &QPushButton::clicked, this, [this, print] { AskAndPrint(print, this); });
    connect(Makers[2], &QPushButton::clicked, this, [this, print] { ShowPrintPreview(print, this); });
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout()->addWidget(box);
}

std::vector<CountedPointer<ResultDocument>> ReportDialog::Chosen() const {
    std::vector<CountedPointer<ResultDocument>> chosen;
    for (std::size_t i = 0; i < Documents.size(); ++i) {
        if (Choices->item(static_cast<int>(i))->checkState() == Qt::Checked) {
            chosen.push_back(Documents[i]);
        }
    }
    return chosen;
}

void ReportDialog::ShowState() {
    const bool hasAny = !Chosen().empty();
    for (QPushButton* maker : Makers) {
        maker->setEnabled(hasAny);
    }
}

void ReportDialog::AskWhereToSave() {
    const QString path = AskForFile(this, tr("Save report"), QStringLiteral("report.html"),
                                    tr("Web page (*.html);;Workbook (*.xlsx);;Text (*.txt)"));
    if (!path.isEmpty() && SaveTo(path)) {
        accept();
    }
}

bool ReportDialog::SaveTo(const QString& path) {
    return Model.Do([&](Exploration& exploration) { SaveReport(exploration, Chosen(), path); });
}

}  // namespace quillara
