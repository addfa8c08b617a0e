#include "workbench/documents/DocumentEvents.h"

#include <algorithm>
#include <new>

namespace quillara {

std::optional<DISPID> EventNamed(const DocumentKind& kind, std::string_view name) {
    return name == "Closing"             ? std::optional(kind.Closing)
           : name == "ClosingWithChoice" ? std::optional(kind.ClosingWithChoice)
           : name == "Changed"           ? std::optional(ChangedEvent)
                                         : std::nullopt;
}

HRESULT DocumentEvents::GetConnectionInterface(GUID* events) {
    *events = Events;
    return S_OK;
}

HRESULT DocumentEvents::GetConnectionPointContainer(IConnectionPointContainer** container) {
    *container = &Document;
    AddRef();
    return S_OK;
}

HRESULT DocumentEvents::Advise(IUnknown* listener, std::uint32_t* cookie) {
    if (listener == nullptr || cookie == nullptr) {
        return E_POINTER;
    }
    CountedPointer<IDispatch> events = QueryFor<IDispatch>(listener, Events);
    if (!events) {
        return E_NOINTERFACE;
    }
    try {
        Connections.push_back({LastCookie + 1, std::move(events)});
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    *cookie = ++LastCookie;
    return S_OK;
}

HRESULT DocumentEvents::Unadvise(std::uint32_t cookie) {
    const auto found = std::ranges::find(Connections, cookie, &Connection::Cookie);
    if (found == Connections.end()) {
        return CONNECT_E_NOCONNECTION;
    }
    const Connection ended = std::move(*found);  // goes last: its end may come back here
    Connections.erase(found);
    return S_OK;
}

HRESULT DocumentEvents::EnumConnections(IEnumConnections** connections) {
    return MakeWalk(connections, Connections);
}

void DocumentEvents::Fire(DISPID event, const DISPPARAMS& parameters) {
    const std::vector<Connection> listeners = Connections;  // they come and go meanwhile
    for (const Connection& connection : listeners) {
        if (IsConnected(connection.Cookie)) {
            connection.Listener->Invoke(event, GUID_NULL, NeutralLanguage, DispatchMethod, parameters, nullptr, nullptr,
                                        nullptr);
        }
    }
}

bool DocumentEvents::IsConnected(std::uint32_t cookie) const {
    return std::ranges::find(Connections, cookie, &Connection::Cookie) != Connections.end();
}

}  // namespace quillara
