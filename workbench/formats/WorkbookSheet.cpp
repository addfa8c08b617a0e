#include "workbench/formats/WorkbookSheet.h"

#include <charconv>
#include <optional>
#include <utility>

#include "workbench/formats/XmlText.h"

namespace quillara {
namespace {

constexpr std::size_t MostColumns = 16384;
constexpr std::size_t MostRows = 1048576;
constexpr std::size_t LettersInAlphabet = 26;

template <typename Number>
std::optional<Number> NumberOf(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// The column of a cell "AB12", from 0; MostColumns for none.
std::size_t ColumnOf(std::string_view cell) {
    std::size_t column = 0;
    for (const char letter : cell) {
        if (letter < 'A' || letter > 'Z' || column > MostColumns) {
            break;
        }
        column = LettersInAlphabet * column + static_cast<std::size_t>(letter - 'A') + 1;
    }
    return column == 0 || column > MostColumns ? MostColumns : column - 1;
}

class SheetTaker : public XmlTaker {
  public:
    SheetTaker(const ZipArchive& archive, const WorkbookParts& parts, FieldRows& rows)
        : Archive(archive), Parts(parts), Rows(rows) {}

    void Begin(std::string_view element, const XmlAttributes& attributes) override {
        if (element == "c") {
            BeginCell(attributes);
        } else if (element == "v") {
            IsValue = IsCell;
        } else if (element == "t") {
            IsValue = IsCell && Type == "inlineStr" && !IsPronunciation;
        } else if (element == "rPh") {
            IsPronunciation = true;
        } else if (element == "row") {
            BeginRow(attributes["r"]);
        }
    }

    void End(std::string_view element) override {
        IsValue = false;
        if (element == "c" && IsCell) {
            TakeCell();
            IsCell = false;
        } else if (element == "rPh") {
            IsPronunciation = false;
        } else if (element == "row" && IsRow) {
            Rows.EndRow();
            IsRow = false;
        }
    }

    void Text(std::string_view text) override {
        if (IsValue) {
            Value += text;
        }
    }

  private:
    void BeginRow(std::string_view number) {
        const std::size_t row = number.empty() ? Row + 1 : NumberOf<std::size_t>(number).value_or(0);
        if (row <= Row || row > MostRows || IsRow) {
            Archive.RefuseDamaged();
        }
        Rows.PassRows(row - Row - 1);
        Row = row;
        NextColumn = 0;
        IsRow = true;
    }

    void BeginCell(const XmlAttributes& attributes) {
        const std::string_view place = attributes["r"];
        Column = place.empty() ? NextColumn : ColumnOf(place);
        if (Column >= MostColumns || Column < NextColumn || !IsRow) {
            Archive.RefuseDamaged();
        }
        NextColumn = Column + 1;
        Type = attributes["t"];
        const std::string_view style = attributes["s"];
        Style = style.empty() ? 0 : NumberOf<std::size_t>(style).value_or(0);
        Value.clear();
        IsCell = true;
    }

    void TakeCell() {
        if (Type == "s") {
            const auto text = NumberOf<std::size_t>(Value);
            if (!text || *text >= Parts.Texts.size()) {
                Archive.RefuseDamaged();
            }
            Rows.AddAt(Column, Parts.Texts[*text]);
        } else if (Type == "str" || Type == "inlineStr") {
            Rows.AddAt(Column, WithoutEscapes(std::move(Value)));
        } else if (Type == "e") {
            Rows.AddAt(Column, {});
        } else if (Type == "b") {
            Rows.AddAt(Column, Value == "1" ? "TRUE" : "FALSE");
        } else if (Type == "d") {
            constexpr std::string_view midnight = "T00:00:00";
            const bool isDay = Value.ends_with(midnight);
            Rows.AddAt(Column, std::string_view(Value).substr(0, Value.size() - (isDay ? midnight.size() : 0)));
        } else if (!Value.empty()) {
            TakeNumber();
        }
    }

    void TakeNumber() {
        const std::optional<double> number = NumberOf<double>(Value);
        if (!number) {
            Archive.RefuseDamaged();
        }
        switch (Style < Parts.Styles.size() ? Parts.Styles[Style] : CellContent::Number) {
            case CellContent::Number:
                Rows.AddAt(Column, Value);
                break;
            case CellContent::Date:
                Rows.AddAt(Column, TextOfSerialDay(*number, Parts.Begins1904));
                break;
            case CellContent::DateTime:
                Rows.AddAt(Column, TextOfSerialDay(*number, Parts.Begins1904, true));
                break;
            case CellContent::TimeOfDay:
                Rows.AddAt(Column, TextOfSerialTime(*number));
                break;
        }
    }

    const ZipArchive& Archive;
    const WorkbookParts& Parts;
    FieldRows& Rows;
    std::size_t Row = 0;  // from 1
    std::size_t Column = 0;
    std::size_t NextColumn = 0;
    std::size_t Style = 0;
    std::string Type;
    std::string Value;
    bool IsRow = false;
    bool IsCell = false;
    bool IsValue = false;
    bool IsPronunciation = false;
};

}  // namespace

void ReadWorkbookSheet(const ZipArchive& archive, const WorkbookParts& parts, const std::string& place,
                       WorkMonitor& monitor, FieldRows& rows) {
    SheetTaker taker(archive, parts, rows);
    ReadXml(archive, place, monitor, taker);
}

}  // namespace quillara
