#include "workbench/data/WrittenValue.h"

#include <string>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {

std::optional<double> TimeFromText(std::string_view text) {
    const std::optional<double> seconds = SecondsFromText(text);
    return seconds ? seconds : SecondsFromText(std::string(text) + ":00");
}

std::optional<WrittenValue> ReadWrittenValue(std::string_view text) {
    if (const std::optional<double> day = DaysFromText(text)) {
        return WrittenValue{*day, ValueKind::Date};
    }
    if (const std::optional<WrittenDateTime> moment = ReadDateTime(text)) {
        return WrittenValue{moment->Seconds, ValueKind::DateTime};
    }
    if (const std::optional<double> time = TimeFromText(text)) {
        return WrittenValue{*time, ValueKind::TimeOfDay};
    }
    const std::optional<double> number = DecimalNumber(text);
    return number ? std::optional(WrittenValue{*number, ValueKind::Number}) : std::nullopt;
}

}  // namespace quillara
