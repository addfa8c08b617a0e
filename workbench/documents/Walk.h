#pragma once

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

#include "platform/CountedObject.h"
#include "platform/CountedPointer.h"
#include "platform/Events.h"

namespace quillara {

/// A listener of a connection point.
struct Connection {
    std::uint32_t Cookie;
    CountedPointer<IDispatch> Listener;
};

// What a walk gives out of what it holds, with a reference for the caller.

inline CONNECTDATA GivenOut(const Connection& connection) {
    return {CountedPointer(connection.Listener).Detach(), connection.Cookie};
}
inline IConnectionPoint* GivenOut(const CountedPointer<IConnectionPoint>& point) {
    return CountedPointer(point).Detach();
}

/// A walk over a list as it was when the walk was made.
template <typename Interface, typename Given, typename Held>
class Walk final : public CountedObject<Interface> {
  public:
    Walk(std::vector<Held> items, std::size_t place) : Items(std::move(items)), Place(place) {}

    HRESULT QueryInterface(const GUID& id, void** object) override {
        *object = id == IUnknown::Id || id == Interface::Id ? static_cast<Interface*>(this) : nullptr;
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        this->AddRef();
        return S_OK;
    }
    HRESULT Next(std::uint32_t count, Given* items, std::uint32_t* fetched) override {
        const std::size_t given = std::min<std::size_t>(count, Items.size() - Place);
        for (std::size_t i = 0; i < given; ++i) {
            items[i] = GivenOut(Items[Place++]);
        }
        if (fetched != nullptr) {
            *fetched = static_cast<std::uint32_t>(given);
        }
        return given == count ? S_OK : S_FALSE;
    }
    HRESULT Skip(std::uint32_t count) override {
        const std::size_t passed = std::min<std::size_t>(count, Items.size() - Place);
        Place += passed;
        return passed == count ? S_OK : S_FALSE;
    }
    HRESULT Reset() override {
        Place = 0;
        return S_OK;
    }
    HRESULT Clone(Interface** copy) override {
        *copy = nullptr;
        try {
            *copy = new Walk(Items, Place);
            return S_OK;
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
    }

  private:
    std::vector<Held> Items;
    std::size_t Place;
};

/// Writes a walk over a list, with a reference for the caller; E_OUTOFMEMORY, and null, when memory lacks.
template <typename Interface, typename Held>
HRESULT MakeWalk(Interface** walk, const std::vector<Held>& items) try {
    *walk = nullptr;
    *walk = new Walk<Interface, decltype(GivenOut(items.front())), Held>(items, 0);
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

}  // namespace quillara
