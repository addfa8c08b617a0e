#pragma once

#include <QString>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// A text at a number of an axis.
struct AxisMark {
    double At = 0.0;
    QString Text{};
    bool IsKept = false;  ///< stays when labels are thinned
    double Extent = 0.0;  ///< of what it names; where labels are too close those of the largest stay
};

/// Round numbers between two bounds, both included, at most `most` (2 or more) and evenly spaced, with their texts:
/// plain up to 15 digits, with the decimals or digits that tell neighbours apart.
/// Bounds that are equal or not finite give the finite one, if any.
[[nodiscard]] std::vector<AxisMark> RoundNumbers(double low, double high, int most);

/// The same for values of any kind: numbers, round dates (days, months, years) or round times.
[[nodiscard]] std::vector<AxisMark> RoundValues(double low, double high, int most, ValueKind kind);

/// A number in its shortest form of up to `digits` significant digits; whole numbers below 10^15 stand whole, and
/// others keep two decimals.
[[nodiscard]] QString NumberText(double number, int digits = 6);

/// A value of a variable: a number, a date or a time.
[[nodiscard]] QString ValueText(double value, ValueKind kind);

/// A distance between two values: a number, days or a length of time.
[[nodiscard]] QString DistanceText(double distance, ValueKind kind);

/// A range with a little room around it; one that is empty gets a width of its own.
struct NumberRange {
    double Low = 0.0;
    double High = 1.0;
};
[[nodiscard]] NumberRange Widened(NumberRange range, double share);

}  // namespace quillara
