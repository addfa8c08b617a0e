#pragma once

#include <string>
#include <string_view>

#include "platform/Status.h"

namespace quillara {

/// The system's message for a status, without a line end; empty for one that it has none for.
[[nodiscard]] std::string_view SystemMessage(HRESULT status);

/// The standard message of a status: the system's, or a text made of its number.
[[nodiscard]] std::string StandardMessage(HRESULT status);

}  // namespace quillara
