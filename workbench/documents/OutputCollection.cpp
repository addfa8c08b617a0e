#include "workbench/documents/OutputCollection.h"

#include <utility>

namespace quillara {

void OutputCollection::Add(DocumentContent document, const DocumentOrigin& origin) {
    Entries.push_back({origin.Command, origin.Sequence, Step, std::move(document)});
}

}  // namespace quillara
