#include "workbench/formats/DataFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "tests/workbench/formats/FormatsTesting.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/FileReplacement.h"

namespace quillara {
namespace {

std::string TextAfterRoundTrip(const std::string& text) {
    const TemporaryFolder folder;
    WriteDataFile(ReadDataFile(folder.Put("in.csv", text)), folder.Path("out.CSV"));
    return ContentOf(folder.Path("out.CSV"));
}

TEST(DataFile, CsvComesBackAsItWas) {
    const std::string text =
        "n,\"a,b\",date,\"q\"\"\"\n"
        "0.1,x,2024-02-29,\"1;\"\"2\"\n"
        ",,,\n"
        "-12345678.9,é,1969-12-31,\"two\nlines\"\n"
        "1e+300,z,0001-01-01,w\n";
    EXPECT_EQ(TextAfterRoundTrip(text), text);
    EXPECT_EQ(TextAfterRoundTrip("a\n\"1;x\"\n\n2\n"), "a\n\"1;x\"\n\n2\n");
}

TEST(DataFile, LabelsAreWrittenWhenEachValueHasItsOwn) {
    const TemporaryFolder folder;
    DataTable table = ReadDataFile(folder.Put("in.csv", "a,t\n1,f\n2,m\n,f\n"));
    const auto written = [&] {
        WriteDataFile(table, folder.Path("out.csv"));
        return ContentOf(folder.Path("out.csv"));
    };
    table.Variables[0].Labels = {{1, {"one", ""}}, {2, {"two, too", ""}}};
    table.Variables[1].Labels = {{1, {"Female", ""}}};
    EXPECT_EQ(written(), "a,t\none,Female\n\"two, too\",m\n,Female\n");
    table.Variables[0].Labels.erase(2);
    table.Variables[1].Labels[2].Label = "Female";
    EXPECT_EQ(written(), "a,t\n1,f\n2,m\n,f\n");
}

TEST(DataFile, ContentMustBeWhatTheNameSays) {
    const TemporaryFolder folder;
    EXPECT_EQ(ShowFile(folder.Put("a.csv", "$FL2@(#) ...")),
              "\"@\" isn't what its name says: its content is that of a sav file.");
    EXPECT_EQ(ShowFile(folder.Put("b.sav", "PK\x03\x04 ...")),
              "\"@\" isn't what its name says: its content is that of a zip file.");
    EXPECT_EQ(ShowFile(folder.Path("none.csv")), "\"@\" can't be read: No such file or directory.");
    EXPECT_EQ(ShowFile(folder.Path("")), "\"@\" can't be read: Is a directory.");
    for (const char* extension : {"sav", "zsav", "por", "dta", "sas7bdat", "xpt"}) {
        const std::string path = folder.Put(std::string("t.") + extension, "a,b\n1,2\n");
        EXPECT_EQ(ShowFile(path).find("\"@\" can't be read; it is damaged"), 0U) << ShowFile(path);
    }
}

TEST(DataFile, OnlyCsvIsWritten) {
    const TemporaryFolder folder;
    try {
        WriteDataFile({}, folder.Path("a.sav"));
        FAIL();
    } catch (const DataError& error) {
        EXPECT_NE(std::string(error.what()).find("can only write csv so far"), std::string::npos);
    }
    EXPECT_EQ(folder.Files(), 0U);
}

/// No file of this process can grow beyond a size, as on a full disk.
class SmallDisk {
  public:
    explicit SmallDisk(rlim_t size) : OldHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &Old);
        const rlimit small = {size, Old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &Old);
        std::signal(SIGXFSZ, OldHandler);
    }

  private:
    rlimit Old{};
    void (*OldHandler)(int);
};

TEST(FileReplacement, FailureLeavesTheOldFileWhole) {
    const TemporaryFolder folder;
    const std::string path = folder.Put("a.csv", "old");
    {
        const SmallDisk disk(1000);
        EXPECT_THROW(ReplaceFile(path, std::string(5000, 'x')), DataError);
    }
    EXPECT_EQ(ContentOf(path), "old");
    EXPECT_THROW(ReplaceFile(folder.Path("none/a.csv"), "new"), DataError);
    EXPECT_THROW(ReplaceFile(folder.Path(""), "new"), DataError);
    EXPECT_THROW(ReplaceFile("/dev/full", "new"), DataError);
    EXPECT_EQ(folder.Files(), 1U);
}

TEST(FileReplacement, KeepsLinksAndPermissions) {
    const TemporaryFolder folder;
    const std::string path = folder.Put("a.csv", "old");
    std::filesystem::permissions(path, std::filesystem::perms{0640});
    std::filesystem::create_symlink(path, folder.Path("link.csv"));
    ReplaceFile(folder.Path("link.csv"), "new");
    EXPECT_EQ(ContentOf(path), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link.csv")));
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms{0640});
    EXPECT_EQ(folder.Files(), 2U);
}

}  // namespace
}  // namespace quillara
