// What categories and variables are shown as.

#include "tests/engine/DrillBench.h"

namespace drilltest {

class DisplayNames : public DrillTest {};
ON_EVERY_ROAD(DisplayNames);

constexpr char LongLabel[] = "Bachelor's degree or higher";

TEST_P(DisplayNames, OfValues) {
    struct Case {
        double Value;
        const char* Name;
    };
    // clang-format off
    const Case cases[] = {
        // Value              Name
        {1,                   "Male"},       // its label
        {2,                   LongLabel},    // a label longer than the field
        {4,                   "4"},
        {3.9999999999999996,  "4"},          // named from the rounded value
        {2.9999999999999996,  "three"},      // and labelled from it
        {1.5,                 "1.5"},        // the label of a fraction isn't asked for
        {-2,                  "-2"},
        {0,                   "0"},
        {-0.25,               "-0.25"},
        {0.0012345678,        "0.001235"},
        {1.0 / 3,             "0.333333"},
        {12345678,            "12345678"},
        {123456789,           "1.2346e8"},
        {2147483648.0,        "edge"},       // the largest whole value that is labelled
        {4294967296.0,        "4.295e9"},
        {-4294967296.0,       "-4.295e9"},
        {Infinity,            "--"},
    };
    // clang-format on
    for (const Case& each : cases) {
        quillara::Variable variable = RawNumbers("x", {each.Value});
        variable.Labels = {{1, {"Male", ""}},   {2, {LongLabel, ""}},         {3, {"three", ""}},
                           {1.5, {"half", ""}}, {2147483648.0, {"edge", ""}}, {4294967296.0, {"beyond", ""}}};
        Open({variable});
        Choose({"x"});
        EXPECT_EQ(CategoryNames("x"), each.Name);
        Review({"x"});
        EXPECT_EQ(RecordIn(*Analysis().Reviews, "x").CategorySet.begin()->Name, each.Name);
    }
}

TEST_P(DisplayNames, OfDatesAndTimesHaveTheirOwnFormat) {
    quillara::Variable day = RawNumbers("day", {19782, 19783});
    day.Kind = quillara::ValueKind::Date;
    day.Labels = {{19783, {"today", ""}}};
    quillara::Variable time = RawNumbers("time", {45296, 0.5});
    time.Kind = quillara::ValueKind::TimeOfDay;
    Open({day, time});
    Choose({"day", "time"});
    EXPECT_EQ(CategoryNames("day"), "20240229 | today");
    EXPECT_EQ(CategoryNames("time"), "0.5 | 12:34:56");
}

TEST_P(DisplayNames, OfVariablesAreWhole) {
    Open({RawNumbers("short", {1}), RawNumbers("a long variable name", {1})});
    Choose({"short"}, {"a long variable name"});
    EXPECT_EQ(Record("short").Name, "short");
    EXPECT_EQ(Record("a long variable name").Name, "a long variable name");
}

TEST_P(DisplayNames, ReportALabelByTheirResultAndPosition) {
    quillara::Variable variable = RawNumbers("x", {1});
    variable.Labels = {{1, {"Male", ""}}};
    Open({variable});
    const std::pair<double, int> cases[] = {{1, 8}, {12, 2}, {0.5, 0}};
    for (const auto& [value, end] : cases) {
        char buffer[9] = {};
        int position = 0;
        EXPECT_EQ(Analysis().ValueToLabelText(1, value, &position, buffer), value == 1 ? 1 : 0);
        EXPECT_EQ(position, end) << value;
    }
}

}  // namespace drilltest
