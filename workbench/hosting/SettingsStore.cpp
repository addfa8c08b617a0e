#include "workbench/hosting/SettingsStore.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "workbench/formats/FileReplacement.h"

namespace quillara {
namespace {

using Json = nlohmann::json;

/// A folder that a variable of the environment names; empty when it names none.
std::filesystem::path FolderFrom(const char* variable) {
    const char* value = std::getenv(variable);
    const std::filesystem::path folder = value == nullptr ? "" : value;
    return folder.is_absolute() ? folder : std::filesystem::path();
}

/// What a file holds; no JSON object when it can't be read or is damaged.
Json ContentOf(const std::string& path) {
    try {
        std::ifstream file(path);
        return Json::parse(file, nullptr, /*allow_exceptions=*/false);
    } catch (const std::ios_base::failure&) {  // a folder can be opened, but not read
        return {};
    }
}

bool IsSetting(const Json& value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return value.is_number_integer() && value.get<double>() >= Limits::min() && value.get<double>() <= Limits::max();
}

}  // namespace

SettingsStore::SettingsStore(std::string path) : Path(std::move(path)) {
    const Json content = ContentOf(Path);
    if (!content.is_object()) {
        return;
    }
    for (const auto& [key, value] : content.items()) {
        if (IsSetting(value)) {
            Values[key] = value.get<std::int32_t>();
        }
    }
}

std::string SettingsStore::UserPath() {
    std::filesystem::path folder = FolderFrom("XDG_CONFIG_HOME");
    if (folder.empty() && !FolderFrom("HOME").empty()) {
        folder = FolderFrom("HOME") / ".config";
    }
    return folder.empty() ? std::string() : (folder / "quillara" / "settings.json").string();
}

std::int32_t SettingsStore::Get(const std::string& key) const {
    const auto found = Values.find(key);
    return found == Values.end() ? 0 : found->second;
}

void SettingsStore::Put(const std::string& key, std::int32_t value) {
    const auto [entry, added] = Values.try_emplace(key, value);
    if (added || std::exchange(entry->second, value) != value) {
        WriteFile();
    }
}

void SettingsStore::WriteFile() const {
    if (Path.empty()) {
        return;
    }
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(Path).parent_path(), ignored);
    const std::string text = Json(Values).dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
    try {
        ReplaceFile(Path, text);
    } catch (const std::runtime_error&) {
        // The setting lasts as long as the store.
    }
}

}  // namespace quillara
