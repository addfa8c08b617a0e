#pragma once

#include <cstdint>
#include <utility>

// Arrow's C data interface: how libraries hand columns to each other within a process. The layout is that of its
// published binary interface. Whoever holds a struct calls its Release, once; a null Release says that it holds nothing
// or has been moved.

inline constexpr std::int64_t ArrowNullable = 2;  ///< a flag of a schema

struct ArrowSchema {
    const char* Format = nullptr;
    const char* Name = nullptr;
    const char* Metadata = nullptr;
    std::int64_t Flags = 0;
    std::int64_t ChildCount = 0;
    ArrowSchema** Children = nullptr;
    ArrowSchema* Dictionary = nullptr;
    void (*Release)(ArrowSchema*) = nullptr;
    void* PrivateData = nullptr;
};

struct ArrowArray {
    std::int64_t Length = 0;
    std::int64_t NullCount = 0;  ///< -1: not known
    std::int64_t Offset = 0;
    std::int64_t BufferCount = 0;
    std::int64_t ChildCount = 0;
    const void** Buffers = nullptr;
    ArrowArray** Children = nullptr;
    ArrowArray* Dictionary = nullptr;
    void (*Release)(ArrowArray*) = nullptr;
    void* PrivateData = nullptr;
};

/// Its calls give 0 or an error number. A chunk without Release is the end.
struct ArrowArrayStream {
    int (*GetSchema)(ArrowArrayStream*, ArrowSchema*) = nullptr;
    int (*GetNext)(ArrowArrayStream*, ArrowArray*) = nullptr;
    const char* (*GetLastError)(ArrowArrayStream*) = nullptr;
    void (*Release)(ArrowArrayStream*) = nullptr;
    void* PrivateData = nullptr;
};

/// Lets go what a struct holds, if it holds anything.
template <typename Struct>
void ReleaseArrow(Struct& held) {
    if (held.Release != nullptr) {
        held.Release(&held);
    }
}

/// A struct that is released at the end.
template <typename Struct>
class ArrowHeld {
  public:
    ArrowHeld() = default;
    /// Takes over what `given` holds, which then holds nothing.
    explicit ArrowHeld(Struct& given) : Held(std::exchange(given, Struct())) {}
    ArrowHeld(ArrowHeld&& other) noexcept : ArrowHeld(other.Held) {}
    ArrowHeld& operator=(ArrowHeld&&) = delete;
    ~ArrowHeld() { ReleaseArrow(Held); }

    [[nodiscard]] Struct* Put() { return &Held; }
    [[nodiscard]] const Struct& Get() const { return Held; }
    Struct* operator->() { return &Held; }
    explicit operator bool() const { return Held.Release != nullptr; }

  private:
    Struct Held;
};
