#include "workbench/hosting/VariableNotation.h"

#include <gtest/gtest.h>

#include "tests/workbench/Tables.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

DataTable NamedTable() {
    DataTable table;
    for (const char* name : {"age", "home town", "2", "age", "18-25", "a \"b\"", "na\u00EFve|x", "Sex"}) {
        table.Variables.emplace_back().Name = name;
    }
    return table;
}

std::string NumbersIn(const TwoLists& lists) {
    std::string text;
    for (const short number : lists[0]) {
        text += std::to_string(number) + ' ';
    }
    text += '|';
    for (const short number : lists[1]) {
        text += ' ' + std::to_string(number);
    }
    return text;
}

TEST(VariableNotation, ListsAreReadAndWritten) {
    const DataTable table = NamedTable();
    // clang-format off
    const struct { const char* Text; const char* Numbers; const char* Again; } rows[] = {
        {"",                                "|",             ""},
        {" | ",                             "|",             ""},
        {"age",                             "1 |",           "age"},
        {"|age 8",                          "| 1 8",         "| age Sex"},
        {"sex, AGE; 2|1-3",                 "8 1 2 | 1 2 3", "Sex age \"home town\" | age \"home town\" \"2\""},
        {"\"2\" 4 \"18-25\"",           "3 4 5 |",       "\"2\" 4 \"18-25\""},  // the second of a name by its number
        {"\"a \"\"b\"\"\" \"na\u00EFve|x\"", "6 7 |", "\"a \"\"b\"\"\" \"na\u00EFve|x\""},
    };
    // clang-format on
    for (const auto& row : rows) {
        const TwoLists lists = ListsIn(table, row.Text);
        EXPECT_EQ(NumbersIn(lists), row.Numbers) << row.Text;
        EXPECT_EQ(TextOfLists(table, lists), row.Again) << row.Text;
    }
    for (const char* text : {"0", "9", "7-9", "3-2", "-1", "nobody", "home town", "\"age", "1 | 2 | 3", "1 | 2 |"}) {
        EXPECT_THROW(static_cast<void>(ListsIn(table, text)), UsageError) << text;
    }
}

}  // namespace
}  // namespace quillara
