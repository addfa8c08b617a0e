#pragma once

#include <cstdint>

#include "platform/Automation.h"

// Events of automation: places where listeners connect.

struct IConnectionPoint;
struct IConnectionPointContainer;

/// A connection: the listener, with a reference for the caller, and its number.
struct CONNECTDATA {
    IUnknown* Listener = nullptr;
    std::uint32_t Cookie = 0;
};

/// A walk over things of one kind, taken from a list at the time when the walk was made.
template <typename Item, typename Self>
struct IEnumerator : IUnknown {
    /// Writes up to `count` next ones, with references for the caller, and how many (`fetched` may be null when one is
    /// asked for). S_FALSE when there were fewer.
    virtual HRESULT Next(std::uint32_t count, Item* items, std::uint32_t* fetched) = 0;
    /// Passes over some; S_FALSE when there were fewer.
    virtual HRESULT Skip(std::uint32_t count) = 0;
    virtual HRESULT Reset() = 0;
    /// A walk of its own from the same place on, with a reference for the caller.
    virtual HRESULT Clone(Self** copy) = 0;

  protected:
    ~IEnumerator() = default;
};

struct IEnumConnections : IEnumerator<CONNECTDATA, IEnumConnections> {
    static constexpr GUID Id = GuidOf("{B196B287-BAB4-101A-B69C-00AA00341D07}");

  protected:
    ~IEnumConnections() = default;
};

struct IEnumConnectionPoints : IEnumerator<IConnectionPoint*, IEnumConnectionPoints> {
    static constexpr GUID Id = GuidOf("{B196B285-BAB4-101A-B69C-00AA00341D07}");

  protected:
    ~IEnumConnectionPoints() = default;
};

/// A place where listeners are told the events of one interface.
struct IConnectionPoint : IUnknown {
    static constexpr GUID Id = GuidOf("{B196B286-BAB4-101A-B69C-00AA00341D07}");

    /// The identifier of the events interface.
    virtual HRESULT GetConnectionInterface(GUID* events) = 0;
    /// The object whose point it is, with a reference for the caller.
    virtual HRESULT GetConnectionPointContainer(IConnectionPointContainer** container) = 0;
    /// Connects a listener, of which a reference is taken, and writes the number of the connection.
    virtual HRESULT Advise(IUnknown* listener, std::uint32_t* cookie) = 0;
    /// Ends a connection; CONNECT_E_NOCONNECTION when there is none of that number.
    virtual HRESULT Unadvise(std::uint32_t cookie) = 0;
    /// The connections as they are now.
    virtual HRESULT EnumConnections(IEnumConnections** connections) = 0;

  protected:
    ~IConnectionPoint() = default;
};

/// An object that has connection points.
struct IConnectionPointContainer : IUnknown {
    static constexpr GUID Id = GuidOf("{B196B284-BAB4-101A-B69C-00AA00341D07}");

    virtual HRESULT EnumConnectionPoints(IEnumConnectionPoints** points) = 0;
    /// The point of an events interface, with a reference for the caller; CONNECT_E_NOCONNECTION when there is none.
    virtual HRESULT FindConnectionPoint(const GUID& events, IConnectionPoint** point) = 0;

  protected:
    ~IConnectionPointContainer() = default;
};
