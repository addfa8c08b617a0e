#pragma once

namespace quillara {

/// The probability that chance alone gives a chi-square of so many degrees of freedom as large as this or larger. NaN
/// where the value isn't finite or there is no degree.
[[nodiscard]] double ChanceOfChiSquare(double value, int freedom);

}  // namespace quillara
