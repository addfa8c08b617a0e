#pragma once

#include <cstdint>
#include <map>
#include <string>

class CAnalysisDoc;

namespace quillara {

/// The settings of a document without a store, by key.
using DocumentSettings = std::map<std::string, std::int32_t>;

/// Those of a document; without a document some that nobody reads.
[[nodiscard]] DocumentSettings& SettingsOf(CAnalysisDoc* document);

}  // namespace quillara
