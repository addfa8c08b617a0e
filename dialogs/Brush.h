#pragma once

#include <cstdint>

class CDefineTask;

/// Command of the Brush button: one cycle in which the user picks a bar of the brushing graph to drill down on, or
/// drills up. The next cycle begins as a posted command, until the user leaves or no variable is left to drill on.
/// Takes no lock. 1 when it ended for want of variables or boundaries, else 0.
std::int64_t Brush(CDefineTask& task);
