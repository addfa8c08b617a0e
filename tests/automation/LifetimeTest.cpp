// Scripts hold the startup dialog and its analysis longer than the window and the document last.

#include <gtest/gtest.h>

#include "host/GraphAutomation.h"
#include "host/ModuleState.h"
#include "host/ScriptValues.h"
#include "platform/OwnedText.h"
#include "resources/ControlIds.h"
#include "tests/automation/FaceBench.h"
#include "tests/automation/ScriptBench.h"
#include "tests/workbench/Tables.h"

CAnalysisSupport* Orv6NewAnalysis();

namespace dialogtest {
namespace {

class Lifetime : public testing::Test, public ScriptBench {
  protected:
    Lifetime() {
        Open(SmallTable());
        Write(DrillVariablesButton, u"sex | age");
        Face = CountedPointer<DDNStartup>::Share(&FaceOf(Dialog()));
        Held = QueryFor<IAnalysisAutomation>(CountedPointer<IUnknown>::Adopt(OleAGetAnalysis(&Host())).Get());
    }
    static quillara::DataTable SmallTable() {
        return quillara::TableOf({quillara::Texts("sex", {"f", "m", "m"}), quillara::Numbers("age", {1, 2, 3})});
    }
    static void Drop(IDispatch* object) {
        if (object != nullptr) {
            object->Release();
        }
    }
    /// The statuses of a read, a press and a call of the dialog, of the analysis, and of the analysis by name.
    std::string Statuses() {
        OwnedText name;
        OwnedVariant interactive;
        IDocumentCollection* outputs = nullptr;
        IDispatch* made = nullptr;
        std::string text = StatusText(Face->get_Variables(name.Put())) + " " +
                           StatusText(Face->get_Frequencies(&made)) + " " + StatusText(Face->DrillUp()) + " | " +
                           StatusText(Held->GetAnalysisOutputs(&outputs)) + " " +
                           CallByName(*Held, "Name", DispatchPropertyGet).Text();
        Drop(made);
        Drop(outputs);
        return text;
    }

    CountedPointer<DDNStartup> Face;
    CountedPointer<IAnalysisAutomation> Held;
};

TEST_F(Lifetime, TheDialogStaysBehindItsWindowAndItsDocument) {
    EXPECT_EQ(Statuses(), "ok ok 80070005 | ok 'Drill-Down Analysis'");
    EXPECT_EQ(Face->Cancel(), S_OK);
    EXPECT_EQ(Host().StartupWindow(), nullptr);
    EXPECT_EQ(Statuses(), "800401fd 800401fd 800401fd | ok 'Drill-Down Analysis'");
    Open(SmallTable());  // the document goes
    EXPECT_EQ(Statuses(), "800401fd 800401fd 800401fd | 800401fd 800401fd");
    EXPECT_EQ(GetByName(Dialog(), "Variables"), "''");
    IDispatch* application = nullptr;
    EXPECT_EQ(Face->get_Application(&application), S_OK);
    Drop(application);
    EXPECT_EQ(OrvGetAppModuleState()->Locks, 2);
    Face = {};  // the analysis goes, with the memory of a document that is no more
    EXPECT_EQ(OrvGetAppModuleState()->Locks, 1);
}

TEST_F(Lifetime, ADocumentMayGoWithTheWindowOpen) {
    const auto outputs = [this] {
        IDispatch* made = nullptr;
        Face->get_Frequencies(&made);
        return CountedPointer<IDispatch>::Adopt(made);
    }();
    Open(SmallTable());
    EXPECT_EQ(Statuses(), "800401fd 800401fd 800401fd | 800401fd 800401fd");
    EXPECT_EQ(Read(outputs.Get(), "Count"), "2");
}

TEST_F(Lifetime, OkAndCancelTellWhetherTheDialogActed) {
    int done = 7;
    EXPECT_EQ(Face->OK(&done), S_OK);
    EXPECT_EQ(done, 0);
    OwnedText name;
    EXPECT_EQ(Face->get_Name(name.Put()), S_OK);
    EXPECT_EQ(NarrowText(name.View()), "Drill-Down analysis startup dialog");
    IDispatch* parent = nullptr;
    EXPECT_EQ(Face->get_Parent(&parent), S_OK);
    EXPECT_EQ(CountedPointer<IDispatch>::Adopt(parent).Get(), static_cast<IDispatch*>(Held.Get()));
    EXPECT_EQ(Face->put_ResultsOption(1), E_NOTIMPL);
    EXPECT_EQ(TakeError(), "This analysis has no results dialog.");
}

TEST_F(Lifetime, TheApplicationShowsTheGraphsOfTheCurrentAnalysis) {
    const quillara::DataTable table = SmallTable();
    quillara::AnalysisDocument other(table);
    other.Adopt(std::unique_ptr<CAnalysisSupport>(Orv6NewAnalysis()));
    ASSERT_TRUE(other.RunSequence());
    const auto graphs = [] {
        const auto application = CountedPointer<IApplication>::Adopt(OleAGetApplication());
        IDocumentCollection* found = nullptr;
        application->GetGraphCollection(&found);
        return Read(CountedPointer<IDispatch>::Adopt(found).Get(), "Count");
    };
    const auto press = [](CAnalysisSupport& analysis, int id) {
        return Outcome([&] { return analysis.GetStartupDialog()->SetOleProperty(static_cast<std::uint16_t>(id)); });
    };
    for (quillara::AnalysisDocument* document : {&Host(), &other}) {
        CAnalysisModelessDialog& dialog = *document->Analysis().GetStartupDialog();
        dialog.SetOleProperty(DrillVariablesButton, u"sex | age");
        dialog.SetOleProperty(AutoUpdateBox, 1);
        EXPECT_EQ(press(document->Analysis(), PieChartsButton), "ok");
    }
    EXPECT_EQ(press(other.Analysis(), HistogramsButton), "ok");
    const std::string all = graphs();
    std::string inside[2];
    {
        const CEnterAnalysisContext one(Host().Analysis());
        inside[0] = graphs();
        const CEnterAnalysisContext two(other.Analysis());
        inside[1] = graphs();
    }
    EXPECT_LT(std::stoi(inside[0]), std::stoi(inside[1]));
    EXPECT_EQ(std::stoi(inside[0]) + std::stoi(inside[1]), std::stoi(all));
    EXPECT_EQ(graphs(), all);
}

}  // namespace
}  // namespace dialogtest
