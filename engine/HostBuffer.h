#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

#include "host/AnalysisSupport.h"

namespace drilldown {

/// Zeroed memory from the host for the length of one scope; null when there is none. For plain data only.
template <typename T>
class HostBuffer {
    static_assert(std::is_trivially_copyable_v<T>);

  public:
    HostBuffer(CAnalysisSupport& host, std::size_t count) : Host(&host) {
        void* address = nullptr;
        if (host.AllocMem(&address, static_cast<unsigned long>(count * sizeof(T))) == 0) {
            Items = static_cast<T*>(address);
            std::uninitialized_value_construct_n(Items, count);
        }
    }
    HostBuffer(HostBuffer&& other) noexcept : Host(other.Host), Items(std::exchange(other.Items, nullptr)) {}
    HostBuffer(const HostBuffer&) = delete;
    HostBuffer& operator=(const HostBuffer&) = delete;
    HostBuffer& operator=(HostBuffer&&) = delete;
    ~HostBuffer() {
        if (Items != nullptr) {
            Host->FreeMem(Items);
        }
    }

    explicit operator bool() const noexcept { return Items != nullptr; }
    [[nodiscard]] T* data() const noexcept { return Items; }
    [[nodiscard]] T& operator[](std::size_t index) const noexcept { return Items[index]; }

  private:
    CAnalysisSupport* Host;
    T* Items = nullptr;
};

}  // namespace drilldown
