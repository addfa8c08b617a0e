// Stand-alone documents through many steps.

#include <gtest/gtest.h>

#include <string>

#include "tests/automation/OutputsBench.h"

namespace dialogtest {
namespace {

using quillara::Texts;

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

TEST_F(OutputsTest, TenStepsKeepTheDocumentsAndShowWhatTheButtonsWould) {
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
