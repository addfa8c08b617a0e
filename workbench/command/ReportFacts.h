#pragma once

#include <span>
#include <string>

namespace quillara {

/// The call of the program as a shell takes it, for the arguments behind its name.
[[nodiscard]] std::string ShellCall(std::span<const std::string> arguments);

/// What a report says of its making: "Made on 2024-02-29 with Quillara 1.2.0".
[[nodiscard]] std::string MadeToday();

}  // namespace quillara
