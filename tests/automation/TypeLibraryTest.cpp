// What the module tells of its interfaces, against the text of the type library and the interfaces as they are called.

#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <regex>
#include <tuple>

#include "host/ModuleState.h"
#include "platform/TypeInformation.h"
#include "tests/Locations.h"
#include "tests/automation/FaceBench.h"
#include "tests/workbench/Tables.h"

namespace dialogtest {
namespace {

std::string IdText(const GUID& id) {
    char text[64];
    const auto& last = id.Data4;
    std::snprintf(text, sizeof(text), "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X", id.Data1, id.Data2, id.Data3,
                  last[0], last[1], last[2], last[3], last[4], last[5], last[6], last[7]);
    return text;
}

/// The functions of an interface, and the interface itself in front: as both sides tell of them.
using Told = std::vector<std::string>;

// The text of the type library

std::string LibraryText() {
    std::ifstream file(testing_locations::Sample("../resources/QLADrillDown.idl"));
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string Found(const std::string& text, const char* pattern) {
    std::smatch found;
    return std::regex_search(text, found, std::regex(pattern)) ? found[1].str() : "";
}

Told ToldInText(const std::string& name) {
    std::smatch block;
    const std::string text = LibraryText();
    EXPECT_TRUE(std::regex_search(text, block,
                                  std::regex(R"(\[([^\]]*)\]\s*interface )" + name + R"( : (\w+)\s*\{([^}]*)\})")));
    const std::string attributes = block[1];
    Told told{name + " : " + block[2].str() + " " + Found(attributes, R"(uuid\((.*?)\))") + " version " +
              Found(attributes, R"(version\((\d))") + (attributes.find("dual") != std::string::npos ? " dual" : "") +
              (attributes.find("oleautomation") != std::string::npos ? " automation" : "") + " " +
              Found(attributes, R"re(helpstring\("(.*?)"\))re")};
    const std::string body = block[3];
    const std::regex function(
        R"re(\[id\((\w+)\)(?:, prop(get|put))?(?:, helpstring\("(.*?)"\))?\]\s*HRESULT (\w+)\((?:\[(.*?)\] (.*?) (\w+))?\);)re");
    for (std::sregex_iterator found(body.begin(), body.end(), function), end; found != end; ++found) {
        const auto& part = *found;
        const bool named = part[5].str().starts_with("out");
        told.push_back(std::to_string(std::stoul(part[1], nullptr, 0)) + " " +
                       (part[2].matched ? part[2].str() : "call") + " " + part[4].str() + "(" + part[5].str() + " " +
                       part[6].str() + (named ? " " + part[7].str() : "") + ") " + part[3].str());
    }
    return told;
}

// What the type information tells

std::string Texts(ITypeInfo& information, DISPID member, bool help) {
    OwnedText name, text, file;
    std::uint32_t context = 99;
    EXPECT_EQ(information.GetDocumentation(member, name.Put(), text.Put(), &context, file.Put()), S_OK);
    EXPECT_EQ(context, 0U);
    EXPECT_EQ(file.View(), u"qlv6om.chm");
    return NarrowText(help ? text.View() : name.View());
}

std::string TypeText(const TYPEDESC& type) {
    switch (type.Type) {
        case PointerType:
            return TypeText(*type.Pointed) + "*";
        case 3:
            return "int";
        case 5:
            return "double";
        case 8:
            return "BSTR";
        case 9:
            return "IDispatch*";
        case 12:
            return "VARIANT";
        default:
            return "?";
    }
}

std::string ArgumentText(ITypeInfo& information, const FUNCDESC& function) {
    if (function.ParameterCount == 0) {
        return " ";
    }
    const ELEMDESC& argument = function.Parameters[0];
    if (argument.Flags == ParameterIn) {
        return "in " + TypeText(argument.Type);
    }
    EXPECT_EQ(argument.Flags, ParameterOut | ParameterResult);
    BSTR given[2]{};
    std::uint32_t count = 0;
    EXPECT_EQ(information.GetNames(function.Member, given, 2, &count), S_OK);
    EXPECT_EQ(count, 2U);
    const OwnedText name(given[0]), result(given[1]);
    return "out, retval " + TypeText(argument.Type) + " " + NarrowText(result.View());
}

Told ToldByInformation(ITypeInfo& information) {
    const TYPEATTR* attributes = nullptr;
    EXPECT_EQ(information.GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->Kind, TypeKind::Interface);
    EXPECT_EQ(attributes->Language, 0x409U);
    std::string base = "IDispatch";
    std::uint32_t reference = 0;
    if (information.GetRefTypeOfImplType(0, &reference) == S_OK) {
        ITypeInfo* found = nullptr;
        EXPECT_EQ(information.GetRefTypeInfo(reference, &found), S_OK);
        base = Texts(*CountedPointer<ITypeInfo>::Adopt(found), UnknownMember, false);
    }
    Told told{Texts(information, UnknownMember, false) + " : " + base + " " + IdText(attributes->Identifier) +
              " version " + (attributes->MajorVersion == 0 ? "" : std::to_string(attributes->MajorVersion)) +
              ((attributes->Flags & DualType) != 0 ? " dual" : "") +
              ((attributes->Flags & AutomationType) != 0 ? " automation" : "") + " " +
              Texts(information, UnknownMember, true)};
    const FUNCDESC* function = nullptr;
    std::uint32_t index = 0;
    for (; information.GetFuncDesc(index, &function) == S_OK; ++index) {
        const char* use = function->Use == DispatchMethod        ? "call"
                          : function->Use == DispatchPropertyGet ? "get"
                                                                 : "put";
        told.push_back(std::to_string(function->Member) + " " + use + " " +
                       Texts(information, function->Member, false) + "(" + ArgumentText(information, *function) + ") " +
                       Texts(information, function->Member, true));
        EXPECT_EQ(function->Result.Type.Type, StatusType);
    }
    EXPECT_EQ(index, attributes->FunctionCount);
    return told;
}

class TypeLibraryTest : public testing::Test, public OutputsBench {
  protected:
    void SetUp() override {
        Open(quillara::TableOf({quillara::Numbers("x", {1})}));
        ITypeInfo* information = nullptr;
        ASSERT_EQ(FaceOf(Dialog()).GetTypeInfo(0, NeutralLanguage, &information), S_OK);
        Startup = CountedPointer<ITypeInfo>::Adopt(information);
        ITypeLib* library = nullptr;
        std::uint32_t index = 99;
        ASSERT_EQ(Startup->GetContainingTypeLib(&library, &index), S_OK);
        Library = CountedPointer<ITypeLib>::Adopt(library);
        EXPECT_EQ(index, 1U);
    }

    CountedPointer<ITypeInfo> Startup;
    CountedPointer<ITypeLib> Library;
};

TEST_F(TypeLibraryTest, TellsWhatTheTextOfTheLibraryTells) {
    ASSERT_EQ(Library->GetTypeInfoCount(), 2U);
    for (const auto& [index, name, functions] : {std::tuple(0U, "QlaAnalysisDialog", 13U), {1U, "DDNStartup", 71U}}) {
        ITypeInfo* information = nullptr;
        ASSERT_EQ(Library->GetTypeInfo(index, &information), S_OK);
        const Told told = ToldByInformation(*CountedPointer<ITypeInfo>::Adopt(information));
        EXPECT_EQ(told.size(), functions + 1);
        EXPECT_EQ(told, ToldInText(name));
    }
    const TLIBATTR* attributes = nullptr;
    ASSERT_EQ(Library->GetLibAttr(&attributes), S_OK);
    const std::string head = Found(LibraryText(), R"(\[([^\]]*)\]\s*library QLADrillDown)");
    EXPECT_EQ(IdText(attributes->Identifier), Found(head, R"(uuid\((.*?)\))"));
    EXPECT_EQ(std::to_string(attributes->MajorVersion) + "." + std::to_string(attributes->MinorVersion),
              Found(head, R"(version\((.*?)\))"));
    EXPECT_EQ(std::to_string(attributes->Language),
              std::to_string(std::stoi(Found(head, R"(lcid\((.*?)\))"), nullptr, 0)));
    OwnedText name, help, file;
    ASSERT_EQ(Library->GetDocumentation(-1, name.Put(), help.Put(), nullptr, file.Put()), S_OK);
    EXPECT_EQ(NarrowText(name.View()), "QLADrillDown");
    EXPECT_EQ(NarrowText(help.View()), Found(head, R"re(helpstring\("(.*?)"\))re"));
    EXPECT_EQ(NarrowText(file.View()), Found(head, R"re(helpfile\("(.*?)"\))re"));
}

TEST_F(TypeLibraryTest, FindsNamesWhateverTheirCase) {
    // clang-format off
    const struct { std::vector<const char16_t*> Names; HRESULT Status; std::vector<DISPID> Ids; } calls[] = {
        {{},                                   S_OK,               {}},
        {{u"Variables"},                       S_OK,               {0x60030000}},
        {{u"vARIABLES", u"PVAL"},              S_OK,               {0x60030000, 0}},
        {{u"UserDefinedBoundaries"},           S_OK,               {0x60030045}},
        {{u"ok", u"psuccess", u"pVal"},        DISP_E_UNKNOWNNAME, {3, 0, -1}},
        {{u"ResultsOption", u"value"},         DISP_E_UNKNOWNNAME, {8, -1}},
        {{u"Variable", u"pVal"},               DISP_E_UNKNOWNNAME, {-1, -1}},
        {{u""},                                DISP_E_UNKNOWNNAME, {-1}},
    };
    // clang-format on
    for (const auto& [names, status, ids] : calls) {
        std::vector<DISPID> found(names.size(), 99);
        EXPECT_EQ(FaceOf(Dialog()).GetIDsOfNames(GUID_NULL, names.data(), static_cast<std::uint32_t>(names.size()),
                                                 NeutralLanguage, found.data()),
                  status);
        EXPECT_EQ(found, ids);
    }
    const auto count = [&](const char16_t* text) {
        const OwnedText name(SysAllocString(text));
        std::int32_t isName = 99;
        EXPECT_EQ(Library->IsName(name.Get(), 0, &isName), S_OK);
        ITypeInfo* information[3]{};
        DISPID members[3]{};
        std::uint16_t found = 3;
        EXPECT_EQ(Library->FindName(name.Get(), 0, information, members, &found), S_OK);
        EXPECT_EQ(isName, found > 0 ? 1 : 0);
        for (ITypeInfo* each : information) {
            static_cast<void>(CountedPointer<ITypeInfo>::Adopt(each));
        }
        return std::pair(found, members[0]);
    };
    EXPECT_EQ(count(u"ddnstartup"), std::pair(std::uint16_t{1}, UnknownMember));
    EXPECT_EQ(count(u"Cancel"), std::pair(std::uint16_t{1}, DISPID{4}));
    EXPECT_EQ(count(u"nothing").first, 0);
}

TEST_F(TypeLibraryTest, RefusesWhatIsNotThere) {
    DDNStartup& face = FaceOf(Dialog());
    std::uint32_t count = 0;
    EXPECT_EQ(face.GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
    ITypeInfo* none = nullptr;
    EXPECT_EQ(face.GetTypeInfo(1, NeutralLanguage, &none), DISP_E_BADINDEX);
    EXPECT_EQ(face.GetTypeInfo(1, NeutralLanguage, nullptr), DISP_E_BADINDEX);
    EXPECT_EQ(face.GetTypeInfo(0, NeutralLanguage, nullptr), E_POINTER);
    EXPECT_EQ(Library->GetTypeInfo(2, &none), TYPE_E_ELEMENTNOTFOUND);
    EXPECT_EQ(Library->GetTypeInfoOfGuid(GUID_NULL, &none), TYPE_E_ELEMENTNOTFOUND);
    EXPECT_EQ(Startup->GetRefTypeInfo(2, &none), TYPE_E_ELEMENTNOTFOUND);
    EXPECT_EQ(Startup->GetDocumentation(99, nullptr, nullptr, nullptr, nullptr), TYPE_E_ELEMENTNOTFOUND);
}

TEST_F(TypeLibraryTest, ReferencesAreLocksOnTheModule) {
    const std::atomic<std::int32_t>& locks = OrvGetAppModuleState()->Locks;
    const std::int32_t before = locks;
    {
        const CountedPointer<ITypeInfo> another(Startup);
        const CountedPointer<ITypeLib> library(Library);
        const auto task = std::make_unique<CDefineTask>(Analysis());
        EXPECT_EQ(locks, before + 3);
        task->AddDialogReference();
        EXPECT_EQ(locks, before + 3) << "one for each face, however often it is held";
    }
    EXPECT_EQ(locks, before);
}

TEST_F(TypeLibraryTest, TheFaceHasItsInterfacesAndNoOther) {
    DDNStartup& face = FaceOf(Dialog());
    EXPECT_EQ(Dialog().GetUnknown(), &face);
    for (const GUID& id : {IUnknown::Id, IDispatch::Id, IComQuillaraDialog::Id, DDNStartup::Id}) {
        EXPECT_EQ(QueryFor<DDNStartup>(&face, id).Get(), &face);
    }
    const auto errors = QueryFor<ISupportErrorInfo>(&face);
    ASSERT_TRUE(errors);
    EXPECT_EQ(QueryFor<DDNStartup>(errors.Get()).Get(), &face);
    EXPECT_EQ(errors->InterfaceSupportsErrorInfo(DDNStartup::Id), S_OK);
    EXPECT_EQ(errors->InterfaceSupportsErrorInfo(IComQuillaraDialog::Id), S_OK);
    EXPECT_EQ(errors->InterfaceSupportsErrorInfo(IDispatch::Id), S_FALSE);
    void* none = &face;
    EXPECT_EQ(face.QueryInterface(ITypeInfo::Id, &none), E_NOINTERFACE);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(face.QueryInterface(IUnknown::Id, nullptr), E_POINTER);
}

#ifndef __SANITIZE_ADDRESS__  // which look at the type of the object, and this one has none

std::size_t SlotCalled = 0;

template <std::size_t Slot>
HRESULT CalledSlot(void* /*object*/) {
    SlotCalled = Slot;
    return S_OK;
}

template <std::size_t... Slots>
constexpr auto AllSlots(std::index_sequence<Slots...> /*slots*/) {
    return std::array{&CalledSlot<Slots>...};
}

TEST_F(TypeLibraryTest, MembersAreCalledBySlotsInTheOrderTold) {
    auto slots = AllSlots(std::make_index_sequence<91>());
    auto* object = &slots;  // an object is the address of its table
    ITypeInfo* base = nullptr;
    ASSERT_EQ(Library->GetTypeInfo(0, &base), S_OK);
    const auto dialog = CountedPointer<ITypeInfo>::Adopt(base);
    std::size_t slot = 7;
    for (const auto& [information, functions] : {std::pair(dialog, 13U), {Startup, 71U}}) {
        for (std::uint32_t i = 0; i < functions; ++i, ++slot) {
            const FUNCDESC* function = nullptr;
            ASSERT_EQ(information->GetFuncDesc(i, &function), S_OK);
            VARIANT value;
            const bool put = function->Use == DispatchPropertyPut;
            const DISPPARAMS parameters{put ? &value : nullptr, nullptr, put ? 1U : 0U, 0};
            ASSERT_EQ(information->Invoke(&object, function->Member, static_cast<std::uint16_t>(function->Use),
                                          parameters, nullptr, nullptr, nullptr),
                      S_OK);
            EXPECT_EQ(SlotCalled, slot) << "member " << function->Member;
            EXPECT_EQ(function->Slot, static_cast<std::int16_t>(slot * sizeof(void*)));
        }
    }
}

#endif

}  // namespace
}  // namespace dialogtest
