#include "workbench/hosting/ScriptDrive.h"

#include <algorithm>
#include <utility>

namespace quillara {

void PressRecord::Add(CountedPointer<IDispatch> document) {
    if (std::ranges::find(Documents, document.Get(), &CountedPointer<IDispatch>::Get) == Documents.end()) {
        Documents.push_back(std::move(document));
    }
}

}  // namespace quillara
