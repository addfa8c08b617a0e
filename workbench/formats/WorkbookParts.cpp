#include "workbench/formats/WorkbookParts.h"

#include <map>
#include <optional>
#include <utility>

#include "workbench/formats/XmlText.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

bool IsTrue(std::string_view text) {
    return text == "1" || text == "true";
}

/// Sheets, which name their places by keys.
class SheetsTaker : public XmlTaker {
  public:
    explicit SheetsTaker(WorkbookParts& parts) : Parts(parts) {}

    void Begin(std::string_view element, const XmlAttributes& attributes) override {
        if (element == "workbookPr") {
            Parts.Begins1904 = IsTrue(attributes["date1904"]);
        } else if (element == "sheet") {
            const std::string_view state = attributes["state"];
            Parts.Sheets.push_back({std::string(attributes["name"]), !state.empty() && state != "visible",
                                    std::string(attributes.Prefixed("id"))});
        }
    }
    void End(std::string_view /*element*/) override {}
    void Text(std::string_view /*text*/) override {}

  private:
    WorkbookParts& Parts;
};

/// The places of sheets of cells, by key.
class PlacesTaker : public XmlTaker {
  public:
    void Begin(std::string_view element, const XmlAttributes& attributes) override {
        if (element == "Relationship" && attributes["Type"].ends_with("/worksheet")) {
            std::string_view target = attributes["Target"];
            const bool isWhole = target.starts_with('/');
            target.remove_prefix(isWhole ? 1 : 0);
            Places[std::string(attributes["Id"])] = (isWhole ? "" : "xl/") + std::string(target);
        }
    }
    void End(std::string_view /*element*/) override {}
    void Text(std::string_view /*text*/) override {}

    std::map<std::string, std::string> Places;
};

class StylesTaker : public XmlTaker {
  public:
    explicit StylesTaker(std::vector<CellContent>& styles) : Styles(styles) {}

    void Begin(std::string_view element, const XmlAttributes& attributes) override {
        if (element == "numFmt") {
            Own[WholeNumber(attributes["numFmtId"]).value_or(-1)] = ContentByCode(attributes["formatCode"]);
        } else if (element == "cellXfs") {
            IsInCells = true;
        } else if (element == "xf" && IsInCells) {
            const int format = WholeNumber(attributes["numFmtId"]).value_or(0);
            const auto own = Own.find(format);
            Styles.push_back(own == Own.end() ? ContentByNumber(format) : own->second);
        }
    }
    void End(std::string_view element) override { IsInCells = IsInCells && element != "cellXfs"; }
    void Text(std::string_view /*text*/) override {}

  private:
    std::vector<CellContent>& Styles;
    std::map<int, CellContent> Own;
    bool IsInCells = false;
};

/// Texts that cells share, each in pieces of one format; what tells how to pronounce them isn't theirs.
class SharedTextsTaker : public XmlTaker {
  public:
    explicit SharedTextsTaker(std::vector<std::string>& texts) : Texts(texts) {}

    void Begin(std::string_view element, const XmlAttributes& /*attributes*/) override {
        if (element == "si") {
            Texts.emplace_back();
        } else if (element == "rPh") {
            IsPronunciation = true;
        } else if (element == "t") {
            IsText = !IsPronunciation && !Texts.empty();
        }
    }
    void End(std::string_view element) override {
        if (element == "si" && !Texts.empty()) {
            Texts.back() = WithoutEscapes(std::move(Texts.back()));
        }
        IsText = false;
        IsPronunciation = IsPronunciation && element != "rPh";
    }
    void Text(std::string_view text) override {
        if (IsText) {
            Texts.back() += text;
        }
    }

  private:
    std::vector<std::string>& Texts;
    bool IsText = false;
    bool IsPronunciation = false;
};

/// Gives the sheets their places; those without, as charts, hold no cells.
void Place(std::vector<SheetEntry>& sheets, const std::map<std::string, std::string>& places) {
    std::erase_if(sheets, [&](const SheetEntry& sheet) { return !places.contains(sheet.Place); });
    for (SheetEntry& sheet : sheets) {
        sheet.Place = places.at(sheet.Place);
    }
}

}  // namespace

WorkbookParts PartsOfWorkbook(const ZipArchive& archive, WorkMonitor& monitor) {
    WorkbookParts parts;
    SheetsTaker sheets(parts);
    ReadXml(archive, "xl/workbook.xml", monitor, sheets);
    PlacesTaker places;
    ReadXml(archive, "xl/_rels/workbook.xml.rels", monitor, places);
    Place(parts.Sheets, places.Places);
    if (StylesTaker styles(parts.Styles); archive.Has("xl/styles.xml")) {
        ReadXml(archive, "xl/styles.xml", monitor, styles);
    }
    if (SharedTextsTaker texts(parts.Texts); archive.Has("xl/sharedStrings.xml")) {
        ReadXml(archive, "xl/sharedStrings.xml", monitor, texts);
    }
    return parts;
}

}  // namespace quillara
