// What the module tells of its interfaces, against the text of the type library and the interfaces as they are called.

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>

#include "host/ModuleState.h"
#include "platform/TypeInformation.h"
#include "tests/Locations.h"
#include "tests/automation/FaceBench.h"
#include "tests/workbench/Tables.h"

namespace dialogtest {
namespace {

// The type information, written as the text of the type library is

std::string IdText(const GUID& id) {
    char text[64];
    const auto& last = id.Data4;
    std::snprintf(text, sizeof(text), "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X", id.Data1, id.Data2, id.Data3,
                  last[0], last[1], last[2], last[3], last[4], last[5], last[6], last[7]);
    return text;
}

struct Told {
    std::string Name, Help;
};

/// What an object tells of a member or an interface.
template <typename Teller>
Told DocumentationOf(Teller& teller, std::int32_t of) {
    OwnedText name, help, file;
    std::uint32_t context = 99;
    EXPECT_EQ(teller.GetDocumentation(of, name.Put(), help.Put(), &context, file.Put()), S_OK);
    EXPECT_EQ(context, 0U);
    EXPECT_EQ(file.View(), u"qlv6om.chm");
    return {NarrowText(name.View()), NarrowText(help.View())};
}

std::string TypeText(const TYPEDESC& type) {
    constexpr std::pair<std::uint16_t, const char*> names[]{
        {3, "int"}, {5, "double"}, {8, "BSTR"}, {9, "IDispatch*"}, {12, "VARIANT"}};
    const auto* name = std::ranges::find(names, type.Type, &std::pair<std::uint16_t, const char*>::first);
    return type.Type == PointerType ? TypeText(*type.Pointed) + "*" : name == std::end(names) ? "?" : name->second;
}

std::string ArgumentText(ITypeInfo& information, const FUNCDESC& function) {
    if (function.ParameterCount == 0 || function.Parameters[0].Flags == ParameterIn) {
        return function.ParameterCount == 0 ? "" : "[in] " + TypeText(function.Parameters[0].Type) + " value";
    }
    EXPECT_EQ(function.Parameters[0].Flags, ParameterOut | ParameterResult);
    BSTR names[2]{};
    std::uint32_t count = 0;
    EXPECT_EQ(information.GetNames(function.Member, names, 2, &count), S_OK);
    EXPECT_EQ(count, 2U);
    const OwnedText member(names[0]), result(names[1]);
    return "[out, retval] " + TypeText(function.Parameters[0].Type) + " " + NarrowText(result.View());
}

void WriteFunction(std::ostream& text, ITypeInfo& information, const FUNCDESC& function, bool hexadecimal) {
    const auto [name, help] = DocumentationOf(information, function.Member);
    EXPECT_EQ(function.Result.Type.Type, StatusType);
    text << "[id(" << (hexadecimal ? std::hex : std::dec) << std::showbase << function.Member << std::dec << ")"
         << (function.Use == DispatchPropertyGet   ? ", propget"
             : function.Use == DispatchPropertyPut ? ", propput"
                                                   : "")
         << (help.empty() ? "" : ", helpstring(\"" + help + "\")") << "] HRESULT " << name << "("
         << ArgumentText(information, function) << "); ";
}

void WriteInterface(std::ostream& text, ITypeInfo& information) {
    const auto [name, help] = DocumentationOf(information, UnknownMember);
    const TYPEATTR* attributes = nullptr;
    EXPECT_EQ(information.GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->Kind, TypeKind::Interface);
    std::uint32_t reference = 0;
    ITypeInfo* base = nullptr;
    const bool isDerived =
        information.GetRefTypeOfImplType(0, &reference) == S_OK && information.GetRefTypeInfo(reference, &base) == S_OK;
    const auto held = CountedPointer<ITypeInfo>::Adopt(base);
    text << "[ object, uuid(" << IdText(attributes->Identifier) << "), ";
    if (attributes->MajorVersion != 0) {
        text << "version(" << attributes->MajorVersion << "." << attributes->MinorVersion << "), ";
    }
    text << ((attributes->Flags & DualType) != 0 ? "dual, " : "")
         << ((attributes->Flags & AutomationType) != 0 ? "oleautomation, " : "") << "helpstring(\"" << help
         << "\") ] interface " << name << " : "
         << (isDerived ? DocumentationOf(*base, UnknownMember).Name : "IDispatch") << " { ";
    const FUNCDESC* function = nullptr;
    std::uint16_t index = 0;
    for (; information.GetFuncDesc(index, &function) == S_OK; ++index) {
        WriteFunction(text, information, *function, isDerived);
    }
    EXPECT_EQ(index, attributes->FunctionCount);
    text << "} ";
}

std::string TextOfLibrary(ITypeLib& library) {
    std::ostringstream text;
    const TLIBATTR* attributes = nullptr;
    EXPECT_EQ(library.GetLibAttr(&attributes), S_OK);
    const auto [name, help] = DocumentationOf(library, -1);
    text << "[ uuid(" << IdText(attributes->Identifier) << "), version(" << attributes->MajorVersion << "."
         << attributes->MinorVersion << "), lcid(" << std::hex << std::showbase << attributes->Language << std::dec
         << "), helpstring(\"" << help << "\"), helpfile(\"qlv6om.chm\") ] library " << name << " { ";
    for (std::uint32_t index = 0; index < library.GetTypeInfoCount(); ++index) {
        ITypeInfo* information = nullptr;
        EXPECT_EQ(library.GetTypeInfo(index, &information), S_OK);
        WriteInterface(text, *CountedPointer<ITypeInfo>::Adopt(information));
    }
    text << "};";
    return text.str();
}

/// The text behind its imports, with one blank where any stand, and each ";" on a line of its own, so that differences
/// show.
std::string Lines(const std::string& text) {
    std::istringstream words(text);
    std::string lines;
    for (std::string word; words >> word;) {
        lines += word + (word.ends_with(";") ? "\n" : " ");
    }
    return lines.substr(0, lines.find_last_not_of(" \n") + 1);
}

std::string TextInFile() {
    std::ifstream file(testing_locations::Sample("../resources/QLADrillDown.idl"));
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    return text.substr(text.find("\n[") + 1);
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
    EXPECT_EQ(Lines(TextOfLibrary(*Library)), Lines(TextInFile()));
}

TEST_F(TypeLibraryTest, FindsNamesWhateverTheirCase) {
    // clang-format off
    const struct { std::vector<const char16_t*> Names; HRESULT Status; std::vector<DISPID> Ids; } calls[] = {
        {{},                            S_OK,               {}},
        {{u"vARIABLES", u"PVAL"},       S_OK,               {0x60030000, 0}},
        {{u"UserDefinedBoundaries"},    S_OK,               {0x60030045}},
        {{u"ok", u"psuccess", u"pVal"}, DISP_E_UNKNOWNNAME, {3, 0, -1}},
        {{u"ResultsOption", u"value"},  DISP_E_UNKNOWNNAME, {8, -1}},
        {{u"Variable", u"pVal"},        DISP_E_UNKNOWNNAME, {-1, -1}},
        {{u""},                         DISP_E_UNKNOWNNAME, {-1}},
    };
    const struct { const char16_t* Name; int Found; DISPID Member; } searches[] = {
        {u"ddnstartup", 1, UnknownMember},
        {u"Cancel",     1, 4},
        {u"nothing",    0, 99},
    };
    // clang-format on
    for (const auto& [names, status, ids] : calls) {
        std::vector<DISPID> found(names.size(), 99);
        const auto count = static_cast<std::uint32_t>(names.size());
        EXPECT_EQ(FaceOf(Dialog()).GetIDsOfNames(GUID_NULL, names.data(), count, NeutralLanguage, found.data()),
                  status);
        EXPECT_EQ(found, ids);
    }
    for (const auto& [text, count, member] : searches) {
        const OwnedText name(SysAllocString(text));
        std::int32_t isName = 99;
        EXPECT_EQ(Library->IsName(name.Get(), 0, &isName), S_OK);
        EXPECT_EQ(isName, count);
        ITypeInfo* information = nullptr;
        DISPID found = 99;
        std::uint16_t room = 1;
        EXPECT_EQ(Library->FindName(name.Get(), 0, &information, &found, &room), S_OK);
        EXPECT_EQ(room, count);
        EXPECT_EQ(count == 0 ? 99 : found, member);
        static_cast<void>(CountedPointer<ITypeInfo>::Adopt(information));
    }
}

TEST_F(TypeLibraryTest, RefusesWhatIsNotThere) {
    DDNStartup& face = FaceOf(Dialog());
    std::uint32_t count = 0;
    ITypeInfo* none = nullptr;
    EXPECT_EQ(face.GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
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
        CDefineTask task(Analysis());
        task.AddDialogReference();
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

#ifndef __SANITIZE_ADDRESS__  // sanitizers look at the type of an object, and this one has none

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
    std::size_t slot = 7;
    for (const auto& information : {CountedPointer<ITypeInfo>::Adopt(base), Startup}) {
        const FUNCDESC* function = nullptr;
        for (std::uint32_t i = 0; information->GetFuncDesc(i, &function) == S_OK; ++i, ++slot) {
            VARIANT value;
            const auto use = static_cast<std::uint16_t>(function->Use);
            const std::uint32_t count = use == DispatchPropertyPut ? 1 : 0;
            ASSERT_EQ(information->Invoke(&object, function->Member, use, {&value, nullptr, count, 0}, nullptr, nullptr,
                                          nullptr),
                      S_OK);
            EXPECT_EQ(SlotCalled, slot) << "member " << function->Member;
            EXPECT_EQ(function->Slot, static_cast<std::int16_t>(slot * sizeof(void*)));
        }
    }
    EXPECT_EQ(slot, 91U);
}

#endif

}  // namespace
}  // namespace dialogtest
