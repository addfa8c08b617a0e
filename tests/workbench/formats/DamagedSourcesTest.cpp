// Workbooks, databases and packed text that are cut short anywhere or have a wrong bit in any byte: refused with one
// line, or read as a whole table.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tests/Locations.h"
#include "tests/workbench/formats/FormatsTesting.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/DataFile.h"

namespace quillara {
namespace {

class DamagedSources : public testing::TestWithParam<const char*> {
  protected:
    DamagedSources() {
        std::ifstream file(testing_locations::Sample(std::string("../tests/workbench/formats/sound/") + GetParam()),
                           std::ios::binary);
        Sound = {std::istreambuf_iterator<char>(file), {}};
    }

    /// What reading says of a file with these bytes; nothing when it gives a table.
    std::string Complaint(const std::string& bytes) {
        const std::string path = Folder.Put(GetParam(), bytes);
        try {
            const DataTable table = ReadDataFile(path, {.MaxMemory = std::size_t{4} << 30U, .Threads = 1});
            for (const Variable& variable : table.Variables) {
                EXPECT_EQ(variable.Values.size(), static_cast<std::size_t>(table.Cases));
                for (const double value : variable.Values) {
                    EXPECT_TRUE(variable.Kind != ValueKind::Text || variable.IsMissing(value) ||
                                (value >= 1 && value <= static_cast<double>(variable.Texts.size())));
                }
            }
            return "";
        } catch (const DataError& error) {
            std::string line = error.what();
            EXPECT_TRUE(line.find('\n') == std::string::npos && line.ends_with('.')) << line;
            return line;
        }
    }

    std::string Sound;
    TemporaryFolder Folder;
};

TEST_P(DamagedSources, CutShortAnywhereAreRefused) {
    EXPECT_EQ(Complaint(Sound), "");
    for (std::size_t length = 0; length < Sound.size(); ++length) {
        EXPECT_NE(Complaint(Sound.substr(0, length)), "") << length;
    }
}

TEST_P(DamagedSources, WithAWrongBitAreRefusedOrRead) {
    ASSERT_FALSE(Sound.empty());
    for (std::size_t place = 0; place < Sound.size(); ++place) {
        for (const unsigned bit : {1U << place % 8, 0xFFU}) {
            std::string bytes = Sound;
            bytes[place] = static_cast<char>(static_cast<unsigned char>(bytes[place]) ^ bit);
            static_cast<void>(Complaint(bytes));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Sources, DamagedSources, testing::Values("t.csv.gz", "t.csv.zst", "t.xlsx", "t.ods", "t.db"));

}  // namespace
}  // namespace quillara
