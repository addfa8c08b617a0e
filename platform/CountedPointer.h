#pragma once

#include <utility>

#include "platform/Automation.h"

/// Holds a reference of a counted object, or none.
template <typename Object>
class CountedPointer {
  public:
    CountedPointer() = default;
    CountedPointer(const CountedPointer& other) : Held(other.Held) {
        if (Held != nullptr) {
            Held->AddRef();
        }
    }
    CountedPointer(CountedPointer&& other) noexcept : Held(std::exchange(other.Held, nullptr)) {}
    CountedPointer& operator=(CountedPointer other) noexcept {
        std::swap(Held, other.Held);
        return *this;
    }
    ~CountedPointer() {
        if (Held != nullptr) {
            Held->Release();
        }
    }

    /// Takes over a reference that the caller has.
    [[nodiscard]] static CountedPointer Adopt(Object* object) {
        CountedPointer pointer;
        pointer.Held = object;
        return pointer;
    }
    /// Takes a reference of its own.
    [[nodiscard]] static CountedPointer Share(Object* object) {
        CountedPointer pointer = Adopt(object);
        if (object != nullptr) {
            object->AddRef();
        }
        return pointer;
    }

    [[nodiscard]] Object* Get() const { return Held; }
    Object* operator->() const { return Held; }
    Object& operator*() const { return *Held; }
    explicit operator bool() const { return Held != nullptr; }
    /// Hands the reference over to the caller.
    Object* Detach() { return std::exchange(Held, nullptr); }

  private:
    Object* Held = nullptr;
};

/// An interface of an object by an identifier; nothing when the object is null or hasn't got it.
template <typename Interface>
[[nodiscard]] CountedPointer<Interface> QueryFor(IUnknown* object, const GUID& id = Interface::Id) {
    void* found = nullptr;
    if (object == nullptr || !Succeeded(object->QueryInterface(id, &found))) {
        return {};
    }
    return CountedPointer<Interface>::Adopt(static_cast<Interface*>(found));
}
