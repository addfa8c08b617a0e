#include "workbench/desktop/results/TableResultView.h"

#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace quillara {
namespace {

QString TextOf(const SpreadsheetCell& cell) {
    if (const auto* number = std::get_if<double>(&cell)) {
        return QLocale().toString(*number, 'g', 10);
    }
    const auto* text = std::get_if<std::string>(&cell);
    return text == nullptr ? QString() : QString::fromStdString(*text);
}

}  // namespace

TableResultView::TableResultView(ResultDocument& document, QWidget* parent)
    : DocumentView(parent),
      Document(CountedPointer<ResultDocument>::Share(&document)),
      Title(new QLabel(this)),
      Table(new QTableWidget(this)) {
    Table->setEditTriggers(QTableWidget::NoEditTriggers);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Title);
    layout->addWidget(Table);
    Refresh();
}

void TableResultView::Refresh() {
    const SpreadsheetDocument* sheet = Document->Spreadsheet();
    if (sheet == nullptr) {
        return;
    }
    QStringList title;
    for (const std::string& line : sheet->Title) {
        title.append(QString::fromStdString(line));
    }
    Title->setText(title.join(QLatin1Char('\n')));
    Table->setColumnCount(static_cast<int>(sheet->Columns.size()));
    Table->setRowCount(static_cast<int>(sheet->Rows.size()));
    for (std::size_t column = 0; column < sheet->Columns.size(); ++column) {
        const QString name = QString::fromStdString(sheet->Columns[column].Name);
        Table->setHorizontalHeaderItem(static_cast<int>(column), new QTableWidgetItem(name));
    }
    for (std::size_t row = 0; row < sheet->Rows.size(); ++row) {
        const QString name = QString::fromStdString(sheet->Rows[row].NameForPeople());
        Table->setVerticalHeaderItem(static_cast<int>(row), new QTableWidgetItem(name));
        for (std::size_t column = 0; column < sheet->Rows[row].Cells.size(); ++column) {
            Table->setItem(static_cast<int>(row), static_cast<int>(column),
                           new QTableWidgetItem(TextOf(sheet->Rows[row].Cells[column])));
        }
    }
}

}  // namespace quillara
