#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "workbench/data/Calendar.h"
#include "workbench/data/DataTable.h"
#include "workbench/formats/DataFile.h"

namespace quillara {

/// A folder that goes, with all in it, at the end of a test.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "formats-XXXXXX").string();
        Folder = mkdtemp(name.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(Folder); }

    [[nodiscard]] std::string Path(const std::string& name) const { return Folder / name; }
    std::string Put(const std::string& name, const std::string& content) const {
        // Some file systems bring a file that is written over to the disk at once; a new one costs nothing.
        std::filesystem::remove(Path(name));
        std::ofstream(Path(name), std::ios::binary) << content;
        return Path(name);
    }
    [[nodiscard]] std::size_t Files() const {
        const std::filesystem::directory_iterator files(Folder);
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

  private:
    std::filesystem::path Folder;
};

inline std::string ContentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::string Show(const Variable& variable, double value) {
    if (variable.IsMissing(value)) {
        return "-";
    }
    if (variable.Kind == ValueKind::Date) {
        return TextFromDays(value);
    }
    if (variable.Kind == ValueKind::TimeOfDay) {
        return TextFromSeconds(value);
    }
    std::string text = variable.Kind == ValueKind::Text ? variable.Texts.at(static_cast<std::size_t>(value) - 1)
                                                        : std::to_string(value);
    if (variable.Kind == ValueKind::Number) {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.find_last_not_of('.') + 1);
    }
    const auto texts = variable.Labels.find(value);
    return texts == variable.Labels.end() ? text : text + "=" + texts->second.Label;
}

/// "a N 1 2.5 -; b T x y z": name, kind (Number, Date, Clock, Text) and values of each variable; "-" is missing.
inline std::string Show(const DataTable& table) {
    std::string shown;
    for (const Variable& variable : table.Variables) {
        shown += (shown.empty() ? "" : "; ") + variable.Name + " " + "NDCT"[static_cast<int>(variable.Kind)];
        for (const double value : variable.Values) {
            shown += " " + Show(variable, value);
        }
    }
    return shown;
}

/// As Show, or the text of the error that reading gives, its file as @.
inline std::string ShowFile(const std::string& path, const ReadOptions& options = {}) {
    try {
        return Show(ReadDataFile(path, options));
    } catch (const std::exception& error) {
        std::string text = error.what();
        if (const std::size_t place = text.find(path); place != std::string::npos) {
            text.replace(place, path.size(), "@");
        }
        return text;
    }
}

/// The folder of real data, or an empty text.
inline std::string TestData() {
    const char* folder = std::getenv("QUILLARA_TEST_DATA");
    return folder == nullptr ? "" : folder;
}

}  // namespace quillara
