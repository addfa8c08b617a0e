#pragma once

#include <string>
#include <vector>

namespace quillara {

/// How the numbers of one column are shown to people: all with the same number of decimals, so that their points
/// stand below each other, save those that such a form would show as nothing or with digits that mean nothing.
class NumberFormat {
  public:
    /// Takes as many decimals as the numbers need, but no more than `mostDecimals`.
    NumberFormat(const std::vector<double>& numbers, int mostDecimals);

    /// Empty for a number that isn't finite.
    [[nodiscard]] std::string TextOf(double number) const;

  private:
    int SmallDigits;  ///< significant digits of a number that is too small for the common form
    int Decimals = 0;
};

}  // namespace quillara
