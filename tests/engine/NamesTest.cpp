// What categories and variables are shown as.

#include "tests/engine/DrillBench.h"

namespace drilltest {

class DisplayNames : public DrillTest {};
ON_EVERY_ROAD(DisplayNames);

constexpr char LongLabel[] = "Bachelor's degree or higher";

TEST_P(DisplayNames, OfValues) {
    using enum quillara::ValueKind;
    struct Case {
        double Value;
        const char* Name;
        quillara::ValueKind Kind = Number;
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
        {-0.25,               "-0.25"},
        {0.0012345678,        "0.001235"},
        {1.0 / 3,             "0.333333"},
        {12345678,            "12345678"},
        {123456789,           "1.2346e8"},
        {2147483648.0,        "edge"},       // the largest whole value that is labelled
        {4294967296.0,        "4.295e9"},
        {Infinity,            "--"},
        {1,                   "Male",     Date},
        {19782,               "20240229", Date},
        {45296,               "12:34:56", TimeOfDay},
        {0.5,                 "0.5",      TimeOfDay},
    };
    // clang-format on
    for (const Case& each : cases) {
        quillara::Variable variable = RawNumbers("a long variable name", {each.Value});
        variable.Kind = each.Kind;
        variable.Labels = {{1, {"Male", ""}},   {2, {LongLabel, ""}},         {3, {"three", ""}},
                           {1.5, {"half", ""}}, {2147483648.0, {"edge", ""}}, {4294967296.0, {"beyond", ""}}};
        Open({variable});
        Choose({variable.Name});
        Review({variable.Name});
        for (const CDrillDown::DrillSet* set : {Analysis().DrillDowns, Analysis().Reviews}) {
            EXPECT_EQ(RecordIn(*set, variable.Name).CategorySet.begin()->Name, each.Name);
        }
        EXPECT_EQ(Record(variable.Name).Name, variable.Name);
    }
}

}  // namespace drilltest
