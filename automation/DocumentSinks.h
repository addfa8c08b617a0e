#pragma once

#include <cstdint>

#include "host/DocumentInterfaces.h"
#include "platform/Automation.h"

class COutputTracker;

/// What a tracker sees of the sinks by which it hears of closed documents.
class CQCOMSink {
  public:
    CQCOMSink() = default;
    CQCOMSink(const CQCOMSink&) = delete;
    CQCOMSink& operator=(const CQCOMSink&) = delete;
    virtual ~CQCOMSink() = default;
    /// Cuts the connection to the document and leaves the tracker. Safe to repeat.
    virtual void Unadvise() = 0;
    virtual std::uint32_t Release() = 0;
};

namespace drilldown {

/// Listens to one document, and takes it out of the tracker when it closes. Counted: the tracker holds a reference and
/// so does the connection. The two kinds differ in their DocumentKind only.
class CQCOMDocumentSink : public CQCOMSink, public WithoutTypeInfo<IDispatch> {
  public:
    HRESULT QueryInterface(const GUID& id, void** object) override;
    std::uint32_t AddRef() override { return ++References; }
    std::uint32_t Release() override;
    /// E_NOTIMPL: events are told by their numbers.
    HRESULT GetIDsOfNames(const GUID& reserved, const char16_t* const* names, std::uint32_t count, LCID language,
                          DISPID* ids) override;
    /// An event of the document: the two closing events of its kind, DISP_E_MEMBERNOTFOUND for any other.
    HRESULT Invoke(DISPID event, const GUID& reserved, LCID language, std::uint16_t flags, const DISPPARAMS& parameters,
                   VARIANT* result, EXCEPINFO* exception, std::uint32_t* badArgument) override;

    /// Begins to listen to Document. E_FAIL when it listens already, E_INVALIDARG without a document, else what the
    /// document says.
    HRESULT Connect();
    void Unadvise() override;

    static constexpr std::uint32_t NotConnected = 0xfefefefe;

    std::uint32_t Cookie = NotConnected;  ///< number of the connection
    COutputTracker* Tracker = nullptr;  ///< null once the sink has left it
    IDispatch* Document = nullptr;  ///< no reference is held; null once it has gone
    std::uint32_t OutputId = 0;
    std::uint32_t OutputSeq = 0;

  protected:
    /// Holds the module loaded as long as it lives.
    explicit CQCOMDocumentSink(const DocumentKind& kind);
    ~CQCOMDocumentSink() override;

  private:
    void DocumentGone();
    HRESULT ClosingWithChoice(const DISPPARAMS& parameters);

    std::uint32_t References = 0;
    const DocumentKind& Kind;
};

}  // namespace drilldown

class CQCOMSpreadsheetSink final : public drilldown::CQCOMDocumentSink {
  public:
    CQCOMSpreadsheetSink() : drilldown::CQCOMDocumentSink(SpreadsheetKind) {}
};

class CQCOMGraphSink final : public drilldown::CQCOMDocumentSink {
  public:
    CQCOMGraphSink() : drilldown::CQCOMDocumentSink(GraphKind) {}
};

/// A sink that listens to a document for a tracker, under a key; the caller gets a reference. Null when the document is
/// neither spreadsheet nor graph, or can't be listened to.
[[nodiscard]] CQCOMSink* MakeSink(COutputTracker& tracker, std::uint32_t outputId, std::uint32_t outputSeq,
                                  IDispatch* document);
