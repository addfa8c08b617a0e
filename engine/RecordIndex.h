#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/DrillDown.h"

namespace drilldown {

/// The records of a set by the number of their variable, as CDrillDown::FindRecord finds them: of several with one
/// number the first. Good for as long as no record enters or leaves the set; for loops over many variables, which by
/// walks would take the square of their number.
class RecordIndex {
  public:
    explicit RecordIndex(const CDrillDown::DrillSet& set) {
        for (const Drill& record : set) {
            const auto place = static_cast<std::size_t>(record.VarNo);
            if (place >= Records.size()) {
                Records.resize(place + 1);
            }
            if (Records[place] == nullptr) {
                Records[place] = &Editable(record);
            }
        }
    }

    /// Null when there is none.
    [[nodiscard]] Drill* Find(std::int16_t var) const {
        const auto place = static_cast<std::size_t>(var);
        return place < Records.size() ? Records[place] : nullptr;
    }

  private:
    std::vector<Drill*> Records;
};

}  // namespace drilldown
