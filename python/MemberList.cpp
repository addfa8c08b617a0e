#include "python/MemberList.h"

#include <utility>

#include "platform/CountedPointer.h"
#include "platform/OwnedText.h"
#include "platform/TextEncodings.h"
#include "platform/TypeInformation.h"
#include "workbench/documents/NamedCall.h"

namespace {

void Require(HRESULT status) {
    if (!Succeeded(status)) {
        throw quillara::MemberRefusal{status};
    }
}

/// Name and help of a member, or of the interface itself.
std::pair<std::string, std::string> TextsOf(ITypeInfo& information, DISPID member) {
    OwnedText name;
    OwnedText help;
    Require(information.GetDocumentation(member, name.Put(), help.Put(), nullptr, nullptr));
    return {NarrowText(name.View()), NarrowText(help.View())};
}

std::uint16_t TypeOf(const ELEMDESC& element) {
    const TYPEDESC& type = element.Type;
    const bool isPointer = type.Type == PointerType && type.Pointed != nullptr;
    return isPointer ? TypeOf({*type.Pointed, element.Flags}) : type.Type;
}

/// What comes back: a status stands for nothing.
std::uint16_t ResultOf(const FUNCDESC& function) {
    const std::uint16_t type = TypeOf(function.Result);
    return type == StatusType ? NoType : type;
}

ToldMember Told(ITypeInfo& information, const FUNCDESC& function) {
    auto [name, help] = TextsOf(information, function.Member);
    ToldMember member{std::move(name),   std::move(help), function.Member, static_cast<std::uint16_t>(function.Use), 0,
                      ResultOf(function)};
    for (std::int16_t i = 0; i < function.ParameterCount; ++i) {
        const ELEMDESC& parameter = function.Parameters[i];
        const bool comesBack = (parameter.Flags & (ParameterOut | ParameterResult)) != 0;
        member.Arguments += comesBack ? 0 : 1;
        if (comesBack || member.Use == DispatchPropertyPut) {
            member.Value = TypeOf(parameter);
        }
    }
    return member;
}

CountedPointer<ITypeInfo> BaseOf(ITypeInfo& information) {
    std::uint32_t reference = 0;
    ITypeInfo* base = nullptr;
    const bool hasBase = Succeeded(information.GetRefTypeOfImplType(0, &reference)) &&
                         Succeeded(information.GetRefTypeInfo(reference, &base));
    return CountedPointer<ITypeInfo>::Adopt(hasBase ? base : nullptr);
}

void AddMembers(ITypeInfo& information, std::vector<ToldMember>& members) {
    const FUNCDESC* function = nullptr;
    for (std::uint32_t i = 0; Succeeded(information.GetFuncDesc(i, &function)); ++i) {
        members.push_back(Told(information, *function));
        information.ReleaseFuncDesc(function);
    }
    if (const auto base = BaseOf(information)) {
        AddMembers(*base, members);
    }
}

}  // namespace

ToldObject MembersOf(IDispatch& object) {
    ITypeInfo* given = nullptr;
    Require(object.GetTypeInfo(0, NeutralLanguage, &given));
    const auto information = CountedPointer<ITypeInfo>::Adopt(given);
    auto [name, help] = TextsOf(*information, UnknownMember);
    ToldObject told{std::move(name), std::move(help), {}};
    AddMembers(*information, told.Members);
    return told;
}
