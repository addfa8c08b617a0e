#pragma once

#include <cstdint>

/// The message of the startup dialog that the host runs now, and the documents that it has made so far. Messages that
/// are sent while another one runs belong to that one.
struct ActiveCommand {
    unsigned Message = 0;  ///< number of the window message
    std::uint64_t CommandId = 0;  ///< its wParam
    std::int32_t OutputIndex = 0;  ///< number of the output that is being made, from 1; the host counts
};
