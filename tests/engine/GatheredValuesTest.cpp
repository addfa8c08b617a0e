// Values of rows brought together in registers, against a look at each.

#include "engine/GatheredValues.h"

#include "tests/engine/RandomTables.h"

namespace drilltest {

using namespace drilldown;

namespace {

constexpr std::size_t Rows = 2000;

/// A column of a form whose codes are that many.
struct DrawnColumn {
    DrawnColumn(Random& random, ColumnForm form, std::size_t codes) : Values(codes), Form(form) {
        std::ranges::generate(Values, [&] { return std::ldexp(static_cast<double>(Pick(random, 1000)), -3); });
        for (std::size_t row = 0; row < Rows; ++row) {
            const std::size_t code = Pick(random, codes);
            Doubles.push_back(Values[code]);
            Integers.push_back(static_cast<std::int32_t>(code) - 7);
            Bytes.push_back(static_cast<std::uint8_t>(code));
            Words.push_back(static_cast<std::uint16_t>(code));
        }
    }
    TableColumn Column() const {
        const void* entries[] = {Doubles.data(), Integers.data(), Bytes.data(), Words.data()};
        return {Form, entries[static_cast<std::size_t>(Form)], Values.data(), static_cast<std::int32_t>(Values.size())};
    }

    std::vector<double> Values;
    std::vector<double> Doubles;
    std::vector<std::int32_t> Integers;
    std::vector<std::uint8_t> Bytes;
    std::vector<std::uint16_t> Words;
    ColumnForm Form;
};

}  // namespace

TEST(GatheredValues, AreThoseOfTheRowsInTheirOrder) {
    Random random(7);
    constexpr std::size_t sizes[] = {1, 8, 9, 16, 17, 32, 33, 64, 65, 250};
    for (int round = 0; round < 3000 && !HasFailure(); ++round) {
        const auto form = static_cast<ColumnForm>(Pick(random, 4));
        const DrawnColumn column(random, form, sizes[Pick(random, std::size(sizes))]);
        const std::size_t sparse = 1 + Pick(random, 9);
        std::vector<std::uint64_t> bits(Rows / 64 + 1);
        std::vector<std::int32_t> list;
        for (std::size_t row = 0; row < Rows; ++row) {
            if (Chance(random, sparse)) {
                bits[row / 64] |= std::uint64_t{1} << row % 64;
                list.push_back(static_cast<std::int32_t>(row));
            }
        }
        WeightedRows rows{nullptr, nullptr, Rows};
        if (Chance(random, 4)) {
            rows.First = 0;
        } else if (!list.empty()) {
            rows = {list.data(), nullptr, list.size(), 0, Chance(random, 3) ? nullptr : bits.data()};
        }
        const std::size_t begin = Pick(random, rows.Count);
        const WeightedRows part = rows.Part(begin, 1 + Pick(random, std::min(GatheredValuesLimit, rows.Count - begin)));
        std::array<double, GatheredValuesRoom> room{};
        const double* values = GatherValues(column.Column(), WithoutList(part), room.data());
        for (std::size_t i = 0; i < part.Count; ++i) {
            ASSERT_EQ(values[i], column.Column().At(part.RowAt(i))) << "round " << round << ", place " << i;
        }
    }
}

}  // namespace drilltest
