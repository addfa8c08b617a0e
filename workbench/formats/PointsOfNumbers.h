#pragma once

#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"
#include "workbench/formats/NumbersInTexts.h"
#include "workbench/formats/TableGathering.h"

namespace quillara {

/// Numbers of a delimited text, read with decimal points, whose points may stand between thousands: "850", "1.234",
/// "2.500" in a file with decimal commas.
class PointsOfNumbers {
  public:
    /// `uses` has what the fields of some cases say, by variable. All others must outlive this.
    PointsOfNumbers(const TextSource& source, const TextLayout& layout, const FieldRules& rules, const WorkCrew& crew,
                    std::vector<PointUse> uses);

    /// Whether the points of some numbers can only stand before decimals.
    [[nodiscard]] bool HaveDecimals(const DataTable& table) const;
    /// Where the file has decimal commas, and no number with a point that can only stand before decimals, numbers with
    /// points become the texts that they were, for ReadNumbersInTexts. Of such as may as well have decimal points it
    /// gives a remark. Sets HasDecimalPoints of the surroundings where all fields show what some didn't. Throws
    /// UnexpectedBytes.
    [[nodiscard]] std::vector<Remark> Read(DataTable& table, NumberSurroundings& surroundings) const;

  private:
    [[nodiscard]] bool TakeTexts(DataTable& table) const;
    [[nodiscard]] std::vector<std::string> NamesInDoubt(const DataTable& table) const;

    const TextSource& Source;
    const TextLayout& Layout;
    const FieldRules& Rules;
    const WorkCrew& Crew;
    std::vector<PointUse> Uses;
};

}  // namespace quillara
