// What a category's row shows is what a drill on it keeps, under every categorization that cuts from the lowest value.

#include <cstdlib>

#include "tests/Locations.h"
#include "tests/engine/RandomTables.h"
#include "workbench/formats/DataFile.h"

namespace drilltest {

namespace {

class RowsAndSteps : public testing::TestWithParam<std::int32_t>, public DrillBench {
  protected:
    RowsAndSteps() : DrillBench(Road::Columns) {}

    /// Drills on every row of the one variable that is open, and back.
    void CompareRows(const std::string& name) {
        Focus(Number(name));
        std::vector<double> counts;
        for (const Categories& category : Record(name).CategorySet) {
            counts.push_back(category.Count);
        }
        counts.push_back(Record(name).MissingWeight);
        std::erase(counts, 0.0);
        for (std::size_t row = 0; row < counts.size(); ++row) {
            Focus(Number(name));
            Take(static_cast<int>(row));
            ASSERT_EQ(Analysis().GetValidVar(), counts[row]) << name << ", row " << row;
            Up(name);
        }
    }

    /// Cuts the range of a variable so that the lowest value lies inside an interval.
    static void Cut(Drill& record) {
        const double width = record.Max - record.Min;
        record.Method = GetParam();
        record.StepSize = width / 6.5;
        record.NU = 3;
        record.UserInterv = {record.Min + width * 0.2, record.Min + width * 0.25, record.Min + width * 0.6};
        record.RebuildCategories();
    }

    void CompareTable(const quillara::DataTable& table) {
        Open(table);
        for (const quillara::Variable& variable : table.Variables) {
            GetParam() == DistinctValues ? Choose({variable.Name}) : Choose({}, {variable.Name});
            const Drill& record = Record(variable.Name);
            if (GetParam() == DistinctValues || record.Min < record.Max) {
                Categorize(variable.Name, Cut);
                CompareRows(variable.Name);
            }
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Methods, RowsAndSteps, testing::Range(0, 6));

}  // namespace

TEST_P(RowsAndSteps, Agree) {
    for (std::uint64_t seed = 1; seed <= 60 && !HasFailure(); ++seed) {
        Random random(seed);
        CompareTable(RandomTable(random, TableStyle::PlainNumbers, 1 + static_cast<int>(seed % 40)));
    }
    CompareTable(quillara::ReadDataFile(testing_locations::Sample("survey.sav")));
    const char* folder = std::getenv("QUILLARA_TEST_DATA");
    for (const char* file : {"/penguins.csv", "/adult.csv"}) {
        if (folder == nullptr) {
            GTEST_SKIP() << "QUILLARA_TEST_DATA names no folder";
        }
        CompareTable(quillara::ReadDataFile(folder + std::string(file)));
    }
}

}  // namespace drilltest
