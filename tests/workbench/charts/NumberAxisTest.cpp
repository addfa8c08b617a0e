#include "workbench/charts/NumberAxis.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <random>
#include <set>

namespace quillara {
namespace {

std::string Joined(const std::vector<AxisMark>& marks) {
    QStringList texts;
    std::ranges::transform(marks, std::back_inserter(texts), &AxisMark::Text);
    return texts.join(' ').toStdString();
}

TEST(RoundValues, HaveTheDigitsOfTheirStepAndTheFormOfTheirKind) {
    constexpr auto number = ValueKind::Number;
    constexpr auto date = ValueKind::Date;
    constexpr auto stamp = ValueKind::DateTime;
    constexpr auto time = ValueKind::TimeOfDay;
    struct Row {
        ValueKind Kind;
        double Low;
        double High;
        int Most;
        const char* Texts;
    };
    // clang-format off
    const Row rows[] = {
        // Kind  Low        High       Most
        {number, 1.7e9,     1.7000004e9,  5, "1700000000 1700000100 1700000200 1700000300 1700000400"},
        {number, 20230101,  20230131,     4, "20230110 20230120 20230130"},
        {number, 1e14,      3e14,         3, "100000000000000 200000000000000 300000000000000"},
        {number, 1e17,      1.1e17,       3, "1.00e+17 1.05e+17 1.10e+17"},
        {number, 1e-300,    3e-300,       3, "1e-300 2e-300 3e-300"},
        {number, -1.7e308,  1.7e308,      4, "-1e+308 0 1e+308"},
        {number, -4.3,      4.3,          4, "-4 0 4"},
        {number, 5e-324,    1e-320,       5, "0"},
        {number, 0,         10,          11, "0 1 2 3 4 5 6 7 8 9 10"},
        {number, 0,         10,          10, "0 2 4 6 8 10"},
        {number, -0.3,      0.35,         5, "-0.2 0.0 0.2"},
        {number, 2.5,       2.5,          5, "2.5"},
        {number, 1,         1 + 2.3e-16,  5, "1"},
        {number, 1e9,       3e9,          5, "1000000000 1500000000 2000000000 2500000000 3000000000"},
        {number, NAN,       NAN,          5, ""},
        {date,   19782,     19788,       10, "2024-02-29 2024-03-01 2024-03-02 2024-03-03 2024-03-04 2024-03-05 2024-03-06"},
        {date,   19722,     19850,        6, "2024-01 2024-02 2024-03 2024-04 2024-05"},
        {date,   17900,     19850,        4, "2020 2022 2024"},
        {date,   -25567,    25567,        5, "1900 1950 2000"},
        {date,   19725,     19753,        2, "2024-01-03 2024-01-18"},
        {date,   19782,     19810,        5, "2024-03-04 2024-03-11 2024-03-18 2024-03-25"},
        {date,   19782,     19782,        5, "2024-02-29"},
        {date,   1e9,       2e9,          3, "1000000000 1500000000 2000000000"},
        {stamp,  1709164800, 1709294400,  5, "2024-02-29 12:00 2024-03-01 12:00"},
        {stamp,  1709186400, 1709208000,  4, "2024-02-29 06:00 08:00 10:00 12:00"},
        {time,   32400,     73800,        5, "09:00 12:00 15:00 18:00"},
        {time,   32400,     32420,        5, "09:00:00 09:00:05 09:00:10 09:00:15 09:00:20"},
        {time,   0,         400000,       4, "00:00 48:00 96:00"},
    };
    // clang-format on
    for (const Row& row : rows) {
        EXPECT_EQ(Joined(RoundValues(row.Low, row.High, row.Most, row.Kind)), row.Texts);
        if (row.Kind == number) {
            EXPECT_EQ(Joined(RoundNumbers(row.Low, row.High, row.Most)), row.Texts);
        }
    }
    std::mt19937 random(5);
    std::uniform_real_distribution<double> share;
    for (int trial = 0; trial < 3000; ++trial) {
        const double scale = std::pow(10.0, share(random) * 600 - 300);
        const double low = (share(random) - 0.5) * scale;
        const double high = low + share(random) * scale;
        const int most = 2 + static_cast<int>(random() % 10);
        for (const ValueKind kind : {number, date, time}) {
            const std::vector<AxisMark> marks = RoundValues(low, high, most, kind);
            EXPECT_LE(marks.size(), static_cast<std::size_t>(most));
            EXPECT_FALSE(marks.empty()) << low << " to " << high << " most " << most;
            const double slack = (high - low) * 1e-6;
            std::set<QString> texts;
            for (const AxisMark& mark : marks) {
                EXPECT_TRUE(low - slack <= mark.At && mark.At <= high + slack) << mark.At;
                texts.insert(mark.Text);
            }
            EXPECT_EQ(texts.size(), marks.size()) << Joined(marks) << " from " << low << " to " << high;
        }
    }
}

TEST(NumberTexts, KeepWholeNumbersAndDecimals) {
    EXPECT_EQ(NumberText(20230103), "20230103");
    EXPECT_EQ(NumberText(123456789012345), "123456789012345");
    EXPECT_EQ(NumberText(20230103.456), "20230103.46");
    EXPECT_EQ(NumberText(-0.0), "0");
    EXPECT_EQ(NumberText(0.000123456789), "0.000123457");
    EXPECT_EQ(NumberText(1e300), "1e+300");
    EXPECT_EQ(ValueText(19782.4, ValueKind::Date), "2024-02-29");
    EXPECT_EQ(DistanceText(12.5, ValueKind::Date), "12.5 days");
    EXPECT_EQ(DistanceText(90, ValueKind::TimeOfDay), "00:01:30");
}

}  // namespace
}  // namespace quillara
