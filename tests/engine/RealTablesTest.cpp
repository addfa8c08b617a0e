// On real tables, under every categorization: what a category's row shows is what a drill on it keeps.

#include <cstdlib>

#include "tests/engine/DrillBench.h"
#include "workbench/formats/DataFile.h"

namespace drilltest {

namespace {

class RealTables : public testing::TestWithParam<std::int32_t>, public DrillBench {
  protected:
    RealTables() : DrillBench(Road::Columns) {}

    /// Drills on every row of the one variable that is open and back.
    void CompareRows(const std::string& name) {
        Focus(Number(name));
        const Drill shown = Record(name);
        std::vector<double> counts;
        for (const Categories& category : shown.CategorySet) {
            if (IsNonZero(category.Count)) {
                counts.push_back(category.Count);
            }
        }
        if (IsNonZero(shown.MissingWeight)) {
            counts.push_back(shown.MissingWeight);
        }
        for (std::size_t row = 0; row < counts.size(); ++row) {
            Focus(Number(name));
            Take(static_cast<int>(row));
            ASSERT_EQ(Analysis().GetValidVar(), counts[row]) << name << ", row " << row;
            UpPlace(0);
        }
    }

    /// Cuts the range of a variable so that the lowest value lies inside an interval.
    void Cut(const std::string& name) {
        Categorize(name, [](Drill& record) {
            const double width = record.Max - record.Min;
            record.Method = GetParam();
            record.ExactCount = 7;
            record.NeatCount = 12;
            record.StepSize = width / 6.5;
            record.NU = 3;
            record.UserInterv = {record.Min + width * 0.2, record.Min + width * 0.25, record.Min + width * 0.6};
            record.RebuildCategories();
        });
    }

    void CompareTable(const std::string& path) {
        const quillara::DataTable table = quillara::ReadDataFile(path);
        Open(table);
        for (const quillara::Variable& variable : table.Variables) {
            if (GetParam() == DistinctValues) {
                Choose({variable.Name});
            } else {
                Choose({}, {variable.Name});
                Cut(variable.Name);
            }
            CompareRows(variable.Name);
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Methods, RealTables, testing::Range(0, 6));

}  // namespace

TEST_P(RealTables, KeepWhatTheRowsOfTheSampleShow) {
    CompareTable(std::string(QUILLARA_SAMPLES) + "/survey.sav");
}

TEST_P(RealTables, KeepWhatTheRowsOfTheDataShow) {
    const char* folder = std::getenv("QUILLARA_TEST_DATA");
    if (folder == nullptr) {
        GTEST_SKIP() << "QUILLARA_TEST_DATA names no folder";
    }
    CompareTable(std::string(folder) + "/penguins.csv");
    CompareTable(std::string(folder) + "/adult.csv");
}

}  // namespace drilltest
