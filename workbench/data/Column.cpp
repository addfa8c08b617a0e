#include "workbench/data/Column.h"

#include <algorithm>
#include <utility>

namespace quillara {

Column::Column(std::vector<double> values) {
    auto owner = std::make_shared<const std::vector<double>>(std::move(values));
    Numbers = owner->data();
    Count = owner->size();
    Owner = std::move(owner);
}

Column Column::Borrowed(std::span<const double> values, std::shared_ptr<const void> owner) {
    Column column;
    column.Owner = std::move(owner);
    column.Numbers = values.data();
    column.Count = values.size();
    return column;
}

std::span<const double> Column::Run(std::size_t first, std::span<double> room) const {
    return {Numbers + first, room.size()};
}

bool operator==(const Column& left, const Column& right) {
    return std::ranges::equal(left, right);
}

}  // namespace quillara
