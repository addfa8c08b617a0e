#pragma once

#include "automation/AutomationMember.h"

namespace drilldown {

/// Calls a member by what a script gives: its use, its arguments, the place for its result. Arguments are converted to
/// what the member takes. Where a member fails and there is an exception record, that is filled and the status is
/// DISP_E_EXCEPTION; else the status is the member's. Otherwise DISP_E_MEMBERNOTFOUND of a use that the member hasn't
/// got, DISP_E_BADPARAMCOUNT, DISP_E_PARAMNOTFOUND of an argument with a name, DISP_E_TYPEMISMATCH, with the index of
/// the argument, of one that can't be converted.
HRESULT CallMember(IDispatch& object, const AutomationMember& member, std::uint16_t uses, const DISPPARAMS& parameters,
                   VARIANT* result, EXCEPINFO* exception, std::uint32_t* badArgument);

}  // namespace drilldown
