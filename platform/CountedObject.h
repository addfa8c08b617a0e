#pragma once

#include <cstdint>

/// An object of one interface that counts its references, the maker's first, and goes with the last.
template <typename Interface>
class CountedObject : public Interface {
  public:
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;

    std::uint32_t AddRef() override { return ++References; }
    std::uint32_t Release() override {
        const std::uint32_t left = --References;
        if (left == 0) {
            delete this;
        }
        return left;
    }

  protected:
    CountedObject() = default;
    virtual ~CountedObject() = default;

  private:
    std::uint32_t References = 1;
};
