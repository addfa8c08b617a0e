#pragma once

#include <cstdint>

#include "platform/TypeInformation.h"

namespace drilldown {

/// Where a name and its help are written; each place may be null.
struct Documentation {
    BSTR* Name;
    BSTR* Help;
    std::uint32_t* HelpContext;
    BSTR* HelpFile;
};

/// Writes them; on failure what was written is freed again.
HRESULT GiveDocumentation(const char* name, const char* help, const Documentation& places);

/// The object that tells of the module's library of interfaces. It lives as long as the module; a reference keeps that
/// loaded.
[[nodiscard]] ITypeLib& TheLibrary();

}  // namespace drilldown
