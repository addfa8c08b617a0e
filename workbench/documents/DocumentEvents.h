#pragma once

#include <cstdint>
#include <vector>

#include "platform/Automation.h"
#include "platform/CountedPointer.h"
#include "workbench/documents/DocumentPart.h"

namespace quillara {

/// The place where a document fires its events. A listener answers the events interface, through which it is called.
class DocumentEvents final : public DocumentPart<IConnectionPoint> {
  public:
    /// `events` is the events interface.
    DocumentEvents(IUnknown& document, const GUID& events) : DocumentPart(document), Events(events) {}

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

    const GUID& Events;
    std::vector<Connection> Connections;
    std::uint32_t LastCookie = 0;
};

}  // namespace quillara
