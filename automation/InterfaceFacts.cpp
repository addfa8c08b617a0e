// The interfaces as constant tables.

#include <algorithm>
#include <array>

#include "automation/InterfaceDescription.h"
#include "automation/StartupMembers.h"

namespace drilldown {
namespace {

constexpr std::int16_t DispatchSlots = 7;  // of IUnknown and IDispatch, in front of our own
constexpr auto SlotSize = static_cast<std::int16_t>(sizeof(void*));
constexpr std::size_t Kinds = 6;

constexpr std::uint16_t TypeNumber(std::size_t kind) {
    return static_cast<std::uint16_t>(TypeOf(static_cast<ValueKind>(kind)));
}

/// The types of values, by their kinds.
constexpr auto ValueTypes = [] {
    std::array<TYPEDESC, Kinds> types{};
    for (std::size_t kind = 0; kind < Kinds; ++kind) {
        types[kind] = {nullptr, TypeNumber(kind)};
    }
    return types;
}();

/// What a setter takes, and where a getter or a method writes what it gives.
constexpr auto TakenParameters = [] {
    std::array<ELEMDESC, Kinds> parameters{};
    for (std::size_t kind = 0; kind < Kinds; ++kind) {
        parameters[kind] = {{nullptr, TypeNumber(kind)}, ParameterIn};
    }
    return parameters;
}();
constexpr auto GivenParameters = [] {
    std::array<ELEMDESC, Kinds> parameters{};
    for (std::size_t kind = 0; kind < Kinds; ++kind) {
        parameters[kind] = {{&ValueTypes[kind], PointerType}, ParameterOut | ParameterResult};
    }
    return parameters;
}();

constexpr FUNCDESC Describe(const AutomationMember& member, const MemberFunction& function, std::size_t slot) {
    const bool isGiven = function.Use != DispatchPropertyPut;
    const auto kind = static_cast<std::size_t>(function.Kind);
    FUNCDESC description;
    description.Member = member.Id;
    description.Use = function.Use;
    description.ParameterCount = function.Kind == ValueKind::None ? 0 : 1;
    description.Slot = static_cast<std::int16_t>(static_cast<std::int16_t>(slot) * SlotSize);
    description.Parameters = isGiven ? &GivenParameters[kind] : &TakenParameters[kind];
    description.Result = {{nullptr, StatusType}, 0};
    return description;
}

template <std::size_t Functions, std::size_t Members>
constexpr std::array<FUNCDESC, Functions> DescribeAll(const std::array<AutomationMember, Members>& members,
                                                      std::size_t slot) {
    std::array<FUNCDESC, Functions> functions{};
    auto next = functions.begin();
    for (const AutomationMember& member : members) {
        for (const MemberFunction& function : member.Functions) {
            if (function.Use != 0) {
                *next++ = Describe(member, function, slot++);
            }
        }
    }
    return functions;
}

constexpr std::size_t DialogFunctionCount = FunctionsOf(DialogMembers);
constexpr std::size_t StartupFunctionCount = FunctionsOf(StartupMembers);
constexpr auto DialogFunctions = DescribeAll<DialogFunctionCount>(DialogMembers, DispatchSlots);
constexpr auto StartupFunctions =
    DescribeAll<StartupFunctionCount>(StartupMembers, DispatchSlots + DialogFunctionCount);

constexpr TYPEATTR AttributesOf(const GUID& id, std::size_t functions, std::uint16_t bases, std::uint16_t version) {
    constexpr std::uint16_t flags = DualType | AutomationType | DispatchableType;
    return {id,   LibraryLanguage, TypeKind::Interface, static_cast<std::uint16_t>(functions), 0, bases, version, 0,
            flags};
}

constexpr InterfaceFacts DialogInterface{"QlaAnalysisDialog",
                                         "QUILLARA Dialog",
                                         DialogMembers,
                                         DialogFunctions,
                                         nullptr,
                                         0,
                                         AttributesOf(IComQuillaraDialog::Id, DialogFunctionCount, 0, 1)};
constexpr InterfaceFacts StartupInterface{"DDNStartup",
                                          "Drill-Down analysis startup dialog",
                                          StartupMembers,
                                          StartupFunctions,
                                          &DialogInterface,
                                          1,
                                          AttributesOf(DDNStartup::Id, StartupFunctionCount, 1, 0)};
constexpr std::array<const InterfaceFacts*, 2> AllInterfaces{&DialogInterface, &StartupInterface};

constexpr char16_t LowerCaseWide(char16_t letter) {
    return letter >= u'A' && letter <= u'Z' ? static_cast<char16_t>(letter - u'A' + u'a') : letter;
}

template <typename IsIt>
const AutomationMember* FindWhere(const InterfaceFacts& interface, const IsIt& isIt) {
    for (const InterfaceFacts* facts = &interface; facts != nullptr; facts = facts->Base) {
        if (const auto member = std::ranges::find_if(facts->Members, isIt); member != facts->Members.end()) {
            return &*member;
        }
    }
    return nullptr;
}

}  // namespace

std::span<const InterfaceFacts* const> Interfaces() {
    return AllInterfaces;
}

const AutomationMember* FindMember(const InterfaceFacts& interface, DISPID id) {
    return FindWhere(interface, [id](const AutomationMember& member) { return member.Id == id; });
}

const AutomationMember* FindMember(const InterfaceFacts& interface, std::u16string_view name) {
    return FindWhere(interface, [name](const AutomationMember& member) { return IsNamed(member.Name, name); });
}

bool IsNamed(const char* name, std::u16string_view text) {
    const auto lower = [](char letter) { return LowerCaseWide(static_cast<unsigned char>(letter)); };
    return std::ranges::equal(std::string_view(name), text, {}, lower, LowerCaseWide);
}

}  // namespace drilldown
