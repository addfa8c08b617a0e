#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <random>
#include <set>
#include <string>

#include "tests/workbench/Tables.h"
#include "workbench/data/ColumnBuilder.h"
#include "workbench/data/MissingCodes.h"
#include "workbench/data/TextColumnBuilder.h"

namespace quillara {
namespace {

using Random = std::mt19937_64;
using Doubles = std::vector<double>;

constexpr std::int32_t LeastInteger = std::numeric_limits<std::int32_t>::min();
const double OtherNaN = std::bit_cast<double>(0xFFF8000000000123);

double Below(std::uint64_t count, Random& random) {
    return static_cast<double>(random() % count);
}

/// What the values of a column are like, and the form that suits 200,000 of them.
struct Values {
    const char* Name;
    ColumnForm Form;
    std::function<double(std::size_t, Random&)> Draw;  // of a row
};

// clang-format off
const std::vector<Values> AllValues = {
    {"one",               ColumnForm::Codes8,   [](auto, auto&)        { return 7.5; }},
    {"256",               ColumnForm::Codes8,   [](auto i, auto&)      { return static_cast<double>(i % 256); }},
    {"257",               ColumnForm::Codes16,  [](auto i, auto&)      { return static_cast<double>(i % 257) / 2; }},
    {"few at random",     ColumnForm::Codes16,  [](auto, auto& random) { return Below(3000, random) / 8; }},
    {"65536",             ColumnForm::Codes16,  [](auto i, auto&)      { return static_cast<double>(i % 65536) / 2; }},
    {"65537",             ColumnForm::Integers, [](auto i, auto&)      { return static_cast<double>(i % 65537); }},
    {"65537 and NaN",     ColumnForm::Doubles,  [](auto i, auto&)      { return i == 9 ? Missing : static_cast<double>(i % 65537); }},
    {"largest integers",  ColumnForm::Integers, [](auto i, auto&)      { return static_cast<double>(i % 2 == 0 ? LeastInteger + 1 + static_cast<int>(i) : std::numeric_limits<int>::max() - static_cast<int>(i)); }},
    {"one too low",       ColumnForm::Doubles,  [](auto i, auto&)      { return static_cast<double>(LeastInteger + static_cast<int>(i)); }},
    {"a late fraction",   ColumnForm::Doubles,  [](auto i, auto&)      { return i == 199999 ? 0.5 : static_cast<double>(i); }},
    {"a late zero below", ColumnForm::Doubles,  [](auto i, auto&)      { return i == 150000 ? -0.0 : static_cast<double>(i); }},
    {"zeros and NaN",     ColumnForm::Codes8,   [](auto, auto& random) { return std::vector{0.0, -0.0, Missing, -Missing, OtherNaN, Infinity, -Infinity, 5e-324}[random() % 8]; }},
    {"fractions",         ColumnForm::Doubles,  [](auto, auto& random) { return std::bit_cast<double>(random()); }},
};
// clang-format on

Doubles Drawn(const Values& values, std::size_t rows) {
    Random random(rows);
    Doubles drawn;
    for (std::size_t i = 0; i < rows; ++i) {
        drawn.push_back(values.Draw(i, random));
    }
    return drawn;
}

/// How values reach a builder.
// clang-format off
const std::vector<std::function<void(ColumnBuilder&, const Doubles&)>> Ways = {
    [](ColumnBuilder& builder, const Doubles& values) { std::ranges::for_each(values, [&](double value) { builder.Append(value); }); },
    [](ColumnBuilder& builder, const Doubles& values) { builder.Reserve(values.size()); builder.Append(values); },
    [](ColumnBuilder& builder, const Doubles& values) { builder = ColumnBuilder(values); },
    [](ColumnBuilder& builder, const Doubles& values) { builder.Append(values); builder.Append(values); builder.Shorten(values.size()); },
    [](ColumnBuilder& builder, const Doubles& values) { builder.AppendPart(Column(values)); },
    [](ColumnBuilder& builder, const Doubles& values) {
        for (std::size_t first = 0; first < values.size(); first += 60000) {
            builder.AppendPart(ColumnBuilder(Doubles(values.begin() + static_cast<int>(first), values.begin() + static_cast<int>(std::min(first + 60000, values.size())))).Finish());
        }
    },
};
// clang-format on

/// Where a column differs from plain values, bit by bit; empty: nowhere.
std::string DifferenceOf(const Column& column, const Doubles& values) {
    const auto isOther = [](double left, double right) {
        return std::bit_cast<std::uint64_t>(left) != std::bit_cast<std::uint64_t>(right);
    };
    if (column.size() != values.size()) {
        return "size " + std::to_string(column.size());
    }
    std::size_t row = 0;
    std::string differences;
    VisitRuns(column, [&](std::span<const double> run) {
        for (const double value : run) {
            if (differences.size() < 80 && (isOther(value, values[row]) || isOther(column[row], values[row]))) {
                differences += std::to_string(row) + ' ';
            }
            ++row;
        }
    });
    return differences;
}

TEST(Column, OfAnyValuesIsBuiltInItsNarrowestFormAndKeepsEachBit) {
    for (const Values& values : AllValues) {
        for (const std::size_t rows : {0U, 1U, 3U, 1000U, 200000U}) {
            const Doubles plain = Drawn(values, rows);
            Doubles encoded = plain;
            const double code = EncodeMissing(encoded);
            for (std::size_t way = 0; way < Ways.size(); ++way) {
                SCOPED_TRACE(std::string(values.Name) + ", " + std::to_string(rows) + ", " + std::to_string(way));
                ColumnBuilder builder;
                Ways[way](builder, plain);
                EXPECT_EQ(builder.Size(), rows);
                ColumnBuilder withMissing = builder;
                const Column column = builder.Finish();
                EXPECT_EQ(DifferenceOf(column, plain), "");
                EXPECT_EQ(withMissing.EncodeMissing(), code);
                EXPECT_EQ(DifferenceOf(withMissing.Finish(), encoded), "");
                EXPECT_EQ(builder.Size(), 0);
                if (rows == 200000) {
                    EXPECT_EQ(column.Stored().Form, values.Form);
                }
            }
        }
    }
}

TEST(Column, MissingCodesOfWholeNumbersAreFoundAndHaveRoom) {
    for (const auto& [step, form] : {std::pair{10, ColumnForm::Integers}, {1000, ColumnForm::Doubles}}) {
        Doubles values{Missing};
        for (int i = 0; i < 70000; ++i) {
            values.push_back(step * 3 * i);
        }
        Doubles encoded = values;
        Variable variable;
        EncodeNumbers(variable, std::move(values));
        EXPECT_EQ(variable.MissingCode, EncodeMissing(encoded));
        EXPECT_EQ(DifferenceOf(variable.Values, encoded), "");
        EXPECT_EQ(variable.Values.Stored().Form, form) << step;
    }
}

TEST(Column, EachValueThatOccursIsVisited) {
    const Column coded = Column::OfCodes(std::vector<std::uint8_t>{2, 0, 2, 3}, {1.5, 7, -0.0, Missing});
    for (const Column& column : {coded, Column(Doubles(coded.begin(), coded.end()))}) {
        std::multiset<std::string> seen;
        VisitValues(column, [&](double value) { seen.insert(std::to_string(value)); });
        EXPECT_EQ(std::set(seen.begin(), seen.end()), (std::set<std::string>{"-0.000000", "1.500000", "nan"}));
        EXPECT_EQ(seen.size(), column.Doubles().empty() ? 3U : 4U);
        EXPECT_TRUE(HoldsForAll(column, [](double value) { return value != 7; }));
        EXPECT_FALSE(HoldsForAll(column, [](double value) { return value != 0; }));
    }
    EXPECT_EQ(DifferenceOf(coded.WithValues({0, 1, 2, 3}), {2, 0, 2, 3}), "");
}

TEST(Column, BorrowedValuesLiveAsLongAsACopy) {
    auto owner = std::make_shared<Doubles>(Doubles{1, 2, 3});
    const std::weak_ptr<Doubles> watch = owner;
    std::optional<Column> copy;
    {
        const Column column = Column::Borrowed(*owner, owner);
        EXPECT_EQ(column.Doubles().data(), owner->data());
        copy = column;
    }
    owner.reset();
    EXPECT_EQ(DifferenceOf(*copy, {1, 2, 3}), "");
    copy.reset();
    EXPECT_TRUE(watch.expired());
}

/// Texts as variables have them, found plainly.
std::string Plainly(const std::vector<std::optional<std::string>>& texts, double missing) {
    std::set<std::string> distinct;
    for (const auto& text : texts) {
        text ? distinct.insert(*text).first : distinct.end();
    }
    const std::vector<std::string> sorted(distinct.begin(), distinct.end());
    std::string shown;
    for (const auto& text : texts) {
        const auto place = text ? std::ranges::lower_bound(sorted, *text) - sorted.begin() + 1 : 0;
        shown += std::to_string(text ? static_cast<double>(place) : missing) + ' ';
    }
    return shown + testing::PrintToString(sorted);
}

std::string Shown(const Variable& variable) {
    std::string shown;
    for (const double value : variable.Values) {
        shown += std::to_string(value) + ' ';
    }
    return shown + testing::PrintToString(variable.Texts);
}

TEST(TextColumn, OfRandomTextsIsThatOfThePlainWay) {
    for (const std::size_t distinct : {1U, 2U, 50U, 255U, 256U, 3000U, 70000U}) {
        Random random(distinct);
        std::vector<std::optional<std::string>> texts(std::min<std::size_t>(3 * distinct + 5, 100000));
        TextColumnBuilder whole;
        TextColumnBuilder inParts;
        TextColumnBuilder part;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            if (i < distinct || random() % 10 != 0) {
                texts[i] = "t" + std::to_string(i < distinct ? i : random() % distinct);
            }
            for (TextColumnBuilder* builder : {&whole, &part}) {
                texts[i] ? builder->Append(*texts[i]) : builder->AppendMissing();
            }
            if (random() % 100 == 0 || i + 1 == texts.size()) {
                inParts.AppendPart(part);
                part = {};
            }
        }
        for (TextColumnBuilder* builder : {&whole, &inParts}) {
            Variable variable;
            EXPECT_EQ(builder->Size(), texts.size());
            builder->Finish(variable);
            EXPECT_EQ(variable.Kind, ValueKind::Text);
            EXPECT_EQ(Shown(variable) == Plainly(texts, variable.MissingCode), true) << distinct;
            EXPECT_EQ(builder->Size(), 0);
        }
    }
}

}  // namespace
}  // namespace quillara
