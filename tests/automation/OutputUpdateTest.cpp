// What becomes of stand-alone documents when the user drills, presses buttons and closes windows.

#include <gtest/gtest.h>

#include <string>

#include "tests/automation/OutputsBench.h"

namespace dialogtest {
namespace {

using quillara::Texts;

/// Five people, with the frequency tables of three drill variables open as A, B and C.
class OutputUpdates : public OutputsTest {
  protected:
    void SetUp() override {
        OpenAutoUpdated({Texts("sex", {"f", "f", "f", "m", "m"}), Texts("town", {"x", "y", "y", "x", "z"}),
                         Texts("kind", {"p", "q", "p", "p", "p"})},
                        {"sex", "town", "kind"});
        Click(FrequenciesButton);
        Start = Windows();
    }

    std::string Start;
};

TEST_F(OutputUpdates, StepsReplaceContentInPlace) {
    EXPECT_EQ(Start, "A sex: f 3, m 2 | B town: x 2, y 2, z 1 | C kind: p 4, q 1");
    EXPECT_EQ(Tracked(), "9060.1 9060.2 9060.3");
    Down("sex", "f");
    EXPECT_EQ(Windows(), "A town: x 1, y 2 | B kind: p 2, q 1");
    EXPECT_EQ(Tracked(), "9060.1 9060.2");  // the third is made no more
    EXPECT_EQ(Host().Documents().OfAnalysis().size(), 2U);
    Down("kind", "p");
    EXPECT_EQ(Windows(), "A town: x 1, y 1");
    Up("kind (p)");
    EXPECT_EQ(Windows(), "A kind: p 2, q 1");  // what comes back gets no window
    EXPECT_EQ(Tracked(), "9060.1");
    EXPECT_EQ(Routed, Names());
    EXPECT_TRUE(Named('A').IsSaved());
}

TEST_F(OutputUpdates, PressedButtonsBringTheirWindowsToTheFrontAndUpdatesDoNot) {
    Down("kind", "p");
    Click(SummaryButton);
    Named('A').Minimize();
    EXPECT_EQ(Letters(), "A-BD");
    Down("town", "x");
    EXPECT_EQ(Windows(), "A- sex: f 1, m 1 | D analysis: town 0, kind 0");
    Click(FrequenciesButton);
    EXPECT_EQ(Letters(), "DA");
    EXPECT_EQ(Tracked(), "9060.1 9058.1");
}

TEST_F(OutputUpdates, ClosedDocumentsStayClosed) {
    Down("kind", "p");
    Click(SummaryButton);
    EXPECT_EQ(Letters(), "ABD");
    Named('D').Close();
    Calls.clear();
    Down("town", "x");
    EXPECT_EQ(Tracked(), "9060.1");
    EXPECT_EQ(Calls.find("Route 9056.2"), std::string::npos) << Calls;  // the summary isn't even made
    Up("town (x)");
    Click(FrequenciesButton);
    EXPECT_EQ(Letters(), "AE");
    Named('A').Close();
    Up("kind (p)");
    EXPECT_EQ(Windows(), "E town: x 2, y 2, z 1");
    Click(FrequenciesButton);
    EXPECT_EQ(Letters(), "FEG");
    EXPECT_EQ(Tracked(), "9060.2 9060.1 9060.3");
}

TEST_F(OutputUpdates, DocumentsGoByAQuestionOnlyWhenItsAnswerIsOne) {
    for (const int choice : {0, 2, -1}) {
        Named('B').CloseWithChoice(choice);
        EXPECT_EQ(Tracked(), "9060.1 9060.2 9060.3");
    }
    Named('B').CloseWithChoice(1);
    EXPECT_EQ(Tracked(), "9060.1 9060.3");
    EXPECT_EQ(Letters(), "AC");
}

TEST_F(OutputUpdates, TogglingTheOptionOffLeavesTheDocumentsTracked) {
    Click(AutoUpdateBox);
    Down("kind", "p");
    Click(FrequenciesButton);
    EXPECT_EQ(Routed, (Names{"sex: f 2, m 2", "town: x 2, y 1, z 1"}));
    EXPECT_EQ(Analysis().AutoUpdate(0), 0);
    EXPECT_EQ(Windows(), Start);
    Click(AutoUpdateBox);
    EXPECT_EQ(Analysis().AutoUpdate(0), 1);  // no command runs here
    EXPECT_EQ(Windows(), "A sex: f 2, m 2 | B town: x 2, y 1, z 1");
    EXPECT_EQ(Tracked(), "9060.1 9060.2");
}

TEST_F(OutputUpdates, ClosingHidesTheDocumentsUnlessAScriptDrives) {
    Host().SetAutomated(true);
    Analysis().BeforeClose();
    EXPECT_EQ(Windows() + Tracked(), Start);
    Host().SetAutomated(false);
    Click(FrequenciesButton);
    EXPECT_EQ(Letters(), "ABCDEF");
    Analysis().BeforeClose();
    EXPECT_EQ(Letters() + Tracked(), "ABC");
    EXPECT_EQ(Host().Documents().OfAnalysis().size(), 3U);
}

TEST_F(OutputUpdates, OnlyCommandsOfTheDialogMakeThem) {
    Analysis().DDNFrequency(nullptr);
    EXPECT_EQ(Routed.size(), 3U);
    Command(2);
    Calls.clear();
    EXPECT_EQ(Analysis().AutoUpdate(0), 1);
    EXPECT_EQ(Calls, "");  // the dialog has gone
    EXPECT_EQ(Windows() + Tracked(), Start + "9060.1 9060.2 9060.3");
}

TEST_F(OutputUpdates, TheNextOutputTakesTheKeyGiven) {
    Analysis().SetNextOutputID(9111, 1);
    EXPECT_FALSE(Analysis().OutputExists(9111, 1));
    Click(FrequenciesButton);
    EXPECT_EQ(Tracked(), "9060.1 9060.2 9060.3 9111.1");
    EXPECT_TRUE(Analysis().OutputExists(9111, 1));
    EXPECT_EQ(Letters(), "ADBC");
    Analysis().SetNextOutputID(0, 2);
    Click(FrequenciesButton);
    EXPECT_EQ(Windows(), "A sex: f 3, m 2 | D sex: f 3, m 2 | B town: x 2, y 2, z 1 | C kind: p 4, q 1");
    EXPECT_EQ(Tracked(), "9060.1 9060.2 9060.3 9111.1");
}

TEST_F(OutputUpdates, TheUserMayCloseDocumentsDuringAnUpdate) {
    // clang-format off
    const struct { const char* When; char Closed; const char* Left; } cases[] = {
        {"Route 9056.1",   'A', "B town: x 2, y 1, z 1"},
        {"Route 9056.1",   'B', "A sex: f 2, m 2"},
        {"Route 9056.1",   'C', "A sex: f 2, m 2 | B town: x 2, y 1, z 1"},
        {"Replace 9060.1", 'A', "B town: x 2, y 1, z 1"},
        {"Replace 9060.2", 'A', "B town: x 2, y 1, z 1"},
        {"Replace 9060.2", 'B', "A sex: f 2, m 2"},
    };
    // clang-format on
    for (const auto& each : cases) {
        Click(FrequenciesButton);
        OnCall = [&](std::string_view call) {
            if (call == each.When) {
                Named(each.Closed).Close();
                Host().Documents().LetHiddenGo();
            }
        };
        Down("kind", "p");
        OnCall = nullptr;
        EXPECT_EQ(Windows(), each.Left) << each.When << ' ' << each.Closed;
        SetUp();
    }
}

TEST_F(OutputUpdates, ADialogThatClosesOnTheWayEndsTheUpdateBeforeAnythingIsDropped) {
    OnCall = [this](std::string_view call) {
        if (call == "Replace 9060.1") {
            Startup().SendCommand(2);
        }
    };
    Down("kind", "p");
    EXPECT_EQ(Windows(), "A sex: f 2, m 2 | B town: x 2, y 1, z 1 | C kind: p 4, q 1");
    EXPECT_EQ(Tracked(), "9060.1 9060.2 9060.3");
}

/// Cases of variables whose categories follow no pattern.
std::vector<quillara::Variable> ManyCases(const Names& names) {
    std::vector<quillara::Variable> variables;
    unsigned number = 1;
    for (const std::string& name : names) {
        std::vector<std::optional<std::string>> texts(400);
        for (auto& text : texts) {
            number = number * 1103515245U + 12345U;
            text = std::string(1, static_cast<char>('p' + (number >> 16) % 3));
        }
        variables.push_back(Texts(name, texts));
    }
    return variables;
}

TEST_F(OutputUpdates, TenStepsKeepTheDocumentsAndShowWhatTheButtonsWould) {
    const Names names{"a", "b", "c", "d", "e"};
    OpenAutoUpdated(ManyCases(names), names);
    Down("a", "p");
    Click(FrequenciesButton);
    Click(SummaryButton);
    EXPECT_EQ(Letters(), "ABCDE");
    Down("b", "q");
    Down("c", "q");
    EXPECT_EQ(Letters(), "ABE");
    for (const std::string step :
         {"-b (q)", "+b", "-a (p)", "+d", "-c (q)", "+a", "-b (q)", "-d (q)", "+e", "-e (q)"}) {
        step[0] == '+' ? Down(step.substr(1), "q") : Up(step.substr(1));
        Click(AutoUpdateBox);  // off: what the buttons show now
        Click(FrequenciesButton);
        Click(SummaryButton);
        Click(AutoUpdateBox);
        EXPECT_EQ(Windows(), "A " + Routed[0] + " | B " + Routed[1] + " | E " + Routed.back()) << step;
        Routed.clear();
    }
    EXPECT_EQ(Tracked(), "9060.1 9060.2 9058.1");
    EXPECT_EQ(Host().Documents().OfAnalysis().size(), 4U) << "the three, and the last that went its normal way";
}

}  // namespace
}  // namespace dialogtest
