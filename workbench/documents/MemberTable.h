#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/Automation.h"
#include "workbench/documents/NamedCall.h"

namespace quillara {

inline constexpr std::uint16_t ReadAndWrite = DispatchPropertyGet | DispatchPropertyPut;

/// A member of an object that scripts use by name.
struct MemberRow {
    std::u16string_view Name;
    DISPID Number;  ///< scripts may keep it; never changed
    std::uint16_t Uses;  ///< what may be done with it, as DispatchFlag
    std::uint8_t Fewest;  ///< arguments of a read or a call, at least
    std::uint8_t Most;
    VariantType Value;  ///< what it gives; Empty: nothing
    void (*Run)(void* object, NamedCall& call);
    std::string_view Help;
};

/// What scripts can do with objects of one kind.
struct ObjectKind {
    std::u16string_view Name;
    std::string_view Help;
    GUID Id;
    std::span<const MemberRow> Members;
};

/// A function that serves a member, for the table: it takes the object and the call.
template <typename Object, void (*Serve)(Object&, NamedCall&)>
void RunFor(void* object, NamedCall& call) {
    Serve(*static_cast<Object*>(object), call);
}

/// The number of a member, whatever the case of its letters; DISP_E_UNKNOWNNAME when there is none, or for the names of
/// arguments, which have none.
HRESULT FindMember(const ObjectKind& kind, const char16_t* const* names, std::uint32_t count, DISPID* ids) noexcept;

/// A call as IDispatch::Invoke has it.
struct InvokedCall {
    DISPID Member;
    std::uint16_t Flags;
    const DISPPARAMS& Parameters;
    VARIANT* Result;
    EXCEPINFO* Exception;
    std::uint32_t* BadArgument;
};

/// Serves a call by the table. What the member throws becomes a status, of an exception with a text DISP_E_EXCEPTION
/// with the text in the record.
HRESULT CallMember(const ObjectKind& kind, void* object, const InvokedCall& call) noexcept;

/// The part of an object that a table of members serves.
template <typename Interface>
class ByMembers : public Interface {
  public:
    using Interface::Interface;

    HRESULT GetTypeInfoCount(std::uint32_t* count) final {
        *count = 1;
        return S_OK;
    }
    HRESULT GetTypeInfo(std::uint32_t index, LCID language, ITypeInfo** information) final;
    HRESULT GetIDsOfNames(const GUID& /*reserved*/, const char16_t* const* names, std::uint32_t count,
                          LCID /*language*/, DISPID* ids) final {
        return FindMember(MembersOf(), names, count, ids);
    }
    HRESULT Invoke(DISPID member, const GUID& /*reserved*/, LCID /*language*/, std::uint16_t flags,
                   const DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                   std::uint32_t* badArgument) final {
        return CallMember(MembersOf(), ServedObject(), {member, flags, parameters, result, exception, badArgument});
    }

  private:
    [[nodiscard]] virtual const ObjectKind& MembersOf() const = 0;
    /// What the functions of the table take.
    [[nodiscard]] virtual void* ServedObject() = 0;
};

/// Writes what is told of a kind, with a reference for the caller.
HRESULT TellMembers(const ObjectKind& kind, std::uint32_t index, ITypeInfo** information) noexcept;

template <typename Interface>
HRESULT ByMembers<Interface>::GetTypeInfo(std::uint32_t index, LCID /*language*/, ITypeInfo** information) {
    return TellMembers(MembersOf(), index, information);
}

}  // namespace quillara
