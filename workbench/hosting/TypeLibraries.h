#pragma once

#include <string_view>

namespace quillara {

/// Whether a module has registered its type library by this name (OrvOleRegisterTypeLib). Thread-safe.
[[nodiscard]] bool IsTypeLibraryRegistered(std::string_view name);

}  // namespace quillara
