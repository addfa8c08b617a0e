#pragma once

#include <QAbstractTableModel>
#include <memory>
#include <optional>

#include "workbench/data/DataTable.h"
#include "workbench/data/RowSet.h"
#include "workbench/desktop/data/BackgroundWork.h"
#include "workbench/exploration/CaseArrangement.h"
#include "workbench/exploration/CaseTexts.h"

namespace quillara {

/// The cases of a table as rows of a grid, the variables as its columns. Nothing of the table is copied. A large table
/// is put into another order beside the thread of the windows; until that is done it shows the present one.
class CaseGridModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    explicit CaseGridModel(QObject* parent = nullptr);

    /// Shows a table in its own order; null: none.
    void Show(std::shared_ptr<const DataTable> table);
    [[nodiscard]] const std::shared_ptr<const DataTable>& Table() const { return Shown; }
    /// The cases that the steps leave, which are marked, and all that there is when it is filtered; nothing: all.
    void MarkRemaining(std::optional<RowSet> remaining);
    [[nodiscard]] bool HasMarks() const { return Remaining != nullptr; }
    void SetFiltered(bool isFiltered);
    void SetWriting(ValueWriting writing);
    [[nodiscard]] ValueWriting Writing() const { return HowWritten; }
    [[nodiscard]] const CaseArrangement& Arrangement() const { return *Arranged; }
    /// The same for who works with it beside the thread of the windows; it doesn't change.
    [[nodiscard]] std::shared_ptr<const CaseArrangement> SharedArrangement() const { return Arranged; }
    [[nodiscard]] const CaseOrder& PresentOrder() const { return Order; }
    [[nodiscard]] BackgroundWork& Arranging() { return *Work; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// By the values of a variable; -1: in the order of the table.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

  private:
    void Arrange();
    void Take(CaseArrangement arranged, const CaseOrder& order);
    [[nodiscard]] bool IsMarked(std::size_t row) const;
    [[nodiscard]] QVariant ColorOf(std::size_t row, bool isMissing, int role) const;
    [[nodiscard]] QString TipOf(const Variable& variable, std::size_t row) const;
    [[nodiscard]] QVariant HeaderOfCase(int section, int role) const;
    [[nodiscard]] QVariant HeaderOfVariable(int section, int role) const;

    std::shared_ptr<const DataTable> Shown;
    std::shared_ptr<const CaseArrangement> Arranged = std::make_shared<CaseArrangement>();
    std::shared_ptr<const RowSet> Remaining;  // null: all
    CaseOrder Order;  // in which they stand
    CaseOrder Wanted;  // in which they are to stand; the same when nothing runs
    ValueWriting HowWritten = ValueWriting::Labels;
    bool IsFiltered = false;
    BackgroundWork* Work;
};

}  // namespace quillara
