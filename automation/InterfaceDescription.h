#pragma once

#include <span>
#include <string_view>

#include "automation/AutomationMember.h"
#include "platform/Guid.h"
#include "platform/TypeInformation.h"

// What the module tells of its interfaces, made from the lists of their members.

namespace drilldown {

inline constexpr GUID LIBID_QLADrillDown = GuidOf("{C9E2902B-3D45-11D4-9FF4-00C04FA0D540}");
inline constexpr LCID LibraryLanguage = 0x409;
inline constexpr char HelpFile[] = "qlv6om.chm";

/// An interface as a whole.
struct InterfaceFacts {
    const char* Name;
    const char* Help;
    std::span<const AutomationMember> Members;
    std::span<const FUNCDESC> Functions;  ///< those of the members, in the order of their slots
    const InterfaceFacts* Base;  ///< of the library; null: IDispatch
    std::uint32_t Place;  ///< in the library
    TYPEATTR Attributes;
};

/// The interfaces in the order of their places: those of every dialog, and of the startup dialog.
[[nodiscard]] std::span<const InterfaceFacts* const> Interfaces();

/// The member of a number, or of a name whatever its case, the base interface's too; null when there is none.
[[nodiscard]] const AutomationMember* FindMember(const InterfaceFacts& interface, DISPID id);
[[nodiscard]] const AutomationMember* FindMember(const InterfaceFacts& interface, std::u16string_view name);

/// Whether a name is that text, whatever its case.
[[nodiscard]] bool IsNamed(const char* name, std::u16string_view text);

/// Writes a text of plain letters for the caller; a null place is passed over.
HRESULT GiveText(std::string_view text, BSTR* place);

/// The object that tells of an interface, by its place. It lives as long as the module; a reference keeps that loaded.
[[nodiscard]] ITypeInfo& DescriptionAt(std::uint32_t place);
/// That of the startup dialog's interface.
[[nodiscard]] ITypeInfo& StartupDescription();

}  // namespace drilldown
