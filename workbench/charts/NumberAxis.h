#pragma once

#include <QString>
#include <vector>

namespace quillara {

/// A text at a number of an axis.
struct AxisMark {
    double At = 0.0;
    QString Text;
    bool IsKept = false;  ///< stays when labels are thinned
};

/// Round numbers between two bounds, both included, at most `most` (2 or more) and evenly spaced, with their texts.
/// Bounds that are equal or not finite give the finite one, if any.
[[nodiscard]] std::vector<AxisMark> RoundNumbers(double low, double high, int most);

/// A number in its shortest form of up to `digits` significant digits.
[[nodiscard]] QString NumberText(double number, int digits = 6);

/// A range with a little room around it; one that is empty gets a width of its own.
struct NumberRange {
    double Low = 0.0;
    double High = 1.0;
};
[[nodiscard]] NumberRange Widened(NumberRange range, double share);

}  // namespace quillara
