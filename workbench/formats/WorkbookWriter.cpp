#include "workbench/formats/WorkbookWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "workbench/data/Errors.h"
#include "workbench/data/LetterCase.h"
#include "workbench/formats/XmlText.h"
#include "workbench/formats/ZipMaker.h"

namespace quillara {
namespace {

constexpr std::size_t MostCharacters = 32767;  // of a cell
constexpr std::size_t MostCells = 16384;
constexpr std::size_t MostRowsOfSheet = 1048576;
constexpr std::size_t LongestName = 31;
constexpr std::size_t WidestColumn = 60;
constexpr std::size_t PixelsOfRow = 20;
constexpr std::size_t UnitsOfPixel = 9525;  // as drawings measure

constexpr std::string_view XmlHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr std::string_view Namespace = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr std::string_view Kinds = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr std::string_view DrawingNamespace = "http://schemas.openxmlformats.org/drawingml/2006/";
constexpr std::string_view DrawingContent = "application/vnd.openxmlformats-officedocument.drawing+xml";
constexpr std::string_view PackageKinds = "http://schemas.openxmlformats.org/package/2006/relationships";
constexpr std::string_view ContentTypes = "http://schemas.openxmlformats.org/package/2006/content-types";
constexpr std::string_view MainContent = "application/vnd.openxmlformats-officedocument.spreadsheetml";

/// A style as the file has it.
struct StyleInFile {
    CellStyle Style;
    int Format;  // of numbers: built in, or from 164 on one of our own
    int Font;  // 0 plain, 1 bold, 2 larger, 3 of a link
    bool HasRule;  // below
};

// clang-format off
constexpr auto StylesInFile = std::to_array<StyleInFile>({
    {CellStyle::Plain,      0, 0, false},
    {CellStyle::Heading,    0, 1, true},
    {CellStyle::Title,      0, 2, false},
    {CellStyle::Whole,      1, 0, false},  // 0
    {CellStyle::Percent,    2, 0, false},  // 0.00
    {CellStyle::Decimals, 164, 0, false},
    {CellStyle::Date,     165, 0, false},
    {CellStyle::Time,     166, 0, false},
    {CellStyle::DateTime, 167, 0, false},
    {CellStyle::Link,       0, 3, false},
});
// clang-format on

std::string StylesText() {
    std::string text(XmlHead);
    text.append("<styleSheet xmlns=\"").append(Namespace).append("\">");
    text +=
        "<numFmts count=\"4\"><numFmt numFmtId=\"164\" formatCode=\"0.0000\"/>"
        "<numFmt numFmtId=\"165\" formatCode=\"yyyy\\-mm\\-dd\"/><numFmt numFmtId=\"166\" formatCode=\"[hh]:mm:ss\"/>"
        "<numFmt numFmtId=\"167\" formatCode=\"yyyy\\-mm\\-dd\\ hh:mm:ss\"/>"
        "</numFmts><fonts count=\"4\"><font><sz val=\"11\"/><name val=\"Calibri\"/></font>"
        "<font><b/><sz val=\"11\"/><name val=\"Calibri\"/></font>"
        "<font><b/><sz val=\"14\"/><name val=\"Calibri\"/></font>"
        "<font><u/><sz val=\"11\"/><color rgb=\"FF0563C1\"/><name val=\"Calibri\"/></font></fonts>"
        "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
        "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
        "<borders count=\"2\"><border><left/><right/><top/><bottom/><diagonal/></border>"
        "<border><left/><right/><top/><bottom style=\"thin\"/><diagonal/></border></borders>"
        "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellStyleXfs>";
    text += "<cellXfs count=\"" + std::to_string(StylesInFile.size()) + "\">";
    for (const StyleInFile& style : StylesInFile) {
        text += "<xf numFmtId=\"" + std::to_string(style.Format) + "\" fontId=\"" + std::to_string(style.Font) +
                "\" fillId=\"0\" borderId=\"" + (style.HasRule ? "1" : "0") +
                "\" xfId=\"0\" applyNumberFormat=\"1\" applyFont=\"1\" applyBorder=\"1\"/>";
    }
    return text +
           "</cellXfs><cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles>"
           "</styleSheet>";
}

std::string NameOfPart(std::size_t sheet) {
    return "worksheets/sheet" + std::to_string(sheet + 1) + ".xml";
}

/// A name without what sheets can't be called; not cut within a character.
std::string PossibleName(std::string_view wanted) {
    std::string name;
    for (const char character : wanted.substr(0, LongestName)) {
        const bool isPossible = std::string_view("[]:*?/\\'").find(character) == std::string_view::npos &&
                                static_cast<unsigned char>(character) >= 0x20;
        name += isPossible ? character : ' ';
    }
    constexpr unsigned beginOfNext = 0xC0;
    constexpr unsigned ofSame = 0x80;
    const auto byteAt = [](std::string_view text, std::size_t at) { return static_cast<unsigned char>(text[at]); };
    if (wanted.size() > LongestName && (byteAt(wanted, LongestName) & beginOfNext) == ofSame) {
        while (!name.empty() && (byteAt(name, name.size() - 1) & beginOfNext) == ofSame) {
            name.pop_back();
        }
        name.resize(name.empty() ? 0 : name.size() - 1);
    }
    return name.empty() ? "Sheet" : name;
}

std::string LettersOfColumn(std::size_t column) {
    constexpr std::size_t letters = 26;
    std::string name;
    for (std::size_t rest = column + 1; rest > 0; rest = (rest - 1) / letters) {
        name.insert(name.begin(), static_cast<char>('A' + (rest - 1) % letters));
    }
    return name;
}

/// As workbooks count: in UTF-16.
std::size_t CharactersOf(std::string_view text) {
    std::size_t count = 0;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        count += (byte < 0x80 || byte >= 0xC0 ? 1U : 0U) + (byte >= 0xF0 ? 1U : 0U);
    }
    return count;
}

}  // namespace

std::string WorkbookWriter::BeginSheet(std::string_view name, std::size_t frozenRows,
                                       const std::vector<std::size_t>& widths) {
    const std::string wanted = PossibleName(name);
    const auto isTaken = [&](const std::string& candidate) {
        return std::ranges::any_of(
            Sheets, [&](const Sheet& sheet) { return InSmallLetters(sheet.Name) == InSmallLetters(candidate); });
    };
    std::string chosen = wanted;
    for (int number = 2; isTaken(chosen); ++number) {
        const std::string behind = " " + std::to_string(number);
        chosen = PossibleName(wanted.substr(0, LongestName - behind.size())) + behind;
    }
    Sheet sheet{.Name = chosen, .Cells = std::string(XmlHead), .Links = {}, .Pictures = {}};
    sheet.Cells.append("<worksheet xmlns=\"")
        .append(Namespace)
        .append("\" xmlns:r=\"")
        .append(Kinds)
        .append("\"><sheetViews><sheetView workbookViewId=\"0\">");
    if (frozenRows > 0) {
        sheet.Cells += "<pane ySplit=\"" + std::to_string(frozenRows) + "\" topLeftCell=\"A" +
                       std::to_string(frozenRows + 1) + "\" activePane=\"bottomLeft\" state=\"frozen\"/>";
    }
    sheet.Cells += "</sheetView></sheetViews>";
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const std::string place = std::to_string(i + 1);
        sheet.Cells += (i == 0 ? "<cols>" : "") + ("<col min=\"" + place) + "\" max=\"" + place + "\" width=\"" +
                       std::to_string(std::min(widths[i], WidestColumn) + 2) + "\" customWidth=\"1\"/>";
    }
    sheet.Cells += widths.empty() ? "<sheetData>" : "</cols><sheetData>";
    Sheets.push_back(std::move(sheet));
    Row = 1;
    Column = 0;
    return chosen;
}

std::string WorkbookWriter::Place() const {
    return LettersOfColumn(Column) + std::to_string(Row);
}

void WorkbookWriter::BeginCell(CellStyle style, std::string_view type) {
    RowCells.append("<c r=\"").append(Place()).append("\"").append(type);
    if (style != CellStyle::Plain) {
        const auto found = std::ranges::find(StylesInFile, style, &StyleInFile::Style);
        RowCells += " s=\"" + std::to_string(found - StylesInFile.begin()) + "\"";
    }
    RowCells += '>';
    ++Column;
}

void WorkbookWriter::Add(std::string_view text, CellStyle style) {
    if (text.size() > MostCharacters && CharactersOf(text) > MostCharacters) {
        throw DataError("A text of row " + std::to_string(Row) + " is longer than the " +
                        std::to_string(MostCharacters) +
                        " characters that a cell of a workbook holds; choose another format.");
    }
    BeginCell(style, " t=\"inlineStr\"");
    RowCells += "<is><t xml:space=\"preserve\">";
    AppendXmlText(RowCells, text);
    RowCells += "</t></is></c>";
}

void WorkbookWriter::Add(double number, CellStyle style) {
    if (!std::isfinite(number)) {
        Add(std::isnan(number) ? "" : number > 0 ? "inf" : "-inf", CellStyle::Plain);
        return;
    }
    char digits[32];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, number);
    BeginCell(style, "");
    RowCells.append("<v>").append(digits, end.ptr).append("</v></c>");
}

void WorkbookWriter::AddLink(std::string_view text, const std::string& sheet) {
    std::string& links = Sheets.back().Links;
    links += "<hyperlink ref=\"" + Place() + "\" location=\"'";
    AppendXmlText(links, sheet);
    links += "'!A1\"/>";
    Add(text, CellStyle::Link);
}

void WorkbookWriter::EndRow() {
    if (Row > MostRowsOfSheet || Column > MostCells) {
        throw DataError(
            "A sheet of a workbook holds no more than 1,048,576 rows of 16,384 cells; choose another format.");
    }
    std::string& cells = Sheets.back().Cells;
    cells += "<row r=\"" + std::to_string(Row) + "\">" + RowCells + "</row>";
    Monitor.Advance(Column);
    RowCells.clear();
    Column = 0;
    ++Row;
}

void WorkbookWriter::AddPicture(std::string png, std::size_t width, std::size_t height) {
    Sheets.back().Pictures.push_back({std::move(png), Row - 1, width, height});
    Row += height / PixelsOfRow + 2;
}

struct WorkbookWriter::DrawingParts {
    std::string Drawing;
    std::string Relations;  ///< of the drawing to its images
};

WorkbookWriter::DrawingParts WorkbookWriter::PartsOf(const Sheet& sheet, std::size_t firstImage) {
    DrawingParts parts{std::string(XmlHead), std::string(XmlHead)};
    const std::string space(DrawingNamespace);
    parts.Drawing += "<xdr:wsDr xmlns:xdr=\"" + space + "spreadsheetDrawing\" xmlns:a=\"" + space +
                     "main\" xmlns:r=\"" + std::string(Kinds) + "\">";
    parts.Relations += "<Relationships xmlns=\"" + std::string(PackageKinds) + "\">";
    for (std::size_t i = 0; i < sheet.Pictures.size(); ++i) {
        const Picture& picture = sheet.Pictures[i];
        const std::string number = std::to_string(i + 1);
        const std::string extent = " cx=\"" + std::to_string(picture.Width * UnitsOfPixel) + "\" cy=\"" +
                                   std::to_string(picture.Height * UnitsOfPixel) + "\"/>";
        parts.Drawing +=
            "<xdr:oneCellAnchor><xdr:from><xdr:col>0</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>" +
            std::to_string(picture.Row) + "</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:from><xdr:ext" + extent +
            "<xdr:pic><xdr:nvPicPr><xdr:cNvPr id=\"" + number + "\" name=\"Chart " + number +
            "\"/><xdr:cNvPicPr/></xdr:nvPicPr><xdr:blipFill><a:blip r:embed=\"i" + number +
            "\"/><a:stretch><a:fillRect/></a:stretch></xdr:blipFill><xdr:spPr><a:xfrm><a:off x=\"0\" y=\"0\"/><a:ext" +
            extent +
            "</a:xfrm><a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom></xdr:spPr></xdr:pic>"
            "<xdr:clientData/></xdr:oneCellAnchor>";
        parts.Relations += "<Relationship Id=\"i" + number + "\" Type=\"" + std::string(Kinds) +
                           "/image\" Target=\"../media/image" + std::to_string(firstImage + i) + ".png\"/>";
    }
    parts.Drawing += "</xdr:wsDr>";
    parts.Relations += "</Relationships>";
    return parts;
}

void WorkbookWriter::AddDrawing(ZipMaker& zip, Sheet& sheet, std::size_t place, std::size_t images) {
    const std::string drawing = "drawing" + std::to_string(place + 1) + ".xml";
    DrawingParts parts = PartsOf(sheet, images + 1);
    std::string relation(XmlHead);
    relation.append("<Relationships xmlns=\"").append(PackageKinds).append("\"><Relationship Id=\"d\" Type=\"");
    relation.append(Kinds).append("/drawing\" Target=\"../drawings/" + drawing + "\"/></Relationships>");
    zip.Add("xl/worksheets/_rels/sheet" + std::to_string(place + 1) + ".xml.rels", std::move(relation));
    zip.Add("xl/drawings/" + drawing, std::move(parts.Drawing));
    zip.Add("xl/drawings/_rels/" + drawing + ".rels", std::move(parts.Relations));
    for (Picture& picture : sheet.Pictures) {
        zip.Add("xl/media/image" + std::to_string(++images) + ".png", std::move(picture.Png));
    }
}

std::string WorkbookWriter::Finish() {
    ZipMaker zip;
    std::string types(XmlHead);
    types.append("<Types xmlns=\"").append(ContentTypes).append("\">");
    types.append(
        "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>");
    types.append("<Default Extension=\"png\" ContentType=\"image/png\"/>");
    types.append("<Override PartName=\"/xl/workbook.xml\" ContentType=\"")
        .append(MainContent)
        .append(".sheet.main+xml\"/>");
    types.append("<Override PartName=\"/xl/styles.xml\" ContentType=\"").append(MainContent).append(".styles+xml\"/>");
    std::string book(XmlHead);
    book.append("<workbook xmlns=\"").append(Namespace).append("\" xmlns:r=\"").append(Kinds).append("\"><sheets>");
    std::string places(XmlHead);
    places.append("<Relationships xmlns=\"").append(PackageKinds).append("\">");
    const auto relate = [&](std::string_view key, std::string_view kind, const std::string& part) {
        places.append("<Relationship Id=\"").append(key).append("\" Type=\"").append(Kinds).append("/").append(kind);
        places.append("\" Target=\"").append(part).append("\"/>");
    };
    for (std::size_t i = 0; i < Sheets.size(); ++i) {
        const std::string key = "s" + std::to_string(i + 1);
        types.append("<Override PartName=\"/xl/").append(NameOfPart(i)).append("\" ContentType=\"");
        types.append(MainContent).append(".worksheet+xml\"/>");
        if (!Sheets[i].Pictures.empty()) {
            types.append("<Override PartName=\"/xl/drawings/drawing" + std::to_string(i + 1) + ".xml\" ContentType=\"");
            types.append(DrawingContent).append("\"/>");
        }
        book += "<sheet name=\"";
        AppendXmlText(book, Sheets[i].Name);
        book += "\" sheetId=\"" + std::to_string(i + 1) + "\" r:id=\"" + key + "\"/>";
        relate(key, "worksheet", NameOfPart(i));
    }
    relate("styles", "styles", "styles.xml");
    zip.Add("[Content_Types].xml", types + "</Types>");
    std::string root(XmlHead);
    root.append("<Relationships xmlns=\"").append(PackageKinds).append("\"><Relationship Id=\"book\" Type=\"");
    zip.Add("_rels/.rels", root.append(Kinds).append("/officeDocument\" Target=\"xl/workbook.xml\"/></Relationships>"));
    zip.Add("xl/workbook.xml", book + "</sheets></workbook>");
    zip.Add("xl/_rels/workbook.xml.rels", places + "</Relationships>");
    zip.Add("xl/styles.xml", StylesText());
    std::size_t images = 0;
    for (std::size_t i = 0; i < Sheets.size(); ++i) {
        Sheet& sheet = Sheets[i];
        sheet.Cells += "</sheetData>";
        sheet.Cells += sheet.Links.empty() ? "" : "<hyperlinks>" + sheet.Links + "</hyperlinks>";
        if (!sheet.Pictures.empty()) {
            sheet.Cells += "<drawing r:id=\"d\"/>";
            AddDrawing(zip, sheet, i, images);
            images += sheet.Pictures.size();
        }
        sheet.Cells += "</worksheet>";
        zip.Add("xl/" + NameOfPart(i), std::move(sheet.Cells));
    }
    return zip.Finish();
}

}  // namespace quillara
