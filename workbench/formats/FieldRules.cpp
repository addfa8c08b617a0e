#include "workbench/formats/FieldRules.h"

#include <algorithm>

#include "workbench/data/DateTimes.h"
#include "workbench/formats/Encoding.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

bool IsAscii(std::string_view text) {
    return std::ranges::none_of(text, [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
}

}  // namespace

std::vector<std::string> DefaultMissingTexts() {
    return {"NA", "N/A", "NaN", "nan", "null", "NULL", "None", ".", "?"};
}

FieldRules::FieldRules(const ReadOptions& options)
    : Point(options.Decimal.value_or('.')), MissingTexts(options.MissingTexts.value_or(DefaultMissingTexts())) {
    MissingTextsMayBeValues = std::ranges::any_of(MissingTexts, [&](const std::string& text) {
        double value = 0;
        return ReadDecimal(text, Point, value) != DecimalOutcome::NoNumber || SecondsFromDateTime(text);
    });
}

std::string FieldRules::TextOf(std::string_view field) const {
    return WithoutKeyMarks(FieldsAreWindows1252 ? TextOfWindows1252(field) : std::string(field));
}

bool FieldRules::StandsAsItIs(std::string_view field) const {
    return (!FieldsAreWindows1252 || IsAscii(field)) && field.find(KeyMark) == std::string::npos;
}

bool FieldRules::IsMissing(std::string_view field) const {
    return field.empty() ||
           (StandsAsItIs(field) ? std::ranges::find(MissingTexts, field) != MissingTexts.end()
                                : std::ranges::find(MissingTexts, TextOf(field)) != MissingTexts.end());
}

}  // namespace quillara
