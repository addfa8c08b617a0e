#pragma once

#include <memory>
#include <utility>

#include "platform/CountedObject.h"
#include "workbench/data/DataTable.h"
#include "workbench/documents/MemberTable.h"

namespace quillara {

/// A data table that an analysis has saved, as scripts see it: by name Name, Cases, Variables, VariableNames, Column,
/// Save and Close. Once closed it gives CO_E_OBJNOTCONNECTED.
class DataDocument final : public ByMembers<CountedObject<IDispatch>> {
  public:
    explicit DataDocument(std::shared_ptr<const DataTable> table) : Held(std::move(table)) {}

    HRESULT QueryInterface(const GUID& id, void** object) override;

    /// The table. Throws MemberRefusal when it has been closed.
    [[nodiscard]] const DataTable& Table() const { return *Share(); }
    /// The same, for who keeps it beyond the document.
    [[nodiscard]] const std::shared_ptr<const DataTable>& Share() const;
    /// Lets the table go.
    void Close() { Held.reset(); }

  private:
    [[nodiscard]] const ObjectKind& MembersOf() const override;
    [[nodiscard]] void* ServedObject() override { return this; }

    std::shared_ptr<const DataTable> Held;
};

}  // namespace quillara
