#pragma once

#include <utility>
#include <vector>

#include "host/GraphAutomation.h"
#include "platform/CountedObject.h"
#include "platform/CountedPointer.h"
#include "workbench/documents/MemberTable.h"

namespace quillara {

using Items = std::vector<CountedPointer<IDispatch>>;

/// Objects of the host in their order, as they were when the collection was made. By name: Count, and Item of a place
/// from 1 or of a name, which is that of the first object of this name.
class DocumentCollection final : public ByMembers<CountedObject<IDocumentCollection>> {
  public:
    explicit DocumentCollection(Items items) : Held(std::move(items)) {}

    HRESULT QueryInterface(const GUID& id, void** object) override;
    HRESULT GetCount(std::int32_t* count) override;
    HRESULT GetItem(const VARIANT& index, IDispatch** item) override;

  private:
    [[nodiscard]] const ObjectKind& MembersOf() const override;
    [[nodiscard]] void* ServedObject() override { return this; }
    [[nodiscard]] CountedPointer<IDispatch> Find(const VARIANT& index) const;

    Items Held;
};

[[nodiscard]] CountedPointer<IDispatch> CollectionOf(Items items);

}  // namespace quillara
