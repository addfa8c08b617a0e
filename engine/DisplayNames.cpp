#include "engine/DisplayNames.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "engine/NumberTexts.h"
#include "engine/Rounding.h"

using namespace drilldown;

namespace {

constexpr short NameFieldWidth = 8;
constexpr unsigned char WholeNumberText = 6;

/// Whole values are labelled and shown as whole numbers up to this magnitude.
constexpr double LargestWholeValue = 2147483648.0;

bool IsWholeWithinRange(double value, double rounded) {
    return NearlyEqual(value, rounded) && !ClearlyBelow(LargestWholeValue, std::fabs(value));
}

}  // namespace

int CDrillDown::ValueToLabelText(std::int16_t var, double value, int* position, char* buffer) {
    const double rounded = RoundHalfAwayFromZero(value);
    char* text = buffer + *position;
    if (!IsWholeWithinRange(value, rounded)) {
        RealToFieldText(value, NumberFieldText, text);
        return 0;
    }
    const auto single = static_cast<float>(value);
    if (vvlcod(0, var, text, &single) == 0) {
        *position += NameFieldWidth;
        return 1;
    }
    // The rounded value: 2.9999999999999996 is named 3.
    if (IsSpecialFormatVariable(var) != 0) {
        WriteSpecialFormatVariable(var, rounded, text, NameFieldWidth);
        *position += NameFieldWidth;
    } else {
        *position += IntToText(static_cast<long>(rounded), WholeNumberText, NameFieldWidth, text);
    }
    return 0;
}

bool drilldown::NameCategories(CDrillDown& analysis, const Drill& record) {
    HostBuffer<char> buffer(analysis, NameFieldSize);
    if (!buffer) {
        return false;
    }
    for (const Categories& category : record.CategorySet) {
        std::fill_n(buffer.data(), NameFieldSize, '\0');
        int position = 0;
        const bool labelled = analysis.ValueToLabelText(record.VarNo, category.Upper, &position, buffer.data()) == 1;
        std::string name = buffer.data();
        if (labelled) {
            name = TrimBlanks(name);
            analysis.ExpandPossible8CharHash(name);
            analysis.StripFormatting(name);
        }
        Editable(category).Name = std::move(name);
    }
    return true;
}

int CDrillDown::SetCategoriesName(std::int16_t var) {
    const Drill* record = FindRecord(DrillDowns, var);
    return record == nullptr || NameCategories(*this, *record) ? 1 : 0;
}

int CDrillDown::SetReviewCategoriesName(std::int16_t var) {
    const Drill* record = FindRecord(Reviews, var);
    return record == nullptr || NameCategories(*this, *record) ? 1 : 0;
}

std::string drilldown::DisplayName(CDrillDown& analysis, std::int16_t var, char* field) {
    std::fill_n(field, NameFieldSize, '\0');
    analysis.getvn5(var, field);
    std::string name = TrimBlanks(field);
    analysis.ExpandPossible8CharHash(name);
    analysis.StripFormatting(name);
    return name;
}

std::string CDrillDown::VariableDisplayName(std::int16_t var) {
    std::array<char, NameFieldSize> field{};
    return DisplayName(*this, var, field.data());
}
