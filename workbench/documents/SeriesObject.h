#pragma once

#include <utility>

#include "platform/CountedObject.h"
#include "workbench/documents/GraphNumbers.h"
#include "workbench/documents/MemberTable.h"

namespace quillara {

/// A series of a graph as scripts see it, as it was when they asked. By name: Name, Labels, X and Y.
class SeriesObject final : public ByMembers<CountedObject<IDispatch>> {
  public:
    explicit SeriesObject(NamedNumbers numbers) : Shown(std::move(numbers)) {}

    HRESULT QueryInterface(const GUID& id, void** object) override;
    [[nodiscard]] const NamedNumbers& Numbers() const { return Shown; }

  private:
    [[nodiscard]] const ObjectKind& MembersOf() const override;
    [[nodiscard]] void* ServedObject() override { return this; }

    NamedNumbers Shown;
};

}  // namespace quillara
