#include "workbench/desktop/results/ResultTableModel.h"

#include <QFont>
#include <algorithm>

namespace quillara {
namespace {

constexpr const char* CountName = "Count";

const double* NumberAt(const SpreadsheetDocument& sheet, int row, int column) {
    const auto& cells = sheet.Rows[static_cast<std::size_t>(row)].Cells;
    const auto place = static_cast<std::size_t>(column);
    return place < cells.size() ? std::get_if<double>(&cells[place]) : nullptr;
}

QString Lines(const std::vector<std::string>& lines) {
    QStringList texts;
    for (const std::string& line : lines) {
        texts.append(QString::fromStdString(line));
    }
    return texts.join(u'\n');
}

QFont ItalicFont() {
    QFont font;
    font.setItalic(true);
    return font;
}

}  // namespace

ResultTableModel::ResultTableModel(ResultDocument& document, QObject* parent) : QAbstractTableModel(parent) {
    Show(document);
}

void ResultTableModel::Show(ResultDocument& document) {
    Document = CountedPointer<ResultDocument>::Share(&document);
    const SpreadsheetDocument* sheet = Document->Spreadsheet();
    if (sheet == nullptr) {
        return;
    }
    const ShownTable fresh = ShowTable(*sheet);
    const int rows = static_cast<int>(fresh.Rows.size());
    const int columns = static_cast<int>(fresh.Columns.size());
    FitRows(std::min(Rows, rows));
    FitColumns(std::min(Columns, columns));
    Sheet = *sheet;
    Texts = fresh;
    FindLargestCounts();
    FitRows(rows);
    FitColumns(columns);
    if (rows > 0 && columns > 0) {
        emit dataChanged(index(0, 0), index(rows - 1, columns - 1));
        emit headerDataChanged(Qt::Horizontal, 0, columns - 1);
        emit headerDataChanged(Qt::Vertical, 0, rows - 1);
    }
}

void ResultTableModel::FitRows(int rows) {
    if (rows < Rows) {
        beginRemoveRows({}, rows, Rows - 1);
        Rows = rows;
        endRemoveRows();
    } else if (rows > Rows) {
        beginInsertRows({}, Rows, rows - 1);
        Rows = rows;
        endInsertRows();
    }
}

void ResultTableModel::FitColumns(int columns) {
    if (columns < Columns) {
        beginRemoveColumns({}, columns, Columns - 1);
        Columns = columns;
        endRemoveColumns();
    } else if (columns > Columns) {
        beginInsertColumns({}, Columns, columns - 1);
        Columns = columns;
        endInsertColumns();
    }
}

void ResultTableModel::FindLargestCounts() {
    Largest.assign(Sheet.Columns.size(), 0.0);
    for (std::size_t column = 0; column < Sheet.Columns.size(); ++column) {
        for (int row = 0; Sheet.Columns[column].Name == CountName && row < static_cast<int>(Sheet.Rows.size()); ++row) {
            const double* count = NumberAt(Sheet, row, static_cast<int>(column));
            Largest[column] = std::max(Largest[column], count == nullptr ? 0.0 : *count);
        }
    }
}

int ResultTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Rows;
}

int ResultTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Columns;
}

bool ResultTableModel::IsMissing(int row) const {
    return Sheet.Rows[static_cast<std::size_t>(row)].IsMissing;
}

QVariant ResultTableModel::CountShare(const QModelIndex& index) const {
    const double largest = Largest[static_cast<std::size_t>(index.column())];
    const double* count = NumberAt(Sheet, index.row(), index.column());
    return largest > 0.0 && count != nullptr ? QVariant(*count / largest) : QVariant();
}

QVariant ResultTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const auto column = static_cast<std::size_t>(index.column());
    switch (role) {
        case Qt::DisplayRole:
            return QString::fromStdString(Texts.Rows[static_cast<std::size_t>(index.row())].Cells[column].Text);
        case Qt::TextAlignmentRole:
            return QVariant((Texts.Columns[column].HoldsTexts ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
        case Qt::FontRole:
            return IsMissing(index.row()) ? QVariant(ItalicFont()) : QVariant();
        case CountShareRole:
            return CountShare(index);
        case IsMissingRole:
            return IsMissing(index.row());
        default:
            return {};
    }
}

QVariant ResultTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const auto place = static_cast<std::size_t>(section);
    const bool isRow = orientation == Qt::Vertical;
    const bool isLeft = isRow || Texts.Columns[place].HoldsTexts;
    switch (role) {
        case Qt::ToolTipRole:
        case Qt::DisplayRole:
            return isRow ? QString::fromStdString(Texts.Rows[place].Name) : Lines(Texts.Columns[place].NameLines);
        case Qt::TextAlignmentRole:
            return QVariant((isLeft ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
        case Qt::FontRole:
            return isRow && IsMissing(section) ? QVariant(ItalicFont()) : QVariant();
        default:
            return {};
    }
}

}  // namespace quillara
