#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/engine/DrillBench.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/LongTexts.h"

namespace drilltest {

using quillara::LongTextKey;
using quillara::LongTextOf;

/// What a document shows. A spreadsheet: its title lines, "corner | columns" (a star: whole numbers), one line a row.
/// A graph: its title lines and, for each series, "label:height ..." or what its host computed it of.
std::string TextOf(const quillara::ResultDocument& document);
/// "drill 1 one,two 2+": the side, the numbers of the variables and the names of their categories; plus: and Missing.
std::string AboutOf(const quillara::ResultDocument& document);
/// "a x: 1 10, 1 20", names of cases in front of the values.
std::string TextOf(const quillara::DataTable& table);

/// A drill bench that keeps the results shown, as texts.
class ResultsBench : public testing::Test, public DrillBench {
  protected:
    using Result = std::int16_t (CDrillDown::*)(HWND);

    ResultsBench() : DrillBench(Road::Columns) {}

    void Open(quillara::DataTable table) {
        DrillBench::Open(std::move(table));
        Host().Services.TakeDocument = [this](quillara::ResultDocument& shown) {
            Shown += TextOf(shown);
            Said += AboutOf(shown) + '\n';
        };
        Host().Services.TakeData = [this](auto data) { Taken = data; };
    }
    void Open(std::vector<quillara::Variable> variables) { Open(TableOf(std::move(variables))); }

    std::string TakeShown() { return std::exchange(Shown, {}); }
    std::string Caption() { return LongTextOf(Analysis().DrillString()); }

    std::string Shown, Said;
    std::shared_ptr<const quillara::DataTable> Taken;  ///< the new table
};

}  // namespace drilltest
