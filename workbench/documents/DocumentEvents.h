#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "host/DocumentInterfaces.h"
#include "platform/Automation.h"
#include "platform/CountedPointer.h"
#include "platform/Events.h"
#include "workbench/documents/DocumentPart.h"
#include "workbench/documents/Walk.h"

namespace quillara {

/// The event of this host's documents that their content has been replaced; it has no argument.
inline constexpr DISPID ChangedEvent = 100;

/// The number of an event, by which scripts name it: Closing, ClosingWithChoice, Changed. Nothing for another name.
[[nodiscard]] std::optional<DISPID> EventNamed(const DocumentKind& kind, std::string_view name);

/// The place where a document fires its events. A listener answers the events interface, through which it is called.
class DocumentEvents final : public DocumentPart<IConnectionPoint> {
  public:
    /// `events` is the events interface.
    DocumentEvents(IConnectionPointContainer& document, const GUID& events)
        : DocumentPart(document), Document(document), Events(events) {}

    HRESULT GetConnectionInterface(GUID* events) override;
    HRESULT GetConnectionPointContainer(IConnectionPointContainer** container) override;
    /// E_POINTER without a listener or a place for the number; E_NOINTERFACE when it doesn't answer the events.
    HRESULT Advise(IUnknown* listener, std::uint32_t* cookie) override;
    HRESULT Unadvise(std::uint32_t cookie) override;
    HRESULT EnumConnections(IEnumConnections** connections) override;

    /// Tells an event to all who listen, in the order in which they began to. One that is disconnected on the way is
    /// passed over; what listeners answer doesn't matter.
    void Fire(DISPID event, const DISPPARAMS& parameters);
    [[nodiscard]] std::size_t Listeners() const { return Connections.size(); }

  private:
    [[nodiscard]] bool IsConnected(std::uint32_t cookie) const;

    IConnectionPointContainer& Document;
    const GUID& Events;
    std::vector<Connection> Connections;
    std::uint32_t LastCookie = 0;
};

}  // namespace quillara
