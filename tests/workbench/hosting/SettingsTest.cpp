#include <gtest/gtest.h>

#include <climits>

#include "tests/workbench/Files.h"
#include "tests/workbench/hosting/TestAnalysis.h"
#include "workbench/hosting/SettingsStore.h"

namespace quillara {
namespace {

struct Settings : testing::Test {
    static std::int32_t Read(CAnalysisSupport& analysis, const char* key) {
        const std::int32_t reserved = 0;
        std::int32_t value = -1;
        analysis.GetInitKeyword(0, key, &reserved, &value);
        return value;
    }
    static void Write(CAnalysisSupport& analysis, const char* key, std::int32_t value) {
        const std::int32_t reserved = 0;
        analysis.PutInitKeyword(0, key, &reserved, &value);
    }

    const DataTable Table = TableOf({Numbers("x", {1})});
    const TemporaryFolder Folder;
    const std::string Path = Folder.Path("config/quillara/settings.json");
};

TEST_F(Settings, OutliveTheAnalysisInTheStoreOnly) {
    SettingsStore store(Path);
    for (SettingsStore* used : {static_cast<SettingsStore*>(nullptr), &store}) {
        for (const int stored : {0, used != nullptr ? 7 : 0}) {
            TestHost host(Table);
            host.Document.Services.Settings = used;
            EXPECT_EQ(Read(*host.Analysis, "key"), stored);
            Write(*host.Analysis, "key", 7);
            EXPECT_EQ(Read(*host.Analysis, "key"), 7);
            EXPECT_EQ(Read(*host.Analysis, "Key"), 0);
        }
    }
    TestAnalysis unbound;
    Write(unbound, "key", 3);
    EXPECT_EQ(Read(unbound, "key"), 0);
}

TEST_F(Settings, AreReadBackFromTheFile) {
    SettingsStore store(Path);
    store.Put("lowest", INT_MIN);
    store.Put("highest", INT_MAX);
    store.Put("a \"strange\" \xFFkey", 1);
    store.Put("zero", 1);
    store.Put("zero", 0);
    const SettingsStore again(Path);
    EXPECT_EQ(again.Get("lowest"), INT_MIN);
    EXPECT_EQ(again.Get("highest"), INT_MAX);
    EXPECT_EQ(again.Get("zero"), 0);
    const std::string written = Folder.Put("mark", "");
    store.Put("zero", 0);
    EXPECT_LE(std::filesystem::last_write_time(Path), std::filesystem::last_write_time(written));
}

TEST_F(Settings, DamagedFilesAndFailedWritesAreNoReasonToStop) {
    const std::pair<std::string, std::int32_t> contents[] = {
        {R"({"key": 5, "text": "x"})", 5},
        {"", 0},
        {R"({"key": 5)", 0},
        {"[5]", 0},
        {R"({"key": 5.5})", 0},
        {R"({"key": 4294967297})", 0},
        {R"({"key": true})", 0},
        {R"({"key": 18446744073709551615})", 0},
    };
    for (const auto& [content, value] : contents) {
        SettingsStore store(Folder.Put("settings.json", content));
        EXPECT_EQ(store.Get("key"), value) << content;
        store.Put("key", 6);
        EXPECT_EQ(SettingsStore(Folder.Path("settings.json")).Get("key"), 6);
    }
    for (const std::string& path : {std::string(), Folder.Path("."), Folder.Path("settings.json/below")}) {
        SettingsStore store(path);
        store.Put("key", 6);
        EXPECT_EQ(store.Get("key"), 6);
    }
}

TEST(SettingsPath, LiesInTheConfigurationFolderOfTheUser) {
    const struct {
        const char *Config, *Home, *Path;
    } environments[] = {
        {"/c", "/h", "/c/quillara/settings.json"},
        {"", "/h", "/h/.config/quillara/settings.json"},
        {"relative", "/h", "/h/.config/quillara/settings.json"},
        {"", "", ""},
    };
    const std::string home = std::getenv("HOME") == nullptr ? "" : std::getenv("HOME");
    for (const auto& [config, userHome, path] : environments) {
        setenv("XDG_CONFIG_HOME", config, 1);
        setenv("HOME", userHome, 1);
        EXPECT_EQ(SettingsStore::UserPath(), path);
    }
    setenv("HOME", home.c_str(), 1);
    unsetenv("XDG_CONFIG_HOME");
}

}  // namespace
}  // namespace quillara
