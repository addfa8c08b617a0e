#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace quillara {

/// What is wrong with arguments that the parser refused, as one sentence for the user.
[[nodiscard]] std::string ComplaintAbout(const CLI::App& program, const CLI::ParseError& error);

}  // namespace quillara
