#pragma once

#include <cstdint>

#include "platform/Automation.h"

namespace quillara {

/// A part of a document that automation sees as an object of one interface; it shares the document's count of
/// references.
template <typename Interface>
class DocumentPart : public Interface {
  public:
    explicit DocumentPart(IUnknown& document) : Whole(document) {}
    DocumentPart(const DocumentPart&) = delete;
    DocumentPart& operator=(const DocumentPart&) = delete;

    HRESULT QueryInterface(const GUID& id, void** object) override {
        *object = nullptr;
        if (id != IUnknown::Id && id != Interface::Id) {
            return E_NOINTERFACE;
        }
        *object = static_cast<Interface*>(this);
        AddRef();
        return S_OK;
    }
    std::uint32_t AddRef() override { return Whole.AddRef(); }
    std::uint32_t Release() override { return Whole.Release(); }

  protected:
    ~DocumentPart() = default;

  private:
    IUnknown& Whole;
};

}  // namespace quillara
