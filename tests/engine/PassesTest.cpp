// What the passes do besides counting; passes.txt has what they count, in plain numbers. The random tables compare all
// fields; these are the anchors.

#include <numeric>

#include "tests/engine/DrillBench.h"

namespace drilltest {

class Passes : public DrillTest {};
ON_EVERY_ROAD(Passes);

TEST_P(Passes, EndTheProgressBehindNamingAndBuildingAndBeforeACancelTakesTheRecords) {
    Open({Numbers("s", {1, 2}), Numbers("x", {0, 8})});
    Names seen;
    Host().Services.ProgressEnded = [&] {
        const bool both = Analysis().GetDrillDownsSize() == 2;
        seen.push_back(both ? Open("s") + std::to_string(Record("x").CategorySet.size()) : "gone");
    };
    constexpr char all[] = "s: n=2 mean=1.5 [1:1 2:1] missing 09";
    Choose({"s"}, {"x"});
    Analysis().ReadBeforeDrill(0);
    Analysis().ReadAfterDrill(0);
    CancelAt(2);
    Choose({"s"}, {"x"});
    EXPECT_EQ(seen, (Names{all, all, all, "s: n=0 mean=0 [:1] missing 00"}));
}

TEST_P(Passes, PutTheNameOfTheCaseIntoTheTextLine) {
    struct Case {
        int CaseNumber;
        std::int16_t Width, Column;
        std::int16_t ColumnBehind;
        std::string Line;  ///< from ColumnBehind on, up to the first byte that isn't written
    };
    const Case cases[] = {
        {1, 0, 1, 1, ""},
        {1, 5, 217, 217, "ann "},
        {1, 5, 218, 1, "ann  "},
        {1, 5, 0, 1, "ann  "},
        {3, 220, 1, 1, std::string(220, ' ')},
        {1, 300, 200, 200, "ann" + std::string(18, ' ')},
    };
    quillara::DataTable table = TableOf({Numbers("x", {1, 2, 3})});
    table.CaseNames = {"ann", "", std::string(220, 'n')};
    Open(table);
    CDrillDown& analysis = Analysis();
    double values[2] = {};
    for (const Case& each : cases) {
        std::fill_n(analysis.CaseLine.Line, CaseLineWidth, '\0');
        analysis.CaseLine.Column = each.Column;
        analysis.Names.CaseNameWidth = each.Width;
        EXPECT_EQ(analysis.ReadCase(each.CaseNumber, values), 0);
        EXPECT_EQ(analysis.CaseLine.Column, each.ColumnBehind);
        const std::string line(analysis.CaseLine.Line, CaseLineWidth);
        const std::string written = line.substr(static_cast<std::size_t>(each.ColumnBehind) - 1);
        EXPECT_EQ(written.substr(0, written.find('\0')), each.Line) << "width " << each.Width;
    }
}

}  // namespace drilltest
