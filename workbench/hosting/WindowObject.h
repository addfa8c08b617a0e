#pragma once

#include <utility>

#include "platform/CountedObject.h"
#include "platform/CountedPointer.h"
#include "workbench/documents/MemberTable.h"
#include "workbench/hosting/AnalysisObject.h"

namespace quillara {

/// The window of a startup dialog, in which a script does what a person would. Dialogs that open ask the script's
/// answers, where they aren't left to a person. Once the dialog has closed it gives CO_E_OBJNOTCONNECTED.
class WindowObject final : public ByMembers<CountedObject<IDispatch>> {
  public:
    explicit WindowObject(CountedPointer<AnalysisObject> analysis) : Owner(std::move(analysis)) {}

    HRESULT QueryInterface(const GUID& id, void** object) override;

    [[nodiscard]] const AnalysisObject& Analysis() const { return *Owner.Get(); }

  private:
    [[nodiscard]] const ObjectKind& MembersOf() const override;
    [[nodiscard]] void* ServedObject() override { return this; }

    CountedPointer<AnalysisObject> Owner;
};

}  // namespace quillara
