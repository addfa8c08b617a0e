#include "workbench/documents/OutputCollection.h"

#include <utility>

#include "workbench/documents/ResultNames.h"

namespace quillara {

void OutputCollection::Add(DocumentContent document, const DocumentOrigin& origin) {
    std::string result(origin.Result.empty() ? NameOfResult(origin.Command) : origin.Result);
    Entries.push_back({origin.Command, std::move(result), origin.Sequence, Step, std::move(document)});
}

}  // namespace quillara
