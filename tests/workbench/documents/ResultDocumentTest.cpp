#include "workbench/documents/ResultDocument.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "workbench/documents/OpenDocuments.h"

namespace quillara {
namespace {

/// Hears the events of a document, and may do something about each.
struct Listener final : WithoutTypeInfo<IDispatch> {
    HRESULT QueryInterface(const GUID& id, void** object) override {
        *object = id == IUnknown::Id || id == Events ? static_cast<IDispatch*>(this) : nullptr;
        return *object == nullptr ? E_NOINTERFACE : (++References, S_OK);
    }
    std::uint32_t AddRef() override { return ++References; }
    std::uint32_t Release() override { return --References; }
    HRESULT GetIDsOfNames(const GUID&, const char16_t* const*, std::uint32_t, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT Invoke(DISPID event, const GUID&, LCID, std::uint16_t, const DISPPARAMS& parameters, VARIANT*, EXCEPINFO*,
                   std::uint32_t*) override {
        Heard += std::to_string(event) + ' ';
        if (parameters.Count == 1) {
            *parameters.Arguments[0].IntegerReference += ChoiceChange;
        }
        if (Leave) {
            Leave();
        }
        return S_OK;
    }

    GUID Events = SpreadsheetKind.Events;
    std::string Heard;
    int ChoiceChange = 0;
    std::function<void()> Leave;
    std::uint32_t References = 1;
};

struct Documents : testing::Test {
    CountedPointer<ResultDocument> Make(const std::string& corner = "") {
        return ResultDocument::Create(SpreadsheetDocument{{}, corner, {}, {}}, {9060, 1}, *Open);
    }
    static CountedPointer<IConnectionPoint> PointOf(ResultDocument& document) {
        IConnectionPoint* point = nullptr;
        const auto container = QueryFor<IConnectionPointContainer>(static_cast<IDispatch*>(&document));
        container->FindConnectionPoint(SpreadsheetKind.Events, &point);
        return CountedPointer<IConnectionPoint>::Adopt(point);
    }
    static std::uint32_t Connect(ResultDocument& document, Listener& listener) {
        std::uint32_t cookie = 0;
        EXPECT_EQ(PointOf(document)->Advise(&listener, &cookie), S_OK);
        return cookie;
    }
    /// Number of the documents that the analysis knows, and of those in windows.
    std::string Counts() const {
        return std::to_string(Open->OfAnalysis().size()) + ' ' + std::to_string(Open->InWindows().size());
    }

    Listener First;
    Listener Second;
    std::optional<OpenDocuments> Open{std::in_place};
};

TEST_F(Documents, LiveAsLongAsSomebodyHoldsThem) {
    ResultDocument* shown = nullptr;
    {
        const auto document = Make();
        const auto dropped = Make();
        shown = document.Get();
        EXPECT_EQ(Counts(), "2 0");
        EXPECT_TRUE(document->Activate());
    }
    EXPECT_EQ(Counts(), "1 1");
    shown->SetVisible(false);
    Open->LetHiddenGo();
    EXPECT_EQ(Counts(), "1 0");  // the analysis still knows it
    shown->SetVisible(true);
    Open->RemoveFromAnalysis(shown);
    Open->LetHiddenGo();
    EXPECT_EQ(Counts(), "0 1");
    shown->SetVisible(false);
    EXPECT_FALSE(shown->IsVisible());  // still there
    Open->LetHiddenGo();
    EXPECT_EQ(Counts(), "0 0");
}

TEST_F(Documents, OutliveTheirAnalysisInOtherHands) {
    const auto held = Make();
    held->Activate();
    Make()->Activate();
    const std::uint32_t cookie = Connect(*held, First);
    Open.reset();
    EXPECT_TRUE(held->Activate());
    EXPECT_EQ(PointOf(*held)->Unadvise(cookie), S_OK);
    held->Close();
    EXPECT_EQ(First.Heard, "");
}

TEST_F(Documents, TellOnceThatTheyClose) {
    const auto document = Make();
    document->Activate();
    Connect(*document, First);
    document->CloseWithChoice(0);
    EXPECT_TRUE(document->IsVisible());
    First.ChoiceChange = 1;
    document->CloseWithChoice(0);
    document->Close();
    document->CloseWithChoice(1);
    EXPECT_EQ(First.Heard, "13 13 12 ");
    EXPECT_EQ(Counts(), "0 0");
    EXPECT_FALSE(document->Activate() || document->SetVisible(true));
    const auto other = Make();
    Connect(*other, Second);
    other->Close();
    other->Close();
    EXPECT_EQ(Second.Heard, "12 ");
}

TEST_F(Documents, ListenersComeAndGoWhileTheyAreTold) {
    const auto document = Make();
    const auto point = PointOf(*document);
    const std::uint32_t first = Connect(*document, First);
    const std::uint32_t second = Connect(*document, Second);
    First.Leave = [&] {
        point->Unadvise(first);
        point->Unadvise(second);
    };
    document->CloseWithChoice(0);
    EXPECT_EQ(First.Heard + Second.Heard, "13 ");
    EXPECT_EQ(First.References + Second.References, 2U);
    EXPECT_EQ(point->Unadvise(first), CONNECT_E_NOCONNECTION);
    std::uint32_t cookie = 0;
    Second.Events = GraphKind.Events;
    EXPECT_EQ(point->Advise(&Second, &cookie), E_NOINTERFACE);
    EXPECT_EQ(point->Advise(nullptr, &cookie), E_POINTER);
}

TEST_F(Documents, HaveOneIdentityAndThreeInterfaces) {
    const auto document = Make();
    auto* const dispatch = static_cast<IDispatch*>(document.Get());
    const auto spreadsheet = QueryFor<IDispatch>(dispatch, SpreadsheetKind.Document);
    const auto container = QueryFor<IConnectionPointContainer>(dispatch);
    EXPECT_EQ(QueryFor<IUnknown>(container.Get()).Get(), QueryFor<IUnknown>(spreadsheet.Get()).Get());
    EXPECT_FALSE(QueryFor<IDispatch>(dispatch, GraphKind.Document));
    IConnectionPoint* point = nullptr;
    EXPECT_EQ(container->FindConnectionPoint(GraphKind.Events, &point), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(point, nullptr);
}

/// Uses a member by its name, as scripts do.
HRESULT Use(ResultDocument& document, const char16_t* name, std::uint16_t use, std::vector<VARIANT> arguments = {},
            VARIANT* result = nullptr) {
    DISPID member = 0;
    const HRESULT status = document.GetIDsOfNames(GUID_NULL, &name, 1, NeutralLanguage, &member);
    const auto count = static_cast<std::uint32_t>(arguments.size());
    return Succeeded(status) ? document.Invoke(member, GUID_NULL, NeutralLanguage, use,
                                               {arguments.data(), nullptr, count, 0}, result, nullptr, nullptr)
                             : status;
}

TEST_F(Documents, AreUsedByName) {
    const auto document = Make();
    const VARIANT yes = BooleanVariant(true);
    const OwnedVariant words = OwnedVariant::OfText(u"later");
    const VARIANT& text = words.Get();
    const OwnedVariant one = OwnedVariant::OfInteger(1);
    // clang-format off
    const struct {
        const char16_t* Member; DispatchFlag Use; std::vector<VARIANT> Arguments; HRESULT Status;
    } uses[] = {
        {u"Saved",    DispatchPropertyPut,          {yes},    S_OK},
        {u"Saved",    DispatchPropertyPut,          {text},   DISP_E_TYPEMISMATCH},
        {u"Saved",    DispatchPropertyPut,          {},       DISP_E_BADPARAMCOUNT},
        {u"Saved",    DispatchPropertyPutReference, {yes},    DISP_E_MEMBERNOTFOUND},
        {u"visible",  DispatchPropertyPut,          {one.Get()}, S_OK},
        {u"Visible",  DispatchPropertyGet,          {},       E_POINTER},
        {u"Window",   DispatchPropertyPut,          {yes},    DISP_E_MEMBERNOTFOUND},
        {u"Activate", DispatchPropertyGet,          {},       DISP_E_MEMBERNOTFOUND},
        {u"Activate", DispatchMethod,               {yes},    DISP_E_BADPARAMCOUNT},
        {u"Activate", DispatchMethod,               {},       S_OK},
        {u"Cell",     DispatchPropertyGet,          {one.Get(), one.Get()}, DISP_E_BADINDEX},
        {u"Series",   DispatchPropertyGet,          {one.Get()}, DISP_E_UNKNOWNNAME},  // of graphs
        {u"Save",     DispatchMethod,               {text},   DISP_E_EXCEPTION},  // nobody writes documents here
    };
    // clang-format on
    for (const char16_t* property : {u"Saved", u"Visible"}) {
        VARIANT value;
        EXPECT_EQ(Use(*document, property, DispatchPropertyGet, {}, &value), S_OK);
        EXPECT_EQ(value.Boolean, 0);
    }
    for (const auto& each : uses) {
        VARIANT result;
        const bool asks = each.Status == DISP_E_BADINDEX;
        EXPECT_EQ(Use(*document, each.Member, each.Use, each.Arguments, asks ? &result : nullptr), each.Status)
            << &each - uses;
    }
    EXPECT_TRUE(document->IsSaved() && document->IsVisible());
    document->Close();
    VARIANT result;
    EXPECT_EQ(Use(*document, u"Activate", DispatchMethod), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(Use(*document, u"Name", DispatchPropertyGet, {}, &result), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(Use(*document, u"Close", DispatchMethod), S_OK);
}

TEST_F(Documents, TheWindowKeepsItsDocument) {
    VARIANT held;
    auto document = Make();
    ASSERT_EQ(Use(*document, u"Window", DispatchPropertyGet, {}, &held), S_OK);
    const auto window = QueryFor<IOutputWindow>(CountedPointer<IUnknown>::Adopt(held.Unknown).Get());
    ResultDocument& seen = *document;
    document = {};
    seen.Minimize();
    WindowState state = WindowState::Normal;
    EXPECT_EQ(window->GetState(&state), S_OK);
    EXPECT_EQ(state, WindowState::Minimized);
    EXPECT_EQ(window->PutState(static_cast<WindowState>(3)), E_INVALIDARG);
    EXPECT_EQ(window->PutState(WindowState::Normal), S_OK);
    EXPECT_FALSE(seen.IsMinimized());
}

TEST_F(Documents, ContentMovesIntoAnOpenDocument) {
    const auto old = Make("old");
    const auto fresh = Make("fresh");
    EXPECT_TRUE(old->TakeContentOf(*fresh));
    EXPECT_EQ(old->Spreadsheet()->Corner + '|' + fresh->Spreadsheet()->Corner, "fresh|");
    EXPECT_FALSE(old->TakeContentOf(*old));
    fresh->Close();
    EXPECT_FALSE(fresh->TakeContentOf(*old));
    EXPECT_EQ(old->Spreadsheet()->Corner, "fresh");
}

}  // namespace
}  // namespace quillara
