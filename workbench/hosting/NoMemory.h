#pragma once

#include <new>

namespace quillara {

inline constexpr char NoMemoryForCommand[] =
    "There is not enough memory for this command; close other programs and try again.";

/// Memory was lacking in a command that a script has pressed; says so in words for people.
class NoMemoryInPress : public std::bad_alloc {
  public:
    [[nodiscard]] const char* what() const noexcept override { return NoMemoryForCommand; }
};

}  // namespace quillara
