#pragma once

#include <string>

namespace testing_locations {

/// A file of the folder of samples.
[[nodiscard]] std::string Sample(const std::string& name);
/// The command-line program.
[[nodiscard]] std::string Program();
/// What replays recorded scripts.
[[nodiscard]] std::string Replayer();
/// A shared library of this build.
[[nodiscard]] std::string Library(const std::string& name);

}  // namespace testing_locations
