#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// A folder of a test's own that goes, with all in it, at the end of the test.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "quillara-test-XXXXXX").string();
        Folder = mkdtemp(name.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(Folder); }

    [[nodiscard]] std::string Path(const std::string& name) const { return Folder / name; }
    /// Writes a file; gives its path.
    std::string Put(const std::string& name, const std::string& content) const {
        // Some file systems bring a file that is written over to the disk at once; a new one costs nothing.
        std::filesystem::remove(Path(name));
        std::ofstream(Path(name), std::ios::binary) << content;
        return Path(name);
    }
    /// How many files there are, hidden ones too.
    [[nodiscard]] std::size_t Files() const {
        const std::filesystem::directory_iterator files(Folder);
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

  private:
    std::filesystem::path Folder;
};

/// The bytes of a file; none when there is no such file.
inline std::string ContentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Tests on the folder of real data that the environment names; skipped without it.
struct RealData : testing::Test {
    void SetUp() override {
        if (std::getenv("QUILLARA_TEST_DATA") == nullptr) {
            GTEST_SKIP() << "QUILLARA_TEST_DATA names no folder of real data";
        }
    }
    static std::string File(const std::string& name) { return std::getenv("QUILLARA_TEST_DATA") + ("/" + name); }
};
