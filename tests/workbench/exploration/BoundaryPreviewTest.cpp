#include "workbench/exploration/BoundaryPreview.h"

#include <gtest/gtest.h>

namespace quillara {
namespace {

TEST(BoundaryPreview, ShowsTheRangesOrWhatIsWrong) {
    const struct {
        const char* Typed;
        const char* Shown;
    } lists[] = {
        {"", ""},
        {" ; ", ""},
        {"2", "x<=2, 2<x"},
        {" 2;;2.50  5 ", "x<=2, 2<x<=2.50, 2.50<x<=5, 5<x"},
        {"2 2", "after 2: 2 is not greater"},
        {"2 3x", "3x is not a number"},
        {"1,5; 2,5 3", "x<=1.5, 1.5<x<=2.5, 2.5<x<=3, 3<x; a comma is the decimal point"},
        {"-0,125 +,5 1234,567 2,5e4",
         "x<=-0.125, -0.125<x<=+.5, +.5<x<=1234.567, 1234.567<x<=2.5e4, 2.5e4<x; a comma "
         "is the decimal point"},
        {"1,234", "1,234 can be 1.234 or 1234: write one of these"},
        {"10,20,30", "10,20,30 is not a number: separate numbers by blanks or ;"},
        {"1,5.2", "1,5.2 is not a number: separate numbers by blanks or ;"},
        {"1, 2", "1, is not a number: separate numbers by blanks or ;"},
        {"-,", "-, is not a number: separate numbers by blanks or ;"},
        {"2\n3", "one line only: a new line separates nothing"},
        {"1 2 3 4 5 6 7", "x<=1, 1<x<=2, 2<x<=3, 3<x<=4, 4<x<=5, 5<x<=6, 6<x<=7, 7<x"},
        {"1 2 3 4 5 6 7 8", "x<=1, 1<x<=2, 2<x<=3, ..., 6<x<=7, 7<x<=8, 8<x (9 ranges)"},
    };
    for (const auto& [typed, shown] : lists) {
        EXPECT_EQ(BoundaryPreview(typed), shown) << typed;
    }
    std::string many;
    for (int i = 0; i < 100; ++i) {
        many += std::to_string(i) + " ";
    }
    EXPECT_EQ(BoundaryPreview(many), "too many: 100 values, 99 at most");
}

}  // namespace
}  // namespace quillara
