#pragma once

#include <span>
#include <vector>

namespace quillara {

/// The missing code of a column: the first of -9999, -99999, -999999, ... below Min - 10 x (Max - Min) - 10 of the
/// valid values that no value is nearly equal to. NaN isn't a valid value; infinities take no part in Min and Max. A
/// column without valid values gets -9999; one whose range leaves none of these codes gets a number near the lowest
/// double. Which values there are is all that counts, not how often or in which order.
[[nodiscard]] double MissingCodeFor(std::span<const double> values);

/// Chooses the missing code of a column and writes it over every NaN of `values`. Returns the code.
double EncodeMissing(std::vector<double>& values);

}  // namespace quillara
