#pragma once

#include <cstdint>

/// The message of a dialog that the host runs now, the outermost one, and the documents that it has made so far.
struct ActiveCommand {
    unsigned Message = 0;  ///< number of the window message
    std::uint64_t CommandId = 0;  ///< its wParam
    std::int32_t OutputIndex = 0;  ///< outputs made so far, the one being made included; the host counts
};
