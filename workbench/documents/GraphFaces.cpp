#include "workbench/documents/GraphFaces.h"

#include <string>

#include "workbench/documents/ResultDocument.h"
#include "workbench/documents/WideText.h"

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

HRESULT GraphFaces::Graph::GetTypeInfoCount(std::uint32_t* count) {
    return Faces.Document.GetTypeInfoCount(count);
}

HRESULT GraphFaces::Graph::GetTypeInfo(std::uint32_t index, LCID language, ITypeInfo** information) {
    return Faces.Document.GetTypeInfo(index, language, information);
}

HRESULT GraphFaces::Graph::GetIDsOfNames(const GUID& reserved, const char16_t* const* names, std::uint32_t count,
                                         LCID language, DISPID* ids) {
    return Faces.Document.GetIDsOfNames(reserved, names, count, language, ids);
}

HRESULT GraphFaces::Graph::Invoke(DISPID member, const GUID& reserved, LCID language, std::uint16_t flags,
                                  const DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                                  std::uint32_t* badArgument) {
    return Faces.Document.Invoke(member, reserved, language, flags, parameters, result, exception, badArgument);
}

HRESULT GraphFaces::Graph::GetTitle(BSTR* title) {
    std::string lines;
    for (const std::string& line : Faces.Document.Graph()->Title) {
        lines += (lines.empty() ? "" : "\n") + line;
    }
    *title = SysAllocString(WideText(lines));
    return *title == nullptr ? E_OUTOFMEMORY : S_OK;
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
