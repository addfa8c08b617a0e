// The sinks of tracked documents by themselves, and documents that no sink can watch.

#include "automation/DocumentSinks.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "automation/DispatchByName.h"
#include "tests/dialogs/DialogScript.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/WaitCursor.h"

namespace {

int FailingCursorCall = 0;  // of the host's wait cursor, counted from now on; 0: none

void CallCursor(const char* function) {
    if (FailingCursorCall > 0 && --FailingCursorCall == 0) {
        throw std::runtime_error("no cursor");
    }
    reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, function))();
}

}  // namespace

void BeginWaitCursor() {
    CallCursor("_Z15BeginWaitCursorv");
}
void RestoreWaitCursor() {
    CallCursor("_Z17RestoreWaitCursorv");
}
void EndWaitCursor() {
    CallCursor("_Z13EndWaitCursorv");
}

namespace dialogtest {
namespace {

class Sinks : public testing::Test, public OutputsBench {
  protected:
    void SetUp() override {
        for (const char* line : {"open sex=f,f,m", "choose sex", "press 9106", "press 9060"}) {
            Do(*this, line);
        }
    }
    CountedPointer<CQCOMDocumentSink> SinkOfFirst() {
        auto* sink = dynamic_cast<CQCOMDocumentSink*>(Analysis().OutputTracker->Outputs.front().Sink);
        return CountedPointer<CQCOMDocumentSink>::Share(sink);
    }
    static HRESULT Tell(CQCOMDocumentSink& sink, DISPID event, std::vector<VARIANT> arguments = {}) {
        const auto count = static_cast<std::uint32_t>(arguments.size());
        return sink.Invoke(event, GUID_NULL, NeutralLanguage, DispatchMethod, {arguments.data(), nullptr, count, 0},
                           nullptr, nullptr, nullptr);
    }
    static VARIANT ByReference(std::int32_t* number, int type = 0x4003) {
        VARIANT variant;
        variant.Type = static_cast<VariantType>(type);
        variant.IntegerReference = number;
        return variant;
    }
};

TEST_F(Sinks, AnswerTheClosingEventsOnly) {
    const auto sink = SinkOfFirst();
    std::int32_t stay = 0;
    std::int32_t close = 1;
    // clang-format off
    const struct { DISPID Event; std::vector<VARIANT> Arguments; HRESULT Status; } events[] = {
        {12, std::vector<VARIANT>(19),    E_FAIL},
        {99, std::vector<VARIANT>(19),    E_FAIL},
        {12, std::vector<VARIANT>(18),    DISP_E_BADPARAMCOUNT},
        {10, {},                          DISP_E_MEMBERNOTFOUND},  // closing event of the other kind
        {13, {},                          DISP_E_BADPARAMCOUNT},
        {13, {BooleanVariant(true)},      DISP_E_TYPEMISMATCH},
        {13, {ByReference(nullptr)},      DISP_E_TYPEMISMATCH},
        {13, {ByReference(&stay)},        S_OK},
        {13, {ByReference(&stay, 0x4016)}, S_OK},
        {13, {ByReference(&close, 0x16)}, DISP_E_TYPEMISMATCH},
    };
    // clang-format on
    for (const auto& each : events) {
        EXPECT_EQ(Tell(*sink, each.Event, each.Arguments), each.Status) << &each - events;
    }
    EXPECT_EQ(Tracked(), "9060.1");
    EXPECT_EQ(Tell(*sink, 13, {ByReference(&close, 0x4016)}), S_OK);
    EXPECT_EQ(Tracked(), "");
}

TEST_F(Sinks, ConnectOnceAndOutliveTheirTracker) {
    const auto sink = SinkOfFirst();
    EXPECT_EQ(sink->Connect(), E_FAIL);
    EXPECT_NE(sink->Cookie, 0xfefefefeU);
    EXPECT_EQ(Host().Documents().InWindows().front()->Events().Listeners(), 1U);
    Host().Adopt(std::unique_ptr<CAnalysisSupport>(Orv6NewAnalysis()));
    EXPECT_EQ(sink->Cookie, 0xfefefefeU);
    EXPECT_EQ(Tell(*sink, 12), S_OK);
    EXPECT_EQ(sink->Document, nullptr);
    EXPECT_EQ(Tell(*sink, 12), S_OK);
    EXPECT_EQ(sink->Connect(), E_INVALIDARG);
}

/// A document that is neither spreadsheet nor graph, as a plug-in of the host may make.
struct ForeignDocument final : WithoutTypeInfo<IDispatch> {
    HRESULT QueryInterface(const GUID& /*id*/, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    std::uint32_t AddRef() override { return ++References; }
    std::uint32_t Release() override { return --References; }
    HRESULT GetIDsOfNames(const GUID&, const char16_t* const* names, std::uint32_t, LCID, DISPID* ids) override {
        ids[0] = names[0][0];
        return names[0][0] == u'W' ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT Invoke(DISPID member, const GUID&, LCID, std::uint16_t flags, const DISPPARAMS& parameters, VARIANT*,
                   EXCEPINFO*, std::uint32_t*) override {
        if (Fails) {
            throw std::bad_alloc();
        }
        const bool on = parameters.Count == 1 && parameters.Arguments[0].Boolean != 0;
        const bool isNamed = parameters.NamedCount == 1 && parameters.NamedArguments[0] == PropertyPutArgument;
        Calls += static_cast<char>(member);
        Calls += flags == DispatchMethod ? "! " : !isNamed ? "? " : on ? "+ " : "- ";
        return (flags & PutFlags) != 0 ? S_FALSE : E_FAIL;
    }

    std::uint16_t PutFlags = 0;  ///< ways of writing a property that it takes
    std::uint32_t References = 1;
    bool Fails = false;
    std::string Calls;  ///< first letters of members: "S+" Saved is set, "A!" Activate is called
};

class ForeignDocuments : public Sinks {
  protected:
    void TearDown() override { Analysis().OutputTracker->RemoveAll(false); }
    /// Routes it as the first output of a command.
    bool Route(ForeignDocument& document, std::uint64_t command) {
        auto& running = quillara::DialogsOf(&Host()).Command;
        running = ActiveCommand{273, command, 1};
        document.AddRef();
        const bool taken = Analysis().BeforeRouteOutput(&document);
        running.reset();
        return taken;
    }

    ForeignDocument Old;
    ForeignDocument Fresh;
};

TEST_F(ForeignDocuments, AreTrackedUnwatchedAndReplacedByAFreshWindow) {
    EXPECT_TRUE(Route(Old, 9060 + 7));
    EXPECT_EQ(Tracked(), "9060.1 9067.1");
    EXPECT_EQ(Analysis().OutputTracker->Outputs.back().Sink, nullptr);
    EXPECT_EQ(std::exchange(Old.Calls, ""), "S+ A! ");
    EXPECT_TRUE(Route(Fresh, 9060 + 7));
    EXPECT_EQ(Tracked(), "9060.1 9067.1");
    EXPECT_EQ(Old.Calls, "S+ A! V- ");
    EXPECT_EQ(Fresh.Calls, "S+ V+ ");
    EXPECT_EQ(Old.References + Fresh.References, 2U);
    EXPECT_TRUE(Route(Old, 9060));  // a spreadsheet stood there
    EXPECT_EQ(Letters() + Tracked(), "9067.1 9060.1");
    Analysis().StandAloneResults = 0;
    EXPECT_FALSE(Route(Old, 9060 + 7));
    EXPECT_EQ(std::exchange(Old.References, 1U), 2U);  // not used up
}

TEST_F(ForeignDocuments, TakeAPropertyAndGiveTheirOwnStatus) {
    VARIANT object;
    object.Type = VariantType::Dispatch;
    object.Dispatch = &Fresh;
    // clang-format off
    const struct { std::uint16_t Takes = 0; VARIANT Value; HRESULT Status = S_OK; std::size_t Tries = 0; } puts[] = {
        {0,                            BooleanVariant(true), E_FAIL,  1},
        {DispatchPropertyPut,          BooleanVariant(true), S_FALSE, 1},
        {DispatchPropertyPut,          object,               S_FALSE, 2},
        {DispatchPropertyPutReference, object,               S_FALSE, 1},
    };
    // clang-format on
    for (const auto& put : puts) {
        Old.PutFlags = put.Takes;
        EXPECT_EQ(PutProperty(&Old, u"Saved", put.Value), put.Status);
        EXPECT_EQ(std::exchange(Old.Calls, "").size() / 3, put.Tries);
    }
    EXPECT_EQ(PutProperty(&Old, u"Window", object), DISP_E_UNKNOWNNAME);
}

TEST_F(ForeignDocuments, AnUpdateThatFailsInTheMiddleGoesOnAndLeavesEverythingAtRest) {
    Route(Old, 9060 + 7);
    Old.Fails = true;
    EXPECT_EQ(Analysis().AutoUpdate(0), 1);  // there is no memory as the stale document is hidden
    Old.Fails = false;
    EXPECT_EQ(Tracked(), "9060.1");
    EXPECT_FALSE(quillara::IsWaitCursorShown());
}

TEST_F(Sinks, AnUpdateGoesOnWithoutAWaitCursor) {
    for (const int failing : {1, 2, 3}) {
        FailingCursorCall = failing;
        EXPECT_EQ(Analysis().AutoUpdate(0), 1);
        EXPECT_EQ(TakeMessages(), Names{"no cursor"}) << failing;
        EXPECT_EQ(Windows() + Tracked(), "A sex: f 2, m 19060.1") << failing;
        EXPECT_EQ(quillara::IsWaitCursorShown(), failing == 3);
    }
    EndWaitCursor();
}

}  // namespace
}  // namespace dialogtest
