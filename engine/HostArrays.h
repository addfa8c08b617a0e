#pragma once

#include "host/AnalysisSupport.h"

namespace drilldown {

/// Gives an array back to the host and nulls the pointer; null is passed over.
template <typename T>
void GiveBack(CAnalysisSupport& host, T*& array) {
    if (array != nullptr) {
        host.FreeMem(array);
        array = nullptr;
    }
}

}  // namespace drilldown
