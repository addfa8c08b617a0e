#pragma once

#include "host/GraphAutomation.h"
#include "platform/CountedObject.h"
#include "workbench/documents/MemberTable.h"

namespace quillara {

/// The application as analyses and scripts see it.
class ApplicationObject final : public ByMembers<CountedObject<IApplication>> {
  public:
    HRESULT QueryInterface(const GUID& id, void** object) override;
    HRESULT GetGraphCollection(IDocumentCollection** graphs) override;
    HRESULT GetResultPlacement(std::int32_t* placement) override;
    /// The document that came last into the common window.
    HRESULT GetActiveItem(IDispatch** item) override;

  private:
    [[nodiscard]] const ObjectKind& MembersOf() const override;
    [[nodiscard]] void* ServedObject() override { return this; }
};

}  // namespace quillara
