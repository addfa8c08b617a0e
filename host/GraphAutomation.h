#pragma once

#include <cstdint>
#include <string>

#include "host/DocumentInterfaces.h"
#include "platform/Automation.h"

class CAnalysisDoc;
class COutDocument;

// The host's object model as far as the graphs of an analysis use it: lists of documents, the titles of graphs, and the
// way from an item to the document behind it. Every getter writes an object with a reference for the caller, or null,
// and gives a negative status when it fails.

/// Objects of the host, counted from 1, the one made last behind the others. Scripts use it by the names Count and
/// Item.
struct IDocumentCollection : IDispatch {
    virtual HRESULT GetCount(std::int32_t* count) = 0;
    /// The object at a place, given as an Integer, or the first of a name; DISP_E_BADINDEX when there is none.
    virtual HRESULT GetItem(const VARIANT& index, IDispatch** item) = 0;

  protected:
    ~IDocumentCollection() = default;
};

/// A plot within a graph.
struct IBrushablePlot : IUnknown {
    static constexpr GUID Id = GuidOf("{C9E2B0AF-3D45-11D4-9FF4-00C04FA0D540}");

    /// The brushing property; 1: the bars of the plot can be picked.
    virtual HRESULT PutBrushing(std::int32_t brushing) = 0;

  protected:
    ~IBrushablePlot() = default;
};

/// A document that is a graph. No other document has this interface.
struct IGraph : IDispatch {
    static constexpr GUID Id = GraphKind.Document;

    /// The title, all its lines; the caller's to free.
    virtual HRESULT GetTitle(BSTR* title) = 0;
    /// The first plot of the graph.
    virtual HRESULT GetFirstPlot(IUnknown** plot) = 0;

  protected:
    ~IGraph() = default;
};

/// The identifier of IMFCPointer.
inline constexpr GUID IID_IMFCPointer = GuidOf("{C9E2A0F1-3D45-11D4-9FF4-00C04FA0D540}");

/// The way from an object as automation sees it to the document behind it.
struct IMFCPointer : IUnknown {
    static constexpr GUID Id = IID_IMFCPointer;

    /// The document; it isn't counted and lives as long as the object.
    virtual HRESULT GetPointer(COutDocument** document) = 0;

  protected:
    ~IMFCPointer() = default;
};

/// An analysis as automation sees it; one object as long as it is open, CO_E_OBJNOTCONNECTED from all members
/// afterwards.
struct IAnalysisAutomation : IDispatch {
    static constexpr GUID Id = GuidOf("{C9E2A012-3D45-11D4-9FF4-00C04FA0D540}");

    /// The result documents of the analysis.
    virtual HRESULT GetAnalysisOutputs(IDocumentCollection** outputs) = 0;

  protected:
    ~IAnalysisAutomation() = default;
};

/// The host application; one object.
struct IApplication : IDispatch {
    /// All graphs in windows of their own; while an analysis is the current one, only its graphs.
    virtual HRESULT GetGraphCollection(IDocumentCollection** graphs) = 0;
    /// Where results that don't stand alone go: 0, into windows of their own; any other value, into a common window.
    virtual HRESULT GetResultPlacement(std::int32_t* placement) = 0;
    /// The item in front, in a common window or as a window; null when there is none.
    virtual HRESULT GetActiveItem(IDispatch** item) = 0;

  protected:
    ~IApplication() = default;
};

/// The application with a reference for the caller; null when the host has no automation.
IApplication* OleAGetApplication();

/// The automation object of an analysis with a reference for the caller; null when there is none or for null. It has
/// the interface IAnalysisAutomation.
IUnknown* OleAGetAnalysis(CAnalysisDoc* document);
