#pragma once

#include <QString>
#include <vector>

#include "workbench/documents/GraphDocument.h"

namespace quillara {

/// The counts of a 3D histogram, with the texts of its sides.
class CountTable {
  public:
    explicit CountTable(const Histogram3DPlot& plot);

    [[nodiscard]] std::size_t Columns() const { return NamesOfColumns.size(); }
    [[nodiscard]] std::size_t Rows() const { return NamesOfRows.size(); }
    [[nodiscard]] const std::vector<QString>& ColumnNames() const { return NamesOfColumns; }
    [[nodiscard]] const std::vector<QString>& RowNames() const { return NamesOfRows; }
    /// The variable of a side, with its long name if there is one.
    [[nodiscard]] const QString& ColumnCaption() const { return CaptionOfColumns; }
    [[nodiscard]] const QString& RowCaption() const { return CaptionOfRows; }
    /// What is counted.
    [[nodiscard]] const QString& CountCaption() const { return CaptionOfCounts; }

    [[nodiscard]] std::size_t PlaceOf(std::size_t column, std::size_t row) const { return row * Columns() + column; }
    [[nodiscard]] double CountOf(std::size_t column, std::size_t row) const;
    /// The highest count; 0 when there is none.
    [[nodiscard]] double Highest() const { return HighestCount; }
    [[nodiscard]] const std::vector<double>& AllCounts() const { return Counts; }
    [[nodiscard]] QString TipOf(std::size_t column, std::size_t row) const;

  private:
    std::vector<QString> NamesOfColumns;
    std::vector<QString> NamesOfRows;
    QString CaptionOfColumns;
    QString CaptionOfRows;
    QString CaptionOfCounts;
    std::vector<double> Counts;
    double HighestCount = 0.0;
    double Total = 0.0;
};

}  // namespace quillara
