// Random delimited texts, sound and broken, are read as the plain reader reads them: with one, two and more threads,
// cut into parts anywhere, from a file and from memory.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <random>
#include <sstream>

#include "tests/workbench/Files.h"
#include "tests/workbench/formats/PlainDelimitedTable.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/DelimitedTable.h"

namespace quillara {
namespace {

using Random = std::mt19937_64;

/// All of a table, its numbers bit for bit; of an error its text.
template <typename Reading>
std::string Outcome(Reading read) {
    std::ostringstream shown;
    try {
        const DataTable table = read();
        shown << table.FileName << " " << table.Cases;
        for (const Variable& variable : table.Variables) {
            shown << "\n"
                  << variable.Name << " " << static_cast<int>(variable.Kind) << " " << variable.MissingCode << ":";
            for (const double value : variable.Values) {
                shown << " " << std::hex << std::bit_cast<std::uint64_t>(value);
            }
            for (const std::string& text : variable.Texts) {
                shown << "|" << text;
            }
        }
    } catch (const DataError& error) {
        shown << error.what();
    } catch (const UsageError& error) {
        shown << "usage: " << error.what();
    }
    return shown.str();
}

/// Makes one random text after another; what a seed gives is the same everywhere.
class TextMaker {
  public:
    explicit TextMaker(std::uint64_t seed) : Chance(seed) {}

    std::string Make() {
        const std::size_t variables = 1 + Below(OneIn(8) ? 40 : 6);
        const std::size_t records = Below(OneIn(6) ? 4000 : 60);
        Separator = Some(",;\t|");
        Break = Choose({"\n", "\r\n", "\r", "\n"});
        Quoting = Below(4);
        std::vector<std::size_t> kinds(variables);
        std::ranges::generate(kinds, [&] { return Below(9); });
        std::string text = OneIn(8) ? "\xEF\xBB\xBF" : "";
        for (std::size_t record = 0; record < records + 1; ++record) {
            for (std::size_t i = 0; i < variables; ++i) {
                text += i == 0 ? "" : std::string(1, Separator);
                text += record == 0 ? Field("v" + std::to_string(Below(2 * variables))) : Field(Value(kinds[i]));
            }
            text += OneIn(30) ? Choose({"\n", "\r\n", "\r", "\n\n", "\r\r\n"}) : Break;
        }
        return OneIn(3) ? Broken(text) : text;
    }

    std::size_t Below(std::size_t limit) { return Chance() % limit; }
    bool OneIn(std::size_t times) { return Below(times) == 0; }

  private:
    char Some(std::string_view characters) { return characters[Below(characters.size())]; }
    std::string Choose(const std::vector<std::string>& texts) { return texts[Below(texts.size())]; }

    std::string Value(std::size_t kind) {
        if (OneIn(12)) {
            return Choose({"", "NA", "?", ".", " ", "null"});
        }
        if (OneIn(kind < 6 ? 800 : 5000)) {
            kind = Below(9);  // a field that the others don't lead to expect
        }
        switch (kind) {
            case 0:
                return std::to_string(static_cast<int>(Below(200)) - 100);
            case 1:
                return std::to_string(Below(1000000)) + Choose({"", ".", ",5", ".25", "e3", "E-400", ".000001"});
            case 2:
                return "0." + std::to_string(Chance());
            case 3:
                return Choose({"1", "-0", "+7", "1e308", "3000000000", "-2147483648", "1e400"});
            case 4:
                return "20" + std::to_string(10 + Below(90)) + "-0" + std::to_string(1 + Below(9)) + "-" +
                       Choose({"01", "28", "30"});
            case 5:
                return "2024-02-" + std::to_string(10 + Below(20));
            case 6:
                return std::to_string(Chance());
            case 7:
                return Choose({"a", "b", "Zürich", "a b", "99", "\x01", "x\x01y", "007", "\xEF\xBF\xBD"});
            default:
                return Choose({"one", "two,", "semi;colon", "tab\tbed", "say \"so\"", "a|b", "line\nbreak",
                               "cr\rlf\r\n", "\"", " pad "});
        }
    }

    std::string Field(const std::string& value) {
        const bool mustBeQuoted = value.find_first_of("\"\n\r;,|\t") != std::string::npos;
        if (!(mustBeQuoted ? !OneIn(200) : Quoting == 0 || (Quoting == 1 && OneIn(3)))) {
            return OneIn(40) ? " " + value + "\t" : value;
        }
        std::string field = "\"";
        for (const char character : value) {
            field += character == '"' ? "\"\"" : std::string(1, character);
        }
        return field + (OneIn(40) ? "\" tail" : "\"");
    }

    /// Bytes changed, dropped or put in.
    std::string Broken(std::string text) {
        for (std::size_t i = 0; i < 1 + Below(3) && !text.empty(); ++i) {
            const std::size_t place = Below(text.size());
            const std::string bytes =
                Choose({"\"", "\xE9", std::string(1, '\0'), ",", "\n", "\r", ";", "\x80\x80", "", "\"\""});
            text.replace(place, OneIn(2) ? 1 : 0, bytes);
        }
        return text;
    }

    Random Chance;
    char Separator = ',';
    std::string Break;
    std::size_t Quoting = 0;
};

ReadOptions SomeOptions(TextMaker& maker) {
    ReadOptions options{.HasHeader = !maker.OneIn(5), .KeepsTexts = true};
    options.Decimal = maker.OneIn(6) ? ',' : '.';
    if (maker.OneIn(4)) {
        options.Separator = std::string_view(",;\t|x\x01\"")[maker.Below(7)];
    }
    if (maker.OneIn(6)) {
        options.MissingTexts = {{"99", "a", "2024-02-15", "\xEF\xBF\xBD", "Zürich"}};
    }
    if (maker.OneIn(10)) {
        options.Encoding = maker.OneIn(2) ? "latin1" : "utf-8";
    }
    return options;
}

TEST(RandomTexts, AreReadAsThePlainReaderReadsThem) {
    const TemporaryFolder folder;
    for (std::uint64_t seed = 1; seed <= 600; ++seed) {
        TextMaker maker(seed);
        const std::string path = folder.Put("t.csv", maker.Make());
        ReadOptions options = SomeOptions(maker);
        const std::string expected = Outcome([&] { return PlainDelimitedTable(path, options); });
        for (const std::size_t threads : {1U, 2U, 5U}) {
            options.Threads = threads;
            options.BytesOfPart = maker.OneIn(3) ? 0 : 1 + maker.Below(maker.OneIn(2) ? 50 : 5000);
            ASSERT_EQ(Outcome([&] { return ReadDelimitedTable(path, options); }), expected)
                << "seed " << seed << ", " << threads << " threads, parts of " << options.BytesOfPart;
        }
    }
}

// Numbers that steps, codes of a byte, of two and none hold, in one part of the file or in all.
TEST(RandomTexts, ManyRecordsGetTheNarrowestForms) {
    constexpr std::size_t records = 100000;
    Random chance(7);
    std::string text = "id,firm,price,small,wide,share,real,day,sentinel,late,name\n";
    for (std::size_t i = 0; i < records; ++i) {
        const auto any = [&](std::uint64_t below) { return std::to_string(chance() % below); };
        const std::string day = "20" + std::to_string(10 + i % 80) + "-0" + std::to_string(1 + i % 9) + "-1" + any(10);
        text += std::to_string(5 * i) + "," + std::to_string(70000 + i % 20000) + "," + any(200) + "00," +
                (i % 7 == 0 ? "" : any(60)) + "," + any(100000000) + "," + any(30000) + ".5," + any(900000) + "." +
                any(900000) + "," + day + "," + (i % 1000 == 999 ? "9999-12-31" : day) + "," +
                (i < 90000 ? "1" : any(1000000)) + ",n" + any(70000) + "\n";
    }
    const TemporaryFolder folder;
    const std::string path = folder.Put("t.csv", text);
    const DataTable expected = PlainDelimitedTable(path, {});
    for (const std::size_t threads : {1U, 3U}) {
        const DataTable table = ReadDelimitedTable(path, {.Threads = threads});
        ASSERT_EQ(table.Variables.size(), expected.Variables.size());
        for (std::size_t i = 0; i < table.Variables.size(); ++i) {
            const Variable& read = table.Variables[i];
            EXPECT_EQ(read.Values, expected.Variables[i].Values) << read.Name;
            EXPECT_EQ(read.Texts, expected.Variables[i].Texts) << read.Name;
            EXPECT_EQ(read.MissingCode, expected.Variables[i].MissingCode) << read.Name;
            EXPECT_EQ(read.Values.Stored().Form, expected.Variables[i].Values.Stored().Form) << read.Name;
        }
    }
}

}  // namespace
}  // namespace quillara
