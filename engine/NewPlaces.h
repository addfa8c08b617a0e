#pragma once

#include <cstdint>

/// Among the new places of the records of a set: of one that the user has given none. It stays behind those that have
/// one, in the old order.
inline constexpr std::int32_t NotPlaced = -1;
