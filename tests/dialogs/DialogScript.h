#pragma once

#include <string>

#include "tests/automation/OutputsBench.h"

namespace dialogtest {

/// Has answers of the scripts given in the windows that open from now on, such as "category 2 / cancel". Each window is
/// looked at first.
void ExpectAnswers(
    OutputsBench& bench, const std::string& answers, const Answer& look = [](quillara::Window& /*window*/) {});

/// Does a line of a script, or compares what is seen with what the line expects. The README tells how lines are
/// written.
void Do(OutputsBench& bench, const std::string& line);

/// What a query of the scripts gives, such as "text 9052".
std::string Ask(OutputsBench& bench, const std::string& query);

}  // namespace dialogtest
