#include "workbench/documents/GraphFaces.h"

#include <algorithm>
#include <memory>
#include <string>

#include "workbench/documents/ResultDocument.h"
#include "workbench/documents/WideText.h"

void FreeAutomationText(char16_t* text) {
    delete[] text;
}

namespace quillara {

GraphFaces::GraphFaces(ResultDocument& document)
    : Document(document), Out(document), GraphFace(*this), PointerFace(*this), PlotFace(*this) {}

void* GraphFaces::Find(const GUID& id) {
    if (id == IMFCPointer::Id) {
        return static_cast<IMFCPointer*>(&PointerFace);
    }
    return id == IGraph::Id && Document.Graph() != nullptr ? static_cast<IGraph*>(&GraphFace) : nullptr;
}

// The graph

GraphFaces::Graph::Graph(GraphFaces& faces) : DocumentPart(static_cast<IDispatch&>(faces.Document)), Faces(faces) {}

HRESULT GraphFaces::Graph::QueryInterface(const GUID& id, void** object) {
    return Faces.Document.QueryInterface(id, object);
}

HRESULT GraphFaces::Graph::GetIDsOfNames(const char16_t* const* names, std::uint32_t count, DISPID* ids) {
    return Faces.Document.GetIDsOfNames(names, count, ids);
}

HRESULT GraphFaces::Graph::Invoke(DISPID member, std::uint16_t flags, const DISPPARAMS& parameters, VARIANT* result) {
    return Faces.Document.Invoke(member, flags, parameters, result);
}

HRESULT GraphFaces::Graph::GetTitle(char16_t** title) {
    std::string lines;
    for (const std::string& line : Faces.Document.Graph()->Title) {
        lines += (lines.empty() ? "" : "\n") + line;
    }
    const std::u16string wide = WideText(lines);
    *title = std::copy(wide.begin(), wide.end(), new char16_t[wide.size() + 1]{}) - wide.size();
    return S_OK;
}

HRESULT GraphFaces::Graph::GetFirstPlot(IUnknown** plot) {
    *plot = &Faces.PlotFace;
    AddRef();
    return S_OK;
}

// The way to the document

GraphFaces::Pointer::Pointer(GraphFaces& faces) : DocumentPart(static_cast<IDispatch&>(faces.Document)), Faces(faces) {}

HRESULT GraphFaces::Pointer::QueryInterface(const GUID& id, void** object) {
    return Faces.Document.QueryInterface(id, object);
}

HRESULT GraphFaces::Pointer::GetPointer(COutDocument** document) {
    *document = &Faces.Out;
    return S_OK;
}

// The plot

GraphFaces::Plot::Plot(GraphFaces& faces) : DocumentPart(static_cast<IDispatch&>(faces.Document)), Faces(faces) {}

HRESULT GraphFaces::Plot::PutBrushing(std::int32_t brushing) {
    Faces.Document.SetBrushable(brushing != 0);
    return S_OK;
}

}  // namespace quillara
