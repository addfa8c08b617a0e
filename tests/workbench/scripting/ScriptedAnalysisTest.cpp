// Analyses that scripts begin and end: whatever ends first, what is held of the rest stays safe.

#include "workbench/scripting/ScriptedAnalysis.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/Brushing.h"
#include "platform/CountedObject.h"
#include "platform/Events.h"
#include "platform/OwnedVariant.h"
#include "platform/TextEncodings.h"
#include "platform/TypeInformation.h"
#include "tests/workbench/Tables.h"
#include "workbench/documents/DocumentEvents.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/AnalysisServices.h"
#include "workbench/hosting/ScriptDesk.h"

namespace quillara {
namespace {

using Object = CountedPointer<IDispatch>;

struct Used {
    HRESULT Status = S_OK;
    OwnedVariant Value;

    [[nodiscard]] Object Given() const {
        const VARIANT& value = Value.Get();
        return Object::Share(value.Type == VariantType::Dispatch ? value.Dispatch : nullptr);
    }
};

/// Calls, reads or writes a member with an argument, or with none.
Used Use(const Object& object, DISPID member, unsigned use, OwnedVariant* argument = nullptr) {
    DISPID put = PropertyPutArgument;
    const bool writes = use == DispatchPropertyPut;
    VARIANT given = argument == nullptr ? VARIANT() : argument->Get();
    const DISPPARAMS parameters{&given, writes ? &put : nullptr, argument == nullptr ? 0U : 1U, writes ? 1U : 0U};
    EXCEPINFO exception;
    Used used;
    used.Status = object->Invoke(member, GUID_NULL, NeutralLanguage, static_cast<std::uint16_t>(use), parameters,
                                 used.Value.Put(), &exception, nullptr);
    for (BSTR text : {exception.Source, exception.Description, exception.HelpFile}) {
        SysFreeString(text);
    }
    return used;
}

Used Use(const Object& object, std::u16string_view name, unsigned use, OwnedVariant argument) {
    const std::u16string held(name);
    const char16_t* names = held.c_str();
    DISPID member = 0;
    EXPECT_EQ(object->GetIDsOfNames(GUID_NULL, &names, 1, NeutralLanguage, &member), S_OK) << NarrowText(name);
    return Use(object, member, use, &argument);
}

Used Read(const Object& object, std::u16string_view name) {
    const std::u16string held(name);
    const char16_t* names = held.c_str();
    DISPID member = 0;
    EXPECT_EQ(object->GetIDsOfNames(GUID_NULL, &names, 1, NeutralLanguage, &member), S_OK) << NarrowText(name);
    return Use(object, member, DispatchPropertyGet);
}

void Write(const Object& object, std::u16string_view name, OwnedVariant value) {
    EXPECT_EQ(Use(object, name, DispatchPropertyPut, std::move(value)).Status, S_OK) << NarrowText(name);
}

/// Hears the events of graphs.
class Hearer final : public CountedObject<WithoutTypeInfo<IDispatch>> {
  public:
    explicit Hearer(std::function<void(DISPID)> heard) : Heard(std::move(heard)) {}

    HRESULT QueryInterface(const GUID& id, void** object) override {
        const bool answers = id == IDispatch::Id || id == GraphKind.Events;
        *object = answers ? static_cast<IDispatch*>(this) : nullptr;
        return answers ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    HRESULT GetIDsOfNames(const GUID& /*reserved*/, const char16_t* const* /*names*/, std::uint32_t /*count*/,
                          LCID /*language*/, DISPID* /*ids*/) override {
        return E_NOTIMPL;
    }
    HRESULT Invoke(DISPID event, const GUID& /*reserved*/, LCID /*language*/, std::uint16_t /*flags*/,
                   const DISPPARAMS& /*parameters*/, VARIANT* /*result*/, EXCEPINFO* /*exception*/,
                   std::uint32_t* /*badArgument*/) override {
        Heard(event);
        return S_OK;
    }

  private:
    std::function<void(DISPID)> Heard;
};

class ScriptedAnalysisTest : public testing::Test {
  protected:
    ScriptedAnalysisTest() { Begin(); }
    ~ScriptedAnalysisTest() override { TheScriptDesk().ForgetMessages(); }

    void Begin() {
        Own = std::make_unique<ScriptedAnalysis>(
            std::make_shared<const DataTable>(
                TableOf({Texts("sex", {"f", "m", "m", "f"}), Numbers("age", {1, 2, 3, 4})})),
            CasesInForce(), Cancelled);
        Dialog = Own->Dialog();
        Write(Dialog, u"Variables", OwnedVariant::OfText(u"sex | age"));
    }
    void StandAlone() { Write(Dialog, u"StandAloneResults", OwnedVariant::OfInteger(1)); }
    /// The pie charts, which stand alone: one of sex, one of age.
    std::vector<Object> Pies() {
        const Object all = Read(Dialog, u"PieCharts").Given();
        std::vector<Object> pies;
        for (const int place : {1, 2}) {
            pies.push_back(Use(all, u"Item", DispatchPropertyGet, OwnedVariant::OfInteger(place)).Given());
        }
        return pies;
    }
    static void Listen(const Object& document, std::function<void(DISPID)> heard) {
        IConnectionPoint* point = nullptr;
        QueryFor<IConnectionPointContainer>(document.Get())->FindConnectionPoint(GraphKind.Events, &point);
        const auto held = CountedPointer<IConnectionPoint>::Adopt(point);
        const auto hearer = CountedPointer<Hearer>::Adopt(new Hearer(std::move(heard)));
        std::uint32_t cookie = 0;
        EXPECT_EQ(held->Advise(hearer.Get(), &cookie), S_OK);
    }
    static void CloseDocument(const Object& document) { ResultDocument::Of(document.Get())->Close(); }

    std::atomic<bool> Cancelled = false;
    std::unique_ptr<ScriptedAnalysis> Own;
    Object Dialog;
};

TEST_F(ScriptedAnalysisTest, AListenerMayCloseWhateverItHearsOf) {
    struct Case {
        DISPID Event;
        bool DropsAll;
        const char* Closes;
    };
    for (const Case& row : std::initializer_list<Case>{{ChangedEvent, false, "document"},
                                                       {ChangedEvent, false, "analysis"},
                                                       {ChangedEvent, true, "analysis"},
                                                       {GraphKind.Closing, false, "document"},
                                                       {GraphKind.Closing, false, "analysis"},
                                                       {GraphKind.Closing, true, "analysis"}}) {
        SCOPED_TRACE(row.Closes);
        Begin();
        StandAlone();
        std::vector<Object> pies = Pies();
        int heard = 0;
        for (const Object& pie : std::vector<Object>(pies)) {
            Listen(pie, [&, plain = pie.Get()](DISPID event) {
                if (event != row.Event || ++heard > 2) {
                    return;
                }
                if (row.Closes == std::string("document")) {
                    ResultDocument::Of(plain)->Close();
                } else {
                    Own.reset();
                }
                if (row.DropsAll) {
                    pies.clear();
                }
            });
        }
        const Object kept = Dialog;
        if (row.Event == ChangedEvent) {
            Read(kept, u"PieCharts");
        } else {
            CloseDocument(Object(pies[0]));
        }
        EXPECT_GT(heard, 0);
        EXPECT_EQ(Succeeded(Read(kept, u"Variables").Status), Own != nullptr);
        Dialog = {};
    }
}

/// Uses every member that an object tells of, with an argument and without.
void UseAll(const Object& object) {
    ITypeInfo* given = nullptr;
    if (!Succeeded(object->GetTypeInfo(0, NeutralLanguage, &given))) {
        return;
    }
    const auto information = CountedPointer<ITypeInfo>::Adopt(given);
    const FUNCDESC* function = nullptr;
    for (std::uint32_t i = 0; Succeeded(information->GetFuncDesc(i, &function)); ++i) {
        OwnedVariant argument = OwnedVariant::OfInteger(1);
        Use(object, function->Member, static_cast<unsigned>(function->Use), &argument);
        Use(object, function->Member, static_cast<unsigned>(function->Use));
        information->ReleaseFuncDesc(function);
    }
}

TEST_F(ScriptedAnalysisTest, ReferencesAreSafePastTheEndOfEverything) {
    StandAlone();
    const Object analysis = Own->Analysis();
    std::vector<Object> held = Pies();
    for (const char16_t* name : {u"Frequencies", u"Save", u"Application", u"Parent"}) {
        held.push_back(Read(Dialog, name).Given());
    }
    held.push_back(Use(held[0], u"Series", DispatchPropertyGet, OwnedVariant::OfInteger(1)).Given());
    held.push_back(Read(held[0], u"Window").Given());
    held.push_back(Read(analysis, u"DialogWindow").Given());
    held.push_back(Read(analysis, u"Outputs").Given());
    held.push_back(analysis);
    held.push_back(Dialog);
    Own.reset();
    Begin();  // another one loads the module while the first is still held
    Own.reset();
    for (const Object& object : held) {
        ASSERT_TRUE(object);
        UseAll(object);
    }
    EXPECT_EQ(Read(analysis, u"Outputs").Status, CO_E_OBJNOTCONNECTED);
    Dialog = {};
    while (!held.empty()) {
        held.erase(held.begin());
    }
}

TEST_F(ScriptedAnalysisTest, TwoAnalysesBrushEachForItself) {
    const auto first = std::move(Own);
    const Object dialog = Dialog;
    Begin();
    const auto brush = [](ScriptedAnalysis& analysis, int bar) {
        TheScriptDesk().Expect(ScriptDesk::Pick([bar](BrushingRun& run) {
            run.Regions.setSelected(bar);
            run.Choice = 0;
            return true;
        }));
        const Object window = Read(analysis.Analysis(), u"DialogWindow").Given();
        EXPECT_EQ(Use(window, u"Click", DispatchMethod, OwnedVariant::OfInteger(9103)).Status, S_OK);
    };
    const auto steps = [](const Object& of) {
        const Object summary = Read(of, u"Summary").Given();
        const Used value = Read(summary, u"Values");
        return NarrowText(ViewOf(value.Value.Get().Array->Data[0].Array->Data[0].Text));
    };
    for (const Object& each : {dialog, Dialog}) {
        Write(each, u"StandAloneResults", OwnedVariant::OfInteger(1));
        Write(each, u"DrillDownVariable", OwnedVariant::OfText(u"sex"));
    }
    brush(*first, 1);
    brush(*Own, 0);
    EXPECT_EQ(steps(dialog) + steps(Dialog), "mf");
    EXPECT_EQ(TheScriptDesk().AnswersLeft(), 0U);
}

}  // namespace
}  // namespace quillara
