#include "python/StandingNumbers.h"

#include <algorithm>
#include <cmath>
#include <utility>

using quillara::Column;

void UseNumbers(quillara::Variable& variable, std::span<const double> numbers, std::shared_ptr<const void> owner) {
    EncodeNumbers(variable, {numbers.begin(), numbers.end()});  // for the missing code
    if (std::ranges::none_of(numbers, [](double number) { return std::isnan(number); })) {
        variable.Values = Column::Borrowed(numbers, std::move(owner));
    }
}
