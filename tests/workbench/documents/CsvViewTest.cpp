#include <gtest/gtest.h>

#include <limits>

#include "tests/workbench/documents/ResultSamples.h"

namespace quillara {
namespace {

TEST(CsvView, NothingWithoutDocuments) {
    EXPECT_EQ(CsvView({}), "");
}

TEST(CsvView, AnEmptyRecordStandsBetweenDocuments) {
    EXPECT_EQ(CsvView(Collection({FrequencyTable(), SummaryTable()})),
              "Frequency table of sex\n"
              "\"N Total: 8, Selected: 7\"\n"
              "age = 30\n"
              ",Count,Cumulative Count,Percent(%),Description\n"
              "Female,3,3,42.857142857142854,\"said \"\"she\"\", <b>\"\n"
              "Male,4,7,57.142857142857146,\n"
              "\n"
              "Summary of drill-down analysis\n"
              "Variable,Category\n"
              "age,30\n"
              "sex,Female\n");
}

TEST(CsvView, NumbersInFull) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(CsvView(Collection({ColumnTable({100000.0, 0.1, -0.0, 1e300, infinity, noCell})})),
              "Values\n,Value\na,100000\nb,0.1\nc,-0\nd,1e+300\ne,\nf,\n");
}

TEST(CsvView, OnlyTheRecordBetweenDocumentsIsEmpty) {
    const SpreadsheetDocument document{{"", "line"}, "", {}, {{"", {}}, {"a\rb", {}}}};
    EXPECT_EQ(CsvView(Collection({document})), "\"\"\nline\n\"\"\n\"\"\n\"a\rb\"\n");
}

}  // namespace
}  // namespace quillara
