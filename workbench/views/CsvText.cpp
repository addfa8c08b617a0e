#include "workbench/views/CsvText.h"

#include "workbench/formats/DelimitedText.h"
#include "workbench/numbers/ExactNumbers.h"
#include "workbench/views/ShownText.h"

namespace quillara {

std::string CsvText(const CsvRecord& record) {
    const bool looksEmpty = record.size() == 1 && record.front().empty();
    if (looksEmpty) {
        return "\"\"\n";
    }
    std::string text;
    for (const std::string& field : record) {
        text += &field == &record.front() ? "" : ",";
        text += QuotedField(field);
    }
    return text + '\n';
}

std::string CsvCell(const SpreadsheetCell& cell) {
    if (const auto* text = std::get_if<std::string>(&cell)) {
        return UnsteeringText(*text);
    }
    const auto* number = std::get_if<double>(&cell);
    return number == nullptr ? std::string() : ExactNumberText(*number);
}

}  // namespace quillara
