// The language's memory fails at each of its calls in turn, while the user drills, chooses, reorders and brushes with
// documents that are updated: afterwards lists, sets, controls and numbers agree.

#include <gmock/gmock.h>

#include <cstdlib>
#include <new>

#include "dialogs/ShownAgain.h"
#include "host/OleConstant.h"
#include "resources/ControlIds.h"
#include "tests/automation/FaceBench.h"
#include "tests/dialogs/DialogScript.h"
#include "workbench/recording/SessionRecorder.h"

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

constexpr char NotEnoughMemory[] =
    "Not enough memory to complete the requested computations; close other applications and try again.";

class LanguageMemory : public testing::Test, public OutputsBench {
  protected:
    void DoAll(const Names& lines) {
        for (const std::string& line : lines) {
            Do(*this, line);
        }
    }

    /// Somebody in the middle of an exploration: a step taken, tables of it in windows.
    void Explore() {
        DoAll({"open sex=f,f,f,m,m town=x,y,y,x,z kind=p,q,p,p,p age=1,2,3,4,5", "choose sex town kind; age",
               "review kind; age", "press 9106"});
        Host().Services.Trace = nullptr;
        DoAll({"down kind p", "press 9058", "press 9060", "press 9082"});
    }

    /// What the buttons show now.
    Names Results() {
        Routed.clear();
        Click(AutoUpdateBox);
        for (const int button : {SummaryButton, FrequenciesButton, ReviewFrequenciesButton}) {
            Command(button);
        }
        Click(AutoUpdateBox);
        return std::exchange(Routed, {});
    }

    std::string ListsAndControls() {
        std::string lists = Lists();
        std::erase_if(lists, [](char c) { return c == '[' || c == ']'; });
        return lists + " | " + Ask(*this, "text 9052 9051") + " | " +
               Ask(*this, "enabled 9053 9054 9056 9057 9055 9058 9060 9082");
    }

    void ExpectThatAllAgrees(bool updated) {
        const bool told = std::ranges::count(TakeMessages(), NotEnoughMemory) > 0;
        const std::string shown = ListsAndControls();
        ShowSets(Dialog());
        EXPECT_EQ(shown, ListsAndControls()) << "lists and controls against sets";
        Names windows;
        for (const ResultDocument* document : Host().Documents().InWindows()) {
            windows.push_back(TextOf(*document));
        }
        const Names results = Results();
        Analysis().DataChanged = 1;
        EXPECT_EQ(results, Results()) << "numbers against sets";
        // A recount without the host's memory says so, and its table shows the counts as they stand.
        if (updated && !told) {
            EXPECT_THAT(windows, testing::Each(testing::AnyOfArray(results))) << "windows against the present subset";
        }
        EXPECT_EQ(Tracked().find("updating"), std::string::npos);
    }
};

TEST_F(LanguageMemory, FailingAtAnyPointLeavesListsSetsAndNumbersThatAgree) {
    const struct {
        Names Lines;
        bool Updates;  ///< the documents in windows too
    } operations[]{
        {{"down town x"}, true},
        {{"pick age", "press 9065", "press 9056: category 0.777778<x<=1.22222"}, true},
        {{"up kind (p)"}, true},
        {{"choose town; age"}, false},
        {{"review sex town; age"}, false},
        {{"press 9055: place 1 / ok"}, false},
        {{"pick age", "drag 9053 0"}, false},
        {{"update"}, true},
    };
    for (const auto& [lines, updates] : operations) {
        bool failed = true;
        for (std::size_t call = 1; failed && !HasFailure(); ++call) {
            SCOPED_TRACE(testing_scripts::Joined(lines, ", ") + ", call " + std::to_string(call));
            Explore();
            failed = FailsAt([&lines = lines, this] { DoAll(lines); }, call);
            ForgetAnswers();
            ExpectThatAllAgrees(updates);
        }
    }
}

TEST_F(LanguageMemory, AMoveIsRecordedWhateverFailsBehindIt) {
    bool failed = true;
    std::size_t moves = 0;
    for (std::size_t call = 1; failed && !HasFailure(); ++call) {
        quillara::SessionRecorder recorder({.File = "survey.csv"});
        DoAll({"open sex=f,f,m town=x,y,y", "choose sex town"});
        Host().Services.Trace = nullptr;
        Host().Services.Recorder = &recorder;
        DoAll({"press 9106", "press 9060"});
        failed = FailsAt([this] { DoAll({"down town x"}); }, call);
        Host().Services.Recorder = nullptr;
        ForgetAnswers();
        TakeMessages();
        const bool hasMoved = Lists().ends_with(")");
        moves += failed && hasMoved ? 1 : 0;
        EXPECT_EQ(recorder.Text().ends_with("drill.DrillDown()\n"), hasMoved) << call << recorder.Text();
    }
    EXPECT_GT(moves, 10U);
}

TEST_F(LanguageMemory, FailingWithinAMemberEndsAsItsStatus) {
    Explore();
    DoAll({"pick town", "put DrillDownCategory 0 = ok"});
    const std::pair<const char*, const char*> written[]{
        {"DrillDownVariable", "'town'"},
        {"DrillUpVariable", "'a key of more than eight bytes'"},
        {"DrillDownCategory", "'a category of more than sixteen bytes'"},
        {"UserDefinedBoundaries", "'1 2 3 4 5 6 7 8 9'"}};
    const auto failAtEach = [this](const AutomationMember& member, const MemberFunction& function, VARIANT given) {
        bool failed = true;
        for (std::size_t call = 1; failed && call < 1000; ++call) {
            VARIANT value = given;
            HRESULT status = S_OK;
            failed = FailsAt([&] { status = function.Call(FaceOf(Dialog()), value); }, call);
            EXPECT_EQ(failed && status >= 0, false) << member.Name << ", call " << call;
            if (function.Use == DispatchPropertyGet) {
                VariantClear(value);
            }
        }
    };
    for (const char* name : {"DrillDownVariable", "DrillUpVariable", "DrillDownCategory", "CategorySelections"}) {
        const AutomationMember& member =
            *std::ranges::find(StartupMembers, std::string_view(name), &AutomationMember::Name);
        failAtEach(member, member.Functions[0], {});
    }
    for (const auto& [name, value] : written) {
        const AutomationMember& member =
            *std::ranges::find(StartupMembers, std::string_view(name), &AutomationMember::Name);
        const OwnedVariant given = ValueOf(value);
        failAtEach(member, member.Functions[1], given.Get());
    }
    for (std::size_t call = 1; call < 20; ++call) {
        const COleAConstant* value = nullptr;
        const bool failed = FailsAt([&] { value = Dialog().RecordControlValue(DrillVariablesGroup); }, call);
        EXPECT_EQ(value == nullptr, failed);
        delete value;
    }
}

}  // namespace
}  // namespace dialogtest
