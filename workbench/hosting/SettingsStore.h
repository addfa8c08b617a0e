#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace quillara {

/// Named settings that are kept from run to run, in a JSON file. A file that isn't there, can't be read or is damaged
/// counts as empty, and a change that can't be written lasts as long as the store: a setting is no reason to stop.
class SettingsStore {
  public:
    /// Reads the file. An empty path: there is none.
    explicit SettingsStore(std::string path);

    /// The file in the user's configuration folder, $XDG_CONFIG_HOME or ~/.config; empty when the environment names
    /// neither.
    [[nodiscard]] static std::string UserPath();

    /// The value of a key; 0 when it was never written.
    [[nodiscard]] std::int32_t Get(const std::string& key) const;
    /// Writes a value, and the file with its folders when that changes it.
    void Put(const std::string& key, std::int32_t value);

  private:
    void WriteFile() const;

    std::string Path;
    std::map<std::string, std::int32_t> Values;
};

}  // namespace quillara
