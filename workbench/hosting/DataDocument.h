#pragma once

#include <functional>
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
    DataDocument(std::shared_ptr<const DataTable> table, std::function<void()> letGo)
        : Held(std::move(table)), LetGo(std::move(letGo)) {}

    HRESULT QueryInterface(const GUID& id, void** object) override;

    /// The table. Throws MemberRefusal when it has been closed.
    [[nodiscard]] const DataTable& Table() const { return *Share(); }
    /// The same, for who keeps it beyond the document.
    [[nodiscard]] const std::shared_ptr<const DataTable>& Share() const;
    /// Lets the table go, for the analysis too.
    void Close();

  private:
    [[nodiscard]] const ObjectKind& MembersOf() const override;
    [[nodiscard]] void* ServedObject() override { return this; }

    std::shared_ptr<const DataTable> Held;
    std::function<void()> LetGo;
};

}  // namespace quillara
