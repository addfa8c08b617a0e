#include "python/StandingNumbers.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "workbench/data/MissingCodes.h"

using quillara::Column;

void UseNumbers(quillara::Variable& variable, std::span<const double> numbers, std::shared_ptr<const void> owner) {
    if (std::ranges::any_of(numbers, [](double number) { return std::isnan(number); })) {
        EncodeNumbers(variable, {numbers.begin(), numbers.end()});
        return;
    }
    variable.MissingCode = quillara::MissingCodeFor(numbers);
    variable.Values = Column::Borrowed(numbers, std::move(owner));
}
