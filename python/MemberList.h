#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Automation.h"

/// One use of a member, as the type information of its object tells it.
struct ToldMember {
    std::string Name;
    std::string Help;
    DISPID Number;
    std::uint16_t Use;  ///< one DispatchFlag
    int Arguments;  ///< that a script gives, the new value of a write included
    std::uint16_t Value;  ///< what it gives, or takes when it is written, as a VariantType; NoType: nothing
};

/// What an object tells of itself, its base interfaces included.
struct ToldObject {
    std::string Name;
    std::string Help;
    std::vector<ToldMember> Members;
};

/// Throws MemberRefusal when it tells nothing.
[[nodiscard]] ToldObject MembersOf(IDispatch& object);
