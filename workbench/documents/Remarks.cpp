#include "workbench/documents/Remarks.h"

#include <algorithm>
#include <utility>

namespace quillara {

bool Remarks::Add(Remark remark) {
    if (std::ranges::find(Made, remark) != Made.end()) {
        return false;
    }
    Made.push_back(std::move(remark));
    return true;
}

}  // namespace quillara
