#pragma once

#include "host/GraphAutomation.h"
#include "platform/CountedObject.h"
#include "workbench/documents/MemberTable.h"

class CAnalysisModelessDialog;

namespace quillara {

class AnalysisDocument;

/// An analysis as scripts see it: one object as long as the analysis is open. Afterwards it gives
/// CO_E_OBJNOTCONNECTED.
class AnalysisObject final : public ByMembers<CountedObject<IAnalysisAutomation>> {
  public:
    explicit AnalysisObject(AnalysisDocument& document) : Open(&document) {}

    HRESULT QueryInterface(const GUID& id, void** object) override;
    HRESULT GetAnalysisOutputs(IDocumentCollection** outputs) override;

    /// The analysis closes.
    void Disconnect() { Open = nullptr; }
    /// The document of the analysis. Throws MemberRefusal when it has closed.
    [[nodiscard]] AnalysisDocument& Document() const;
    /// The startup dialog, which may have closed: null.
    [[nodiscard]] CAnalysisModelessDialog* Dialog() const;

  private:
    [[nodiscard]] const ObjectKind& MembersOf() const override;
    [[nodiscard]] void* ServedObject() override { return this; }

    AnalysisDocument* Open;
};

}  // namespace quillara
