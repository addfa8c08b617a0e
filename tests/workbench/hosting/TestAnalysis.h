#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/AnalysisContext.h"
#include "host/AnalysisSupport.h"
#include "host/ModuleState.h"
#include "platform/ModuleInstance.h"
#include "tests/workbench/Tables.h"
#include "workbench/hosting/AnalysisDocument.h"

namespace quillara {

/// A module without any resources.
struct TestContext : CAnalysisContext {
    [[nodiscard]] const ModuleInstance* Instance() const override { return &Module; }
    [[nodiscard]] ModuleState* State() const override { return &Counts; }
    ModuleInstance Module{"test", {}, {}};
    mutable ModuleState Counts;
};

/// An analysis that does nothing by itself: tests call the host through it.
class TestAnalysis : public CAnalysisSupport {
  public:
    TestAnalysis() : CAnalysisSupport(nullptr, TheContext) { SetSequenceTable(Steps, 3); }
    ~TestAnalysis() override {
        if (Block != nullptr) {
            FreeMem(Block);
        }
        Note("destroyed");
    }

    int InitializeAfterFileChanged() override {
        InitCommons(&Table, &Names, &Line, &Weight, nullptr);
        return Note("bound");
    }
    int Work() { return Note("worked") * WorkResult; }
    int Finish() { return Note("finished"); }
    bool ForwardSequence(int /*from*/, int to) const override { return to != Forbidden; }
    void BeforeClose() override { Note("closing"); }

    OrvTag Table;
    Orv88Tag Names;
    b1_com Line;
    Wght_com Weight;
    void* Block = nullptr;  ///< freed at the end
    int WorkResult = 1;
    int Forbidden = -1;
    std::vector<std::string>* Notes = nullptr;

  private:
    int Note(const char* text) {
        if (Notes != nullptr) {
            Notes->push_back(text);
        }
        return 1;
    }

    static inline const TestContext TheContext;
    static const SequenceStep Steps[3];
};

inline const SequenceStep TestAnalysis::Steps[3] = {
    {1, &CAnalysisSupport::InitializeAfterFileChanged, 7},
    {5, static_cast<int (CAnalysisSupport::*)()>(&TestAnalysis::Finish), 0},
    {7, static_cast<int (CAnalysisSupport::*)()>(&TestAnalysis::Work), 5},
};

/// A document with a test analysis.
struct TestHost {
    explicit TestHost(const DataTable& table) : Document(table) {
        auto analysis = std::make_unique<TestAnalysis>();
        Analysis = analysis.get();
        Document.Adopt(std::move(analysis));
    }

    AnalysisDocument Document;
    TestAnalysis* Analysis;
};

}  // namespace quillara
