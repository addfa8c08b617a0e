// Plots that the host makes by asking the filter for each case, and by testing its conditions over columns itself.

#include <bit>
#include <numeric>

#include "results/graphs/ReviewCaseFilter.h"
#include "tests/engine/RandomTables.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/views/GraphJson.h"

namespace drilltest {

class PlotRoads : public testing::Test {
  protected:
    /// All plots of all variables but the weight, as texts that tell numbers to the last bit.
    static std::string PlotsOf(DrillBench& bench, std::int16_t variables) {
        CDrillDown& analysis = bench.Analysis();
        std::string shown;
        bench.Host().Services.TakeDocument = [&shown](quillara::ResultDocument& document) {
            shown += quillara::GraphMembers(*document.Graph()) + '\n';
            if (const auto* scatter = std::get_if<quillara::ScatterMatrix>(&document.Graph()->Content)) {
                for (const quillara::ScatterVariable& variable : scatter->Variables) {
                    for (const float place : *variable.Places) {
                        shown += std::to_string(std::bit_cast<std::uint32_t>(place)) + ' ';
                    }
                }
            }
        };
        std::vector<short> all(static_cast<std::size_t>(variables));
        std::iota(all.begin(), all.end(), short{1});
        const ReviewCaseFilterScope filter(analysis);
        for (const unsigned short type : {52, 53, 54, 55}) {
            analysis.CategorizedVarBoxAndWhisker(type, "title", "caption", nullptr, nullptr, 0, variables, all.data(),
                                                 nullptr, ReviewCaseFilter);
        }
        analysis.CorrelationScatterplot(8, 0, variables, all.data(), 0, nullptr, 0, nullptr, nullptr, nullptr,
                                        ReviewCaseFilter, "title");
        for (Histogram3DXVar = 0; Histogram3DXVar < variables; ++Histogram3DXVar) {
            Histogram3DYVar = static_cast<std::int16_t>(variables - 1 - Histogram3DXVar);
            analysis.Histogram3D(4, Histogram3DXVar, Histogram3DYVar, 0, 0, nullptr, nullptr, 0, "title", nullptr,
                                 "caption", nullptr, 0, nullptr, ReviewCaseFilterXY);
        }
        return shown;
    }
};

TEST_F(PlotRoads, PlotsAreTheSameByFilterAndByConditions) {
    for (std::uint64_t seed = 1; seed <= 60; ++seed) {
        Random random(seed);
        const quillara::DataTable table = RandomTable(random, TableStyle::Anything, 1 + static_cast<int>(seed * 7));
        const auto variables = static_cast<std::int16_t>(table.Variables.size() - 1);
        std::vector<CaseResult> selection(static_cast<std::size_t>(table.Cases) * (seed % 2), CaseResult::Use);
        std::ranges::for_each(selection,
                              [&](CaseResult& result) { result = static_cast<CaseResult>(Chance(random, 5)); });
        std::optional<std::string> first;
        for (const Road road : {Road::Columns, Road::Workbench}) {
            DrillBench bench(road);
            bench.Open(table);
            bench.Host().SetThreads(static_cast<std::int32_t>(seed % 4));
            bench.Select(selection);
            bench.Weigh(seed % 3 == 0 ? std::nullopt : std::optional(table.Variables.size() - 1));
            std::vector<std::string> names;
            for (const quillara::Variable& variable : table.Variables) {
                names.push_back(variable.Name);
            }
            names.pop_back();
            bench.Choose(names);
            for (std::size_t step = 0; step < seed % 3 && step < names.size(); ++step) {
                bench.Focus(static_cast<std::int16_t>(step + 1));
                bench.Take(0);
            }
            const std::string shown = PlotsOf(bench, variables);
            first = first.value_or(shown);
            ASSERT_EQ(shown == *first, true) << seed;
            ASSERT_NE(shown, "");
        }
    }
}

}  // namespace drilltest
