#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "tests/workbench/hosting/TestAnalysis.h"
#include "workbench/hosting/LongTexts.h"
#include "workbench/hosting/NewTable.h"

namespace quillara {
namespace {

/// The variables x, t (texts), and w, the declared weight.
DataTable Input() {
    DataTable table = TableOf({Numbers("x", {1, Missing}), Texts("t", {"no", "yes"}), Numbers("w", {1, 2})});
    table.FileName = "cars.csv";
    table.Weight = 2;
    table.Variables[0].LongName = "the label of x";
    table.Variables[0].Format = "F8.2";
    table.Variables[0].MissingCode = -77;
    table.Variables[0].Labels[1] = {"one", "the first"};
    return table;
}

std::string Row(const std::string& name, const std::vector<double>& values) {
    std::string row = name;
    row.resize(name.size() + sizeof(double) * values.size());
    std::memcpy(row.data() + name.size(), values.data(), sizeof(double) * values.size());
    return row;
}

/// A table as text, a line a case: "ann 1 2".
std::string Shown(const DataTable& table) {
    std::string text;
    for (std::size_t i = 0; i < static_cast<std::size_t>(table.Cases); ++i) {
        text += table.CaseNames.empty() ? "" : table.CaseNames[i];
        for (const Variable& variable : table.Variables) {
            text += " " + testing::PrintToString(variable.Values[i]);
        }
        text += "\n";
    }
    return text;
}

struct WrittenTables : testing::Test {
    WrittenTables() {
        Host.Document.Services.TakeData = [this](auto table) { Taken.push_back(table); };
        std::memset(Header, 'h', sizeof(Header));
    }

    short Begin(const std::vector<short>& list, int nameWidth) {
        std::uint32_t position = 99;
        const auto count = static_cast<int>(list.size());
        const std::int32_t place = 0;
        const short handle = list.size() == 1
                                 ? Host.Analysis->SubsetAndAddEx(25, "", count, 0, list.data(), 1000000, "", "", 128,
                                                                 Header, nameWidth, &position)
                                 : Host.Analysis->SubsetAndAddEx(25, "", count, 0, list.data(), 2, "", "", 128, Header,
                                                                 nameWidth, &position, &place, &place, 1);
        EXPECT_EQ(position, 0U);
        return handle;
    }
    int Put(short handle, const std::string& bytes, std::uint32_t position) {
        return Host.Analysis->PutDataF(handle, bytes.data(), position, static_cast<int>(bytes.size()));
    }

    const DataTable Table = Input();
    TestHost Host{Table};
    char Header[80] = {};
    std::vector<std::shared_ptr<const DataTable>> Taken;
};

TEST_F(WrittenTables, KeepTheDictionaryOfTheirVariables) {
    Host.Analysis->MatClo(Begin({3, 0, 1, 2}, 0));
    Host.Analysis->MatClo(Begin({1}, 0));
    ASSERT_EQ(Taken.size(), 2U);
    const DataTable& table = *Taken[0];
    EXPECT_EQ(table.FileName + ", " + Taken[1]->FileName, "subset of cars.csv, subset 2 of cars.csv");
    EXPECT_EQ(table.Header, std::string(80, 'h'));
    ASSERT_EQ(table.Variables.size(), 3U);
    EXPECT_EQ(table.Weight, 0U);
    EXPECT_EQ(Taken[1]->Weight, std::nullopt);
    const Variable& x = table.Variables[1];
    EXPECT_EQ(x.Name + x.LongName + x.Format, "xthe label of xF8.2");
    EXPECT_EQ(x.MissingCode, -77);
    EXPECT_EQ(*x.LabelOf(1) + ", " + *x.DescriptionOf(1), "one, the first");
    EXPECT_EQ(table.Variables[2].Kind, ValueKind::Text);
    EXPECT_EQ(table.Variables[2].Texts, Table.Variables[1].Texts);
}

TEST_F(WrittenTables, TakeTheStreamInPiecesOfAnyLength) {
    const std::string key = LongTextKey("a name longer than a key");
    const std::string stream =
        Row("bob       ", {-77, 5, 1.5}) + Row(key + "  ", {1, 6, 2}) + Row(std::string(10, '\0'), {2, 7, 3}) + "rest";
    for (std::size_t length = 1; length <= stream.size(); ++length) {
        const short handle = Begin({1, 0, 3}, 10);
        for (std::size_t position = 0; position < stream.size(); position += length) {
            ASSERT_EQ(Put(handle, stream.substr(position, length), static_cast<std::uint32_t>(position)), 0);
        }
        Host.Analysis->MatClo(handle);
        ASSERT_EQ(Shown(*Taken.back()), "bob -77 1.5\na name longer than a key 1 2\n 2 3\n") << length;
    }
}

TEST_F(WrittenTables, KeepTheirColumnsInTheFormOfTheirVariables) {
    DataTable table = TableOf({Numbers("narrow", {}), Numbers("wide", {}), Numbers("whole", {}), Numbers("any", {})});
    std::vector<double> values[4];
    std::string stream;
    for (int row = 0; row < 100'000; ++row) {
        const double drawn[] = {row % 3 / 2.0, row % 1000 / 8.0, 1.0 * row, row / 3.0};
        for (std::size_t i = 0; i < 4; ++i) {
            values[i].push_back(drawn[i]);
        }
        stream += row < 90'000 ? Row("", {std::begin(drawn), std::end(drawn)}) : "";
    }
    for (std::size_t i = 0; i < 4; ++i) {
        table.Variables[i].Values = ColumnBuilder(values[i]).Finish();
    }
    table.Cases = 100'000;
    const std::array<short, 4> all{1, 2, 3, 4};
    NewTable written(table, {"", "", all, 0, table.Cases});
    EXPECT_TRUE(written.Write(stream + Row("", {9, 9, 9}), 0));
    const auto made = written.Finish(table, nullptr);
    for (std::size_t i = 0; i < 4; ++i) {
        values[i].resize(90'000);
        EXPECT_TRUE(std::ranges::equal(made->Variables[i].Values, values[i]));
        EXPECT_EQ(made->Variables[i].Values.Stored().Form, table.Variables[i].Values.Stored().Form);
    }
}

TEST_F(WrittenTables, RefuseWhatIsNotTheNextPartOfAStream) {
    const short handle = Begin({1}, 0);
    const short other = Begin({1}, 0);
    EXPECT_NE(handle, other);
    EXPECT_NE(Put(handle, "bytes", 1), 0);
    EXPECT_EQ(Put(handle, Row("", {5}), 0), 0);
    EXPECT_NE(Put(handle, "bytes", 0), 0);
    EXPECT_NE(Host.Analysis->PutDataF(handle, "", 8, -1), 0);
    for (const short unknown : {short{0}, short{-1}, static_cast<short>(other + 1)}) {
        EXPECT_NE(Put(unknown, "bytes", 0), 0);
        Host.Analysis->MatClo(unknown);
        Host.Analysis->AbortOutput(unknown);
    }
    Host.Analysis->AbortOutput(other);
    EXPECT_NE(Put(other, "bytes", 0), 0);
    Host.Analysis->MatClo(other);
    EXPECT_TRUE(Taken.empty());
    Host.Analysis->MatClo(handle);
    EXPECT_NE(Put(handle, "bytes", 8), 0);
    ASSERT_EQ(Taken.size(), 1U);
    EXPECT_EQ(Shown(*Taken[0]), " 5\n");
    EXPECT_EQ(Begin({}, 0) + Begin({1}, -1), 0);
}

TEST_F(WrittenTables, CellsAreReadAsTheyAreStored) {
    double value = 0;
    Host.Analysis->ReadTableValue(0, 1, &value);
    EXPECT_EQ(value, Table.Variables[0].Values[1]);
    Host.Analysis->ReadTableValue(2, 0, &value);
    EXPECT_EQ(value, 1);
}

}  // namespace
}  // namespace quillara
