#pragma once

#include <vector>

namespace drilltest {

/// Two lists of numbers of variables, from 1.
struct VariableLists {
    std::vector<short> First;
    std::vector<short> Second;
};

}  // namespace drilltest
