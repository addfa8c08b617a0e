#include "workbench/documents/OpenDocuments.h"

#include <algorithm>
#include <utility>

#include "workbench/documents/ResultDocument.h"

namespace quillara {
namespace {

bool Contains(const std::vector<ResultDocument*>& documents, const ResultDocument& document) {
    return std::ranges::find(documents, &document) != documents.end();
}

/// False when it wasn't among them.
bool Remove(std::vector<ResultDocument*>& documents, const ResultDocument& document) {
    return std::erase(documents, &document) != 0;
}

}  // namespace

OpenDocuments::~OpenDocuments() {
    for (ResultDocument* document : Living) {
        document->Detach();
    }
    for (std::vector<ResultDocument*>* held : {&Shown, &Hidden}) {
        for (ResultDocument* document : *held) {
            document->Release();
        }
    }
}

void OpenDocuments::Add(ResultDocument& document) {
    for (std::vector<ResultDocument*>* documents : {&Known, &Shown, &Hidden}) {
        documents->reserve(Living.size() + 1);
    }
    Living.push_back(&document);
    Known.push_back(&document);
}

void OpenDocuments::RemoveFromAnalysis(IDispatch* document) {
    if (const ResultDocument* known = ResultDocument::Of(document); known != nullptr) {
        Remove(Known, *known);
    }
}

void OpenDocuments::LetHiddenGo() {
    const auto kept = std::partition(Hidden.begin(), Hidden.end(),
                                     [this](const ResultDocument* document) { return Contains(Known, *document); });
    const std::vector<ResultDocument*> going(kept, Hidden.end());
    Hidden.erase(kept, Hidden.end());
    for (ResultDocument* document : going) {
        document->Release();
    }
}

void OpenDocuments::Showed(ResultDocument& document) {
    if (!Remove(Hidden, document)) {
        document.AddRef();
    }
    Shown.push_back(&document);
}

void OpenDocuments::Hid(ResultDocument& document) {
    if (Remove(Shown, document)) {
        Hidden.push_back(&document);
    }
}

void OpenDocuments::CameToFront(ResultDocument& document) {
    if (Remove(Shown, document)) {
        Shown.push_back(&document);
    }
}

void OpenDocuments::WentAway(ResultDocument& document) {
    Remove(Living, document);
    Remove(Known, document);
}

}  // namespace quillara
