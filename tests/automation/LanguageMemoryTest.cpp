// The language's memory fails at each of its calls in turn, while the user drills, chooses, reorders and brushes with
// documents that are updated: afterwards lists, sets, controls and numbers agree.

#include <array>
#include <cstdlib>
#include <new>

#include "dialogs/ShownAgain.h"
#include "platform/WindowMessages.h"
#include "tests/automation/OutputsBench.h"

namespace {

/// Calls until memory fails once; 0: never.
std::size_t CallsLeft = 0;

/// Runs an operation with the n-th call failing; false when it has fewer.
bool FailsAt(const std::function<void()>& operate, std::size_t call) {
    CallsLeft = call;
    try {
        operate();
    } catch (const std::exception&) {
        // What an answer of the test has met; what the analysis meets ends in a message.
    }
    return std::exchange(CallsLeft, 0) == 0;
}

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    void* memory = CallsLeft > 0 && --CallsLeft == 0 ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return CallsLeft > 0 && --CallsLeft == 0 ? nullptr : std::malloc(size == 0 ? 1 : size);
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace dialogtest {
namespace {

using quillara::Texts;

constexpr char NotEnoughMemory[] =
    "Not enough memory to complete the requested computations; close other applications and try again.";

/// Somebody in the middle of an exploration: a step taken, tables of it in windows.
class LanguageMemory : public OutputsTest {
  protected:
    void Explore() {
        OpenAutoUpdated({Texts("sex", {"f", "f", "f", "m", "m"}), Texts("town", {"x", "y", "y", "x", "z"}),
                         Texts("kind", {"p", "q", "p", "p", "p"}), quillara::Numbers("age", {1, 2, 3, 4, 5})},
                        {"sex", "town", "kind"});
        Choose({"sex", "town", "kind"}, {"age"});
        Review({"kind"}, {"age"});
        Host().Services.Trace = nullptr;
        Down("kind", "p");
        for (const int button : Buttons) {
            Click(button);
        }
    }

    /// What the buttons show now.
    Names Results() {
        Routed.clear();
        Click(AutoUpdateBox);
        for (const int button : Buttons) {
            Command(button);
        }
        Click(AutoUpdateBox);
        return std::exchange(Routed, {});
    }

    std::string ListsAndControls() {
        std::string lists = Lists();
        std::erase_if(lists, [](char c) { return c == '[' || c == ']'; });
        return lists + " | " + DialogBench::TextOf(DrillCategoricalCaption) + " | " +
               DialogBench::TextOf(ReviewCategoricalCaption) + " | " +
               Enabled({DrillDownListControl, DrillUpListControl, DownButton, UpButton, OrderButton, SummaryButton,
                        FrequenciesButton, ReviewFrequenciesButton});
    }

    void ExpectThatAllAgrees(bool updated) {
        const bool told = std::ranges::count(TakeMessages(), NotEnoughMemory) > 0;
        const std::string shown = ListsAndControls();
        ShowSets(Dialog());
        EXPECT_EQ(shown, ListsAndControls()) << "lists and controls against sets";
        std::vector<std::string> windows;
        for (ResultDocument* document : Host().Documents().InWindows()) {
            windows.push_back(TextOf(*document));
        }
        const Names results = Results();
        Analysis().DataChanged = 1;
        EXPECT_EQ(results, Results()) << "numbers against sets";
        // A recount without the host's memory says so, and its table shows the counts as they stand.
        for (const std::string& window : updated && !told ? windows : Names()) {
            EXPECT_NE(std::ranges::find(results, window), results.end()) << window << " isn't of the present subset";
        }
        EXPECT_EQ(Tracked().find("updating"), std::string::npos);
    }

    static constexpr std::array Buttons{SummaryButton, FrequenciesButton, ReviewFrequenciesButton};
};

TEST_F(LanguageMemory, FailingAtAnyPointLeavesListsSetsAndNumbersThatAgree) {
    struct Operation {
        const char* Name;
        bool Updates;  ///< the documents in windows too
        std::function<void()> Run;
    };
    const Operation operations[]{
        {"Down", true, [this] { Down("town", "x"); }},
        {"Down by new intervals", true,
         [this] {
             Pick("age");
             Click(ExactIntervalsRadio);
             Click(DownButton, {Category("0.777778<x<=1.22222")});
         }},
        {"Up", true, [this] { Up("kind (p)"); }},
        {"Choose", false, [this] { Choose({"town"}, {"age"}); }},
        {"Review", false,
         [this] {
             Review({"sex", "town"}, {"age"});
         }},
        {"Order", false,
         [this] {
             Click(OrderButton, {[](quillara::Window& window) {
                       window.ClickRow(CurrentOrderList, 1);
                       window.Click(PlaceButton);
                       window.Click(OkCommand);
                   }});
         }},
        {"Drag", false,
         [this] {
             Startup().ClickRow(DrillDownListControl, 2);
             Startup().Drag(DrillDownListControl, 0);
         }},
        {"Update", true, [this] { Analysis().AutoUpdate(0); }},
    };
    for (const auto& [name, updates, run] : operations) {
        bool failed = true;
        for (std::size_t call = 1; failed && !HasFailure(); ++call) {
            SCOPED_TRACE(std::string(name) + ", call " + std::to_string(call));
            Explore();
            failed = FailsAt(run, call);
            ForgetAnswers();
            ExpectThatAllAgrees(updates);
        }
    }
}

}  // namespace
}  // namespace dialogtest
