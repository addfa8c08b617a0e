// Every use of every member of the startup dialog, directly and by name, in each state in which a script may find it.
// What each comes to stands in members.txt, which the tests of the Python package go by too.

#include <malloc.h>

#include <map>
#include <set>

#include "platform/TypeInformation.h"
#include "resources/ControlIds.h"
#include "tests/automation/FaceBench.h"
#include "tests/dialogs/ScriptTexts.h"
#include "tests/workbench/Tables.h"
#include "workbench/hosting/ScriptDesk.h"

namespace dialogtest {
namespace {

// The uses

struct Use {
    const char* Member;
    const MemberFunction* Function;

    [[nodiscard]] bool IsWrite() const { return Function->Use == DispatchPropertyPut; }
    [[nodiscard]] std::string Name() const {
        return std::string(Member) + (IsWrite() ? " write" : Function->Use == DispatchMethod ? " call" : " read");
    }
};

std::vector<Use> AllUses() {
    std::vector<Use> uses;
    const auto add = [&uses](const auto& members) {
        for (const AutomationMember& member : members) {
            for (const MemberFunction& function : member.Functions) {
                if (function.Call != nullptr) {
                    uses.push_back({member.Name, &function});
                }
            }
        }
    };
    add(StartupMembers);
    add(DialogMembers);
    return uses;
}

/// What is written where a member takes just any value of its type.
OwnedVariant RightValue(const Use& use) {
    static const std::map<std::string, std::string> values{
        {"ValueNoOfExactIntervals", "5"},     {"ValueNeatIntervalsAppNo", "5"},   {"ValueStepSize", "2.5"},
        {"ValueStartingFrom", "1.5"},         {"Variables", "'school | age'"},    {"ReviewVariables", "'sex | age'"},
        {"DrillDownVariable", "'school'"},    {"DrillUpVariable", "'sex'"},       {"DrillDownCategory", "'mid'"},
        {"UserDefinedBoundaries", "'30 50'"}, {"ResultsSaveFileName", "'subset'"}};
    const auto found = values.find(use.Member);
    return ValueOf(!use.IsWrite() ? "" : found == values.end() ? "1" : found->second);
}

// What they come to

/// The kind of an object, or how many there are of which kind.
std::string KindOfObject(IDispatch& object) {
    ITypeInfo* information = nullptr;
    OwnedText kind;
    EXPECT_EQ(object.GetTypeInfo(0, NeutralLanguage, &information), S_OK);
    EXPECT_EQ(CountedPointer<ITypeInfo>::Adopt(information)
                  ->GetDocumentation(UnknownMember, kind.Put(), nullptr, nullptr, nullptr),
              S_OK);
    if (kind.View() != u"DocumentCollection") {
        return NarrowText(kind.View());
    }
    const VARIANT first = OwnedVariant::OfInteger(1).Get();
    const Answered item = CallByName(object, "Item", DispatchPropertyGet, {first});
    return CallByName(object, "Count", DispatchPropertyGet).Text() + " " + KindOfObject(*item.Value.Get().Dispatch) +
           "s";
}

/// What a use gives, or how it fails, as the table says it.
std::string OutcomeOf(HRESULT status, const VARIANT& value) {
    static const std::map<HRESULT, std::string> words{{CO_E_OBJNOTCONNECTED, "closed"},
                                                      {E_ACCESSDENIED, "disabled"},
                                                      {E_FAIL, "failed"},
                                                      {E_INVALIDARG, "invalid"},
                                                      {DISP_E_TYPEMISMATCH, "mismatch"},
                                                      {DISP_E_BADPARAMCOUNT, "count"},
                                                      {E_NOTIMPL, "absent"},
                                                      {RPC_E_SERVERCALL_RETRYLATER, "busy"},
                                                      {DISP_E_EXCEPTION, "exception"},
                                                      {DISP_E_MEMBERNOTFOUND, "not found"}};
    if (status != S_OK) {
        const auto word = words.find(status);
        return word == words.end() ? StatusText(status) : word->second;
    }
    if (value.Type == VariantType::Dispatch) {
        return KindOfObject(*value.Dispatch);
    }
    const std::string text = value.Type == VariantType::Empty ? "ok" : TextOf(value);
    const bool isWholeReal = value.Type == VariantType::Real && text.find('.') == std::string::npos;
    return text + (isWholeReal ? ".0" : "");
}

/// Calls the function of the interface.
std::string OutcomeDirectly(DDNStartup& face, const Use& use, const OwnedVariant& given) {
    OwnedVariant value;
    if (use.IsWrite() && use.Function->Kind != ValueKind::Value) {
        EXPECT_EQ(VariantChangeType(*value.Put(), given.Get(), TypeOf(use.Function->Kind)), S_OK);
    } else if (use.IsWrite()) {
        EXPECT_EQ(VariantCopyInd(*value.Put(), given.Get()), S_OK);
    }
    const HRESULT status = use.Function->Call(face, *const_cast<VARIANT*>(&value.Get()));
    return OutcomeOf(status, use.IsWrite() || use.Function->Kind == ValueKind::None ? VARIANT() : value.Get());
}

std::string OutcomeByName(DDNStartup& face, const Use& use, const OwnedVariant& given) {
    const std::vector<VARIANT> arguments(use.IsWrite() ? 1 : 0, given.Get());
    const Answered answered = CallByName(face, use.Member, use.Function->Use, arguments);
    return OutcomeOf(answered.Status, answered.Value.Get());
}

/// {column: {use: outcome}}; = stands for the outcome before.
std::map<std::string, std::map<std::string, std::string>> ToldOutcomes() {
    std::map<std::string, std::map<std::string, std::string>> told;
    Names columns;
    for (const auto& line : testing_scripts::LinesOf(testing_locations::Sample("../tests/automation/members.txt"))) {
        const Names cells = line.SaysNothing() ? Names() : Parts(line.Text, ";");
        if (columns.empty()) {
            columns = cells;
            continue;
        }
        for (std::size_t i = 1; i < cells.size(); ++i) {
            told[columns[i]][cells[0]] = cells[i] == "=" ? told[columns[i - 1]][cells[0]] : cells[i];
        }
    }
    return told;
}

// The states

class EveryUse : public testing::Test, public OutputsBench {
  public:
    ~EveryUse() override { quillara::TheScriptDesk().ForgetMessages(); }

    void Write(const char* member, const std::string& value) {
        EXPECT_EQ(PutByName(Dialog(), member, value), "ok") << member;
    }
    void StepDown(const char* variable, const char* category) {
        Write("DrillDownVariable", variable);
        Write("DrillDownCategory", category);
        EXPECT_EQ(Face->DrillDown(), S_OK);
    }

    void ComeToBare() {
        quillara::TheScriptDesk().ForgetMessages();
        quillara::ForgetKeptLogLines();
        Face = {};
        Open(quillara::TableOf({quillara::Texts("sex", {"f", "m", "m", "f", "m", std::nullopt}),
                                quillara::Texts("school", {"low", "mid", "mid", "mid", "high", "low"}),
                                quillara::Numbers("age", {20, 30, 40, 50, 60, quillara::Missing}),
                                quillara::Numbers("fee", {1.5, 2.5, 0.5, quillara::Missing, 1, 2})}));
        Face = CountedPointer<DDNStartup>::Share(&FaceOf(Dialog()));
    }
    void ComeToReady() {
        ComeToBare();
        Write("Variables", "'sex school | age fee'");
        Write("DrillDownVariable", "'age'");
    }
    void ComeToDrilled() {
        ComeToReady();
        Write("ReviewVariables", "'school | age fee'");
        StepDown("'sex'", "'m'");
        Write("DrillDownVariable", "'school'");
        Write("DrillDownCategory", "'mid'");
        Write("DrillUpVariable", "1");
    }
    /// Dialogs and messages are left to a person, who isn't there.
    void ComeToAsking() {
        ComeToDrilled();
        Dialog().AutomationInteractive = 1;
    }
    /// The last one to act did so in the window.
    void ComeToTakenOver() {
        ComeToDrilled();
        ClickText(DrillDownListControl, "fee");
        Click(UserIntervalsRadio);
        EXPECT_FALSE(Dialog().IsOleAutomation());
    }
    void ComeToClosed() {
        ComeToDrilled();
        EXPECT_EQ(Face->Cancel(), S_OK);
    }

    /// Does something from inside a press, when its first document comes.
    void WithinAPress(const std::function<void()>& work) {
        Write("StandAloneResults", "1");
        OnCall = [&](std::string_view call) {
            if (call.starts_with("Route")) {
                OnCall = nullptr;
                work();
            }
        };
        IDispatch* made = nullptr;
        EXPECT_EQ(Face->get_PieCharts(&made), S_OK);
        EXPECT_EQ(OnCall, nullptr) << "not reached";
        static_cast<void>(CountedPointer<IDispatch>::Adopt(made));
    }

    CountedPointer<DDNStartup> Face;
};

constexpr std::pair<const char*, std::string (*)(DDNStartup&, const Use&, const OwnedVariant&)> Ways[]{
    {" directly", OutcomeDirectly}, {" by name", OutcomeByName}};

TEST_F(EveryUse, HasItsOutcomeInEachState) {
    // clang-format off
    const std::pair<const char*, void (EveryUse::*)()> states[]{
        {"bare", &EveryUse::ComeToBare},     {"ready", &EveryUse::ComeToReady},          {"drilled", &EveryUse::ComeToDrilled},
        {"asking", &EveryUse::ComeToAsking}, {"taken_over", &EveryUse::ComeToTakenOver}, {"closed", &EveryUse::ComeToClosed},
        {"pressed", &EveryUse::ComeToDrilled}};
    // clang-format on
    auto told = ToldOutcomes();
    for (const auto& [state, come] : states) {
        const bool isPressed = std::string_view(state) == "pressed";
        for (const Use& use : AllUses()) {
            for (const auto& [way, outcome] : Ways) {
                (this->*come)();
                std::string found;
                const auto work = [&, call = outcome] { found = call(*Face, use, RightValue(use)); };
                isPressed ? WithinAPress(work) : work();
                EXPECT_EQ(found, told[state][use.Name()]) << state << ": " << use.Name() << way;
            }
        }
    }
}

TEST_F(EveryUse, TakesTheDialogBackFromAPersonWhenItWritesOrPresses) {
    const std::set<std::string> idle{"Application", "Analysis", "disabled", "absent"};
    for (const Use& use : AllUses()) {
        for (const auto& [way, outcome] : Ways) {
            ComeToTakenOver();
            const std::string found = outcome(*Face, use, RightValue(use));
            const bool isRead = use.Function->Use == DispatchPropertyGet && use.Function->Kind != ValueKind::Object;
            if (Host().StartupWindow() != nullptr) {
                EXPECT_EQ(Dialog().IsOleAutomation(), !isRead && !idle.contains(found)) << use.Name() << way;
            }
        }
    }
}

TEST_F(EveryUse, IsRefusedWithAValueOfTheWrongKind) {
    auto told = ToldOutcomes();
    for (const Use& use : AllUses()) {
        for (const auto& [way, outcome] : Ways) {
            if (use.IsWrite() && (use.Function->Kind == ValueKind::Value || outcome == OutcomeByName)) {
                ComeToDrilled();
                EXPECT_EQ(outcome(*Face, use, OwnedVariant::OfObject(Face.Get())), told["wrong kind"][use.Name()])
                    << use.Name() << way;
            }
        }
    }
}

TEST_F(EveryUse, IsRefusedWithAnotherNumberOfArgumentsAndThoseThatAreNotThereAlways) {
    ComeToReady();
    const VARIANT one = OwnedVariant::OfInteger(1).Get();
    const auto statusOf = [&](const std::string& name, DispatchFlag use, std::size_t arguments) {
        return CallByName(*Face, name, use, std::vector(arguments, one)).Status;
    };
    std::map<std::string, unsigned> uses;
    for (const Use& use : AllUses()) {
        uses[use.Member] |= use.Function->Use;
        EXPECT_EQ(statusOf(use.Member, use.Function->Use, use.IsWrite() ? 0 : 1), DISP_E_BADPARAMCOUNT) << use.Name();
        EXPECT_EQ(statusOf(use.Member, use.Function->Use, 2), DISP_E_BADPARAMCOUNT) << use.Name();
    }
    for (const auto& [name, own] : uses) {
        for (const DispatchFlag use : {DispatchMethod, DispatchPropertyGet, DispatchPropertyPut}) {
            if ((own & use) == 0) {
                EXPECT_EQ(statusOf(name, use, use == DispatchPropertyPut ? 1 : 0), DISP_E_MEMBERNOTFOUND)
                    << name << use;
            }
        }
        EXPECT_EQ(statusOf(name + "s", DispatchPropertyGet, 0), DISP_E_UNKNOWNNAME);
    }
    EXPECT_EQ(uses.size(), 57U);
    EXPECT_EQ(Lists() + " " + GetByName(Dialog(), "DrillDownVariable"), "sex, school, age, fee |  'age'");
}

#ifdef __SANITIZE_ADDRESS__  // which finds what nobody holds any more
constexpr int EnoughCalls = 20'000;
#else
constexpr int EnoughCalls = 1'000'000;
#endif

TEST_F(EveryUse, LeavesNoMemoryBehindInAMillionCalls) {
    ComeToReady();
    const std::vector<Use> uses = AllUses();
    const auto isWanted = [](const Use& use, bool presses) {
        return use.Function->Use != DispatchMethod && use.Name() != "Save read" &&
               (presses || use.Function->Kind != ValueKind::Object);
    };
    const auto goRound = [&](bool presses) {
        int calls = 0;
        for (const Use& use : uses) {
            if (isWanted(use, presses)) {
                OutcomeByName(*Face, use, RightValue(use));
                ++calls;
            }
        }
        if (presses) {
            const Answered saved = CallByName(*Face, "Save", DispatchPropertyGet);
            EXPECT_EQ(CallByName(*saved.Value.Get().Dispatch, "Close", DispatchMethod).Status, S_OK);
        }
        return calls;
    };
    const auto call = [&](int calls) {
        for (int round = 0; calls > 0; ++round) {
            calls -= goRound(round % 20 == 0);
            quillara::TheScriptDesk().ForgetMessages();
            TakeCalls();
            Routed.clear();
        }
        quillara::ForgetKeptLogLines();
        TakeError();
        return mallinfo2().uordblks;
    };
    const std::size_t before = call(EnoughCalls / 100);
    EXPECT_LT(call(EnoughCalls), before + (1U << 16));
}

}  // namespace
}  // namespace dialogtest
