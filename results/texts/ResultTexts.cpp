#include "results/texts/ResultTexts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

#include "engine/DisplayNames.h"
#include "engine/DrillDown.h"
#include "engine/NumberTexts.h"

using namespace drilldown;

namespace {

constexpr std::size_t LongNameSize = 128;

/// "NAME: LONG NAME", or the short name alone.
std::string LabelOf(CDrillDown& analysis, std::int16_t var, const char* separator) {
    std::string label = NameField(analysis, var);
    std::array<char, LongNameSize> longName{};
    analysis.WriteVarLongName(longName.data(), var);
    if (longName[0] != '\0') {
        label.append(separator).append(longName.data());
    }
    return label;
}

}  // namespace

std::string NameField(CDrillDown& analysis, std::int16_t var) {
    std::array<char, NameFieldSize> field{};
    analysis.getvn5(var, field.data());
    return field.data();
}

std::string ExpandedName(CDrillDown& analysis, std::int16_t var) {
    std::array<char, NameFieldSize> field{};
    return ExpandedName(analysis, var, field.data());
}

std::string ExpandedName(CDrillDown& analysis, std::int16_t var, char* field) {
    std::fill_n(field, NameFieldSize, '\0');
    analysis.getvn5(var, field);
    std::string name = TrimBlanks(field);
    analysis.ExpandPossible8CharHash(name);
    return name;
}

std::string VariableTitle(CDrillDown& analysis, int textId, std::int16_t var, const char* separator) {
    const std::string text = analysis.GetResourceString(textId);
    const std::string label = LabelOf(analysis, var, separator);
    std::string title = text.find("%s") == std::string::npos ? text + label : FillFormat(text, {label});
    // Intended: as its key, unlike the title of the brushing graph; a long title passes a line of 80 bytes whole.
    analysis.Get8CharHash(title);
    return title;
}

std::string CategoryName(const Drill& record, const Categories& category) {
    if (!category.Name.empty()) {
        return category.Name;
    }
    if (record.VarType == ContinuousVariable) {
        return SixDecimals(category.Lower) + "<x<=" + SixDecimals(category.Upper);
    }
    return SixDecimals(category.Upper);
}

std::string SixDecimals(double value) {
    std::array<char, 400> text{};  // the largest double has 309 digits before the point
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, 6);
    return {text.data(), end.ptr};
}

std::string ShortDecimals(double value) {
    std::string text = SixDecimals(value);
    text.erase(text.find_last_not_of('0') + 1);
    text.erase(text.find_last_not_of('.') + 1);
    return text;
}

std::string FillFormat(const std::string& format, std::initializer_list<std::string> values) {
    std::string text;
    std::size_t from = 0;
    for (const std::string& value : values) {
        const std::size_t mark = format.find('%', from);
        if (mark == std::string::npos) {
            break;
        }
        text.append(format, from, mark - from).append(value);
        from = mark + 2;
    }
    return text.append(format, std::min(from, format.size()), std::string::npos);
}

bool FindLongLabel(CDrillDown& analysis, const Drill& record, const Categories& category, char* buffer) {
    std::fill_n(buffer, NameFieldSize, '\0');
    return analysis.RetrieveLongTextLabelAsHashedString(buffer, record.VarNo - 1, category.Upper) != 0;
}
