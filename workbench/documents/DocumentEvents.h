#pragma once

#include <cstdint>
#include <vector>

#include "platform/Automation.h"
#include "platform/CountedPointer.h"

namespace quillara {

/// The place where a document fires its events: a part of the document, with which it shares its count of references.
/// A listener answers the events interface, through which it is called.
class DocumentEvents final : public IConnectionPoint {
  public:
    /// `events` is the events interface.
    DocumentEvents(IUnknown& document, const GUID& events) : Document(document), Events(events) {}
    DocumentEvents(const DocumentEvents&) = delete;
    DocumentEvents& operator=(const DocumentEvents&) = delete;

    HRESULT QueryInterface(const GUID& id, void** object) override;
    std::uint32_t AddRef() override { return Document.AddRef(); }
    std::uint32_t Release() override { return Document.Release(); }
    /// E_POINTER without a listener or a place for the number; E_NOINTERFACE when it doesn't answer the events.
    HRESULT Advise(IUnknown* listener, std::uint32_t* cookie) override;
    HRESULT Unadvise(std::uint32_t cookie) override;

    /// Tells an event to all who listen, in the order in which they began to. One that is disconnected on the way is
    /// passed over; what listeners answer doesn't matter.
    void Fire(DISPID event, const DISPPARAMS& parameters);
    [[nodiscard]] std::size_t Listeners() const { return Connections.size(); }

  private:
    struct Connection {
        std::uint32_t Cookie;
        CountedPointer<IDispatch> Listener;
    };

    [[nodiscard]] bool IsConnected(std::uint32_t cookie) const;

    IUnknown& Document;
    const GUID& Events;
    std::vector<Connection> Connections;
    std::uint32_t LastCookie = 0;
};

}  // namespace quillara
