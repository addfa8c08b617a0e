#include "workbench/documents/DocumentFiles.h"

#include <utility>

#include "workbench/data/Errors.h"

namespace quillara {
namespace {

DocumentWriter& Writer() {
    static DocumentWriter writer;
    return writer;
}

}  // namespace

void SetDocumentWriter(DocumentWriter writer) {
    Writer() = std::move(writer);
}

void WriteDocument(const ResultDocument& document, const std::string& path) {
    if (!Writer()) {
        throw DataError("This program can't write documents to files.");
    }
    Writer()(document, path);
}

}  // namespace quillara
