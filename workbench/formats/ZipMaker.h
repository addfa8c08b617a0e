#pragma once

#include <list>
#include <string>
#include <utility>

namespace quillara {

/// Makes a zip archive in memory. The same entries give the same bytes, whenever they are made.
class ZipMaker {
  public:
    void Add(std::string name, std::string content) { Entries.emplace_back(std::move(name), std::move(content)); }
    /// Throws DataError when it can't be made.
    [[nodiscard]] std::string Finish() const;

  private:
    std::list<std::pair<std::string, std::string>> Entries;
};

}  // namespace quillara
