#include "workbench/formats/SheetChoice.h"

#include <algorithm>
#include <optional>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

std::string NamesOf(const std::vector<SheetEntry>& sheets) {
    std::string names;
    for (const SheetEntry& sheet : sheets) {
        names += (names.empty() ? "" : ", ") + Quoted(sheet.Name);
    }
    return names;
}

std::size_t SheetNamed(const std::vector<SheetEntry>& sheets, const std::string& path, const std::string& wanted) {
    const auto found = std::ranges::find(sheets, wanted, &SheetEntry::Name);
    if (found != sheets.end()) {
        return static_cast<std::size_t>(found - sheets.begin());
    }
    const std::optional<int> number = WholeNumber(wanted);
    if (number && *number >= 1 && static_cast<std::size_t>(*number) <= sheets.size()) {
        return static_cast<std::size_t>(*number) - 1;
    }
    throw DataError("\"" + path + "\" has no sheet " + Quoted(wanted) + "; it has " + NamesOf(sheets) + ".");
}

}  // namespace

std::size_t ChosenSheet(const std::vector<SheetEntry>& sheets, const std::string& path, const ReadOptions& options) {
    if (sheets.empty()) {
        throw DataError("\"" + path + "\" has no sheet of cells.");
    }
    if (!options.Sheet.empty()) {
        return SheetNamed(sheets, path, options.Sheet);
    }
    const auto shown = std::ranges::find(sheets, false, &SheetEntry::IsHidden);
    const std::size_t chosen = shown == sheets.end() ? 0 : static_cast<std::size_t>(shown - sheets.begin());
    if (sheets.size() > 1 && options.Noticed) {
        if (sheets[chosen].Name == "Contents") {
            options.Noticed({"results-workbook",
                             Quoted(NameOfFile(path)) +
                                 " looks like a workbook of results, whose tables have titles above "
                                 "their names and are no data.",
                             "Read the data that they were made from; drill --save and convert write data."});
        }
        options.Noticed({"further-sheets",
                         Quoted(NameOfFile(path)) + " has " + std::to_string(sheets.size()) + " sheets, of which " +
                             Quoted(sheets[chosen].Name) + " is read.",
                         "--sheet (sheet in Python) takes another of " + NamesOf(sheets) + "."});
    }
    return chosen;
}

}  // namespace quillara
