#pragma once

#include "host/GraphAutomation.h"
#include "workbench/documents/DocumentPart.h"

namespace quillara {
class ResultDocument;
}

/// A document as the brushing tool of the host takes it.
class COutDocument {
  public:
    explicit COutDocument(quillara::ResultDocument& document) : Behind(document) {}

    [[nodiscard]] quillara::ResultDocument& Document() const { return Behind; }

  private:
    quillara::ResultDocument& Behind;
};

namespace quillara {

/// What automation sees of a document besides its common members: as a graph, as the way to the document behind it, and
/// its first plot. The first two are the document, whose other interfaces they answer too; the plot is an object of its
/// own.
class GraphFaces {
  public:
    explicit GraphFaces(ResultDocument& document);

    /// The interface of an identifier, without a reference; null when the document hasn't got it.
    [[nodiscard]] void* Find(const GUID& id);

  private:
    class Graph final : public DocumentPart<IGraph> {
      public:
        explicit Graph(GraphFaces& faces);
        HRESULT QueryInterface(const GUID& id, void** object) override;
        HRESULT GetTypeInfoCount(std::uint32_t* count) override;
        HRESULT GetTypeInfo(std::uint32_t index, LCID language, ITypeInfo** information) override;
        HRESULT GetIDsOfNames(const GUID& reserved, const char16_t* const* names, std::uint32_t count, LCID language,
                              DISPID* ids) override;
        HRESULT Invoke(DISPID member, const GUID& reserved, LCID language, std::uint16_t flags,
                       const DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                       std::uint32_t* badArgument) override;
        HRESULT GetTitle(BSTR* title) override;
        HRESULT GetFirstPlot(IUnknown** plot) override;

      private:
        GraphFaces& Faces;
    };
    class Pointer final : public DocumentPart<IMFCPointer> {
      public:
        explicit Pointer(GraphFaces& faces);
        HRESULT QueryInterface(const GUID& id, void** object) override;
        HRESULT GetPointer(COutDocument** document) override;

      private:
        GraphFaces& Faces;
    };
    class Plot final : public DocumentPart<IBrushablePlot> {
      public:
        explicit Plot(GraphFaces& faces);
        HRESULT PutBrushing(std::int32_t brushing) override;

      private:
        GraphFaces& Faces;
    };

    ResultDocument& Document;
    COutDocument Out;
    Graph GraphFace;
    Pointer PointerFace;
    Plot PlotFace;
};

}  // namespace quillara
