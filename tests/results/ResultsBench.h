#pragma once

#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "tests/engine/DrillBench.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/LongTexts.h"

namespace drilltest {

using quillara::LongTextKey;
using quillara::LongTextOf;

/// A drill bench that keeps the results shown.
class ResultsBench : public testing::Test, public DrillBench {
  protected:
    using Result = std::int16_t (CDrillDown::*)(HWND);

    ResultsBench() : DrillBench(Road::Columns) {}

    void Open(quillara::DataTable table) {
        DrillBench::Open(std::move(table));
        Host().Services.TakeDocument = [this](quillara::ResultDocument& shown) {
            Shown.push_back(*shown.Spreadsheet());
        };
    }
    void Open(std::vector<quillara::Variable> variables) { Open(TableOf(std::move(variables))); }

    /// What a result shows (see Sheets), or "refused".
    std::string Show(Result result) { return (Analysis().*result)(nullptr) == 1 ? Sheets() : "refused"; }
    std::string Caption() { return LongTextOf(Analysis().DrillString()); }

    /// The documents shown since the last call: title lines, "corner | columns" (a star: whole numbers), one line a
    /// row.
    std::string Sheets() {
        std::ostringstream text;
        for (const quillara::SpreadsheetDocument& sheet : std::exchange(Shown, {})) {
            for (const auto& line : sheet.Title) {
                text << line << '\n';
            }
            text << sheet.Corner;
            for (const auto& column : sheet.Columns) {
                text << " | " << column.Name << (column.Whole ? "*" : "");
            }
            for (const auto& row : sheet.Rows) {
                text << '\n' << row.Name;
                for (const auto& cell : row.Cells) {
                    text << " | " << Text(cell);
                }
            }
            text << '\n';
        }
        return text.str();
    }

    std::vector<quillara::SpreadsheetDocument> Shown;

  private:
    static std::string Text(const quillara::SpreadsheetCell& cell) {
        const auto* number = std::get_if<double>(&cell);
        const auto* words = std::get_if<std::string>(&cell);
        return words != nullptr ? "'" + *words + "'" : number != nullptr ? (std::ostringstream() << *number).str() : "";
    }
};

}  // namespace drilltest
