#include "engine/DrillDown.h"
#include "engine/NewPlaces.h"

namespace {

/// Gives the records of a set their new places. The records move, so that what points to one stays valid.
int Reorder(CDrillDown::DrillSet& set, const std::int32_t* request, int placed) {
    CDrillDown::DrillSet reordered;
    std::int32_t placedBefore = 0;
    for (const std::int32_t* entry = request; !set.empty(); ++entry) {
        auto record = set.extract(set.begin());
        Drill& moved = record.value();
        if (*entry == NotPlaced) {
            moved.Order = static_cast<std::int16_t>(placed - placedBefore + moved.Order);
        } else {
            moved.Order = static_cast<std::int16_t>(*entry);
            ++placedBefore;
        }
        reordered.insert(std::move(record));
    }
    set.swap(reordered);
    return 1;
}

}  // namespace

int CDrillDown::ReorderDrillDowns(const std::int32_t* request, int, int placed) {
    return Reorder(*DrillDowns, request, placed);
}

int CDrillDown::ReorderDrillUps(const std::int32_t* request, int, int placed) {
    return Reorder(*DrillUps, request, placed);
}
