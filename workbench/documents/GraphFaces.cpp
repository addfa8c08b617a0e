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

HRESULT GraphFaces::Graph::QueryInterface(const GUID& id, void** object) {
    return Faces.Document.QueryInterface(id, object);
}

std::uint32_t GraphFaces::Graph::AddRef() {
    return Faces.Document.AddRef();
}

std::uint32_t GraphFaces::Graph::Release() {
    return Faces.Document.Release();
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

HRESULT GraphFaces::Pointer::QueryInterface(const GUID& id, void** object) {
    return Faces.Document.QueryInterface(id, object);
}

std::uint32_t GraphFaces::Pointer::AddRef() {
    return Faces.Document.AddRef();
}

std::uint32_t GraphFaces::Pointer::Release() {
    return Faces.Document.Release();
}

HRESULT GraphFaces::Pointer::GetPointer(COutDocument** document) {
    *document = &Faces.Out;
    return S_OK;
}

// The plot

HRESULT GraphFaces::Plot::QueryInterface(const GUID& id, void** object) {
    *object = nullptr;
    if (id != IUnknown::Id && id != IBrushablePlot::Id) {
        return E_NOINTERFACE;
    }
    *object = static_cast<IBrushablePlot*>(this);
    AddRef();
    return S_OK;
}

std::uint32_t GraphFaces::Plot::AddRef() {
    return Faces.Document.AddRef();
}

std::uint32_t GraphFaces::Plot::Release() {
    return Faces.Document.Release();
}

HRESULT GraphFaces::Plot::PutBrushing(std::int32_t brushing) {
    Faces.Document.SetBrushable(brushing != 0);
    return S_OK;
}

}  // namespace quillara
