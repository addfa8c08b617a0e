#pragma once

#include <QAbstractTableModel>

#include "platform/CountedPointer.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/views/ShownTable.h"

namespace quillara {

/// The spreadsheet of a document for a table view, in the words in which all views show it.
class ResultTableModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// The share of the largest count of its column, from 0 to 1; nothing where there is no count.
    static constexpr int CountShareRole = Qt::UserRole;
    /// Whether the row stands for missing data.
    static constexpr int IsMissingRole = Qt::UserRole + 1;

    explicit ResultTableModel(ResultDocument& document, QObject* parent = nullptr);

    /// Shows a document, whose content is another now or which is another one. Rows and columns that stay keep their
    /// places, and so what is selected.
    void Show(ResultDocument& document);
    [[nodiscard]] const ShownTable& Words() const { return Texts; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  private:
    void FitRows(int rows);
    void FitColumns(int columns);
    void FindLargestCounts();
    [[nodiscard]] bool IsMissing(int row) const;
    [[nodiscard]] QVariant CountShare(const QModelIndex& index) const;

    CountedPointer<ResultDocument> Document;
    SpreadsheetDocument Sheet;  // as it is shown: in the midst of a command that of the document may be another already
    ShownTable Texts;
    std::vector<double> Largest;  // of the counts of each column; 0: it holds none
    int Rows = 0;
    int Columns = 0;
};

}  // namespace quillara
