#include "workbench/formats/FieldRows.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/formats/DelimitedText.h"

namespace quillara {
namespace {

constexpr char BetweenFields = ',';

/// Whether a field stands for itself without quotes.
bool IsPlain(std::string_view field) {
    constexpr std::string_view special = "\",\r\n \t";
    return field.find_first_of(special) == std::string_view::npos;
}

}  // namespace

void FieldRows::Add(std::string_view field) {
    if (field.find('\0') != std::string_view::npos) {
        throw DataError("\"" + Origin + "\" can't be read: row " + std::to_string(Above + Ends.size() + 1) +
                        " has a text with a null byte.");
    }
    if (Fields == 0) {
        AddPassedRows();
    } else {
        Text += BetweenFields;
    }
    ++Fields;
    if (IsPlain(field)) {
        Text += field;
    } else {
        Text += QuotedField(std::string(field));
    }
}

void FieldRows::AddNumber(double number) {
    if (std::isinf(number)) {
        throw DataError("\"" + Origin + "\" can't be read: row " + std::to_string(Above + Ends.size() + 1) +
                        " has an infinite number.");
    }
    char digits[32];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, number);
    Add(std::isnan(number) ? std::string_view() : std::string_view(digits, end.ptr));
}

void FieldRows::AddAt(std::size_t column, std::string_view field) {
    if (column < Fields) {
        throw DataError("\"" + Origin + "\" can't be read; it is damaged: row " +
                        std::to_string(Above + Ends.size() + 1) + " has two cells in one column.");
    }
    while (Fields < column) {
        Add({});
    }
    Add(field);
}

void FieldRows::EndRow() {
    if (Fields == 0) {
        ++Passed;
        return;
    }
    AddEnd();
    Fields = 0;
}

void FieldRows::AddPassedRows() {
    if (Ends.empty()) {
        Text.assign(Passed, '\n');
        Above = Passed;
        Passed = 0;
    }
    for (; Passed > 0; --Passed) {
        AddEnd();
    }
}

void FieldRows::AddEnd() {
    Monitor.Advance(Fields + 1);
    Text += '\n';
    if (Text.size() > Text.capacity() / 2) {
        Monitor.RequireMemory(Text.capacity());  // the text may be moved to room of twice the size
    }
    Ends.push_back({Text.size(), Fields});
    Widest = std::max(Widest, Fields);
    Narrowest = std::min(Narrowest, Fields);
}

std::string FieldRows::Widened() const {
    std::size_t bytes = 0;
    for (const RowEnd& end : Ends) {
        bytes += Widest - std::max(end.Fields, std::size_t{1});
    }
    Monitor.RequireMemory(Text.size() + bytes);
    std::string widened;
    widened.reserve(Text.size() + bytes);
    widened.assign(Above, '\n');
    std::size_t begin = Above;
    for (const RowEnd& end : Ends) {
        widened.append(Text, begin, end.Place - 1 - begin);
        widened.append(Widest - std::max(end.Fields, std::size_t{1}), BetweenFields) += '\n';
        begin = end.Place;
    }
    return widened;
}

std::string FieldRows::Take() {
    return Widest == Narrowest ? std::move(Text) : Widened();
}

}  // namespace quillara
