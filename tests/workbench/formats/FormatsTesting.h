#pragma once

#include <iomanip>
#include <sstream>
#include <string>

#include "tests/workbench/Files.h"
#include "tests/workbench/Tables.h"
#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/formats/DataFile.h"

namespace quillara {

inline std::string Show(const Variable& variable, double value) {
    if (variable.IsMissing(value)) {
        return "-";
    }
    std::ostringstream number;
    number << std::setprecision(15) << value;
    const auto texts = variable.Labels.find(value);
    const std::string label = texts == variable.Labels.end() ? "" : "=" + texts->second.Label;
    switch (variable.Kind) {
        case ValueKind::Date:
            return TextFromDays(value);
        case ValueKind::TimeOfDay:
            return TextFromSeconds(value);
        case ValueKind::DateTime:
            return TextFromDateTime(value) + label;
        case ValueKind::Text:
            return variable.Texts.at(static_cast<std::size_t>(value) - 1) + label;
        default:
            return number.str() + label;
    }
}

/// "a N 1 2.5 -; b T x y z": name, kind (Number, Date, Clock, Moment, Text) and values of each variable; "-" is
/// missing.
inline std::string Show(const DataTable& table) {
    std::string shown;
    for (const Variable& variable : table.Variables) {
        shown += (shown.empty() ? "" : "; ") + variable.Name + " " + "NDCMT"[static_cast<int>(variable.Kind)];
        for (const double value : variable.Values) {
            shown += " " + Show(variable, value);
        }
    }
    return shown;
}

/// As Show, or the text of the error that reading gives, its file as @.
inline std::string ShowFile(const std::string& path, const ReadOptions& options = {}) {
    try {
        return Show(ReadDataFile(path, options));
    } catch (const std::exception& error) {
        std::string text = error.what();
        if (const std::size_t place = text.find(path); place != std::string::npos) {
            text.replace(place, path.size(), "@");
        }
        return text;
    }
}

}  // namespace quillara
