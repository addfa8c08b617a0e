#pragma once

#include "host/AnalysisDialog.h"
#include "host/ModuleState.h"
#include "host/ScriptValues.h"
#include "platform/ErrorInfo.h"

// No failure crosses the boundary to scripts: each ends as a status, mostly with an error object for the caller and a
// line in the log. Members that go to the host and members of the analysis itself report in two different ways.

namespace drilldown {

/// A member as the log names it, in three pieces: "CDefineTask::", "get_", "Variables".
struct MemberName {
    const char* Scope;
    const char* Use;  ///< "get_", "put_", or nothing of a method
    const char* Member;
};

/// Reports the exception that is being handled, and gives the status of the member.
[[nodiscard]] HRESULT ReportForwardingFailure(const MemberName& member) noexcept;
/// The same of a member of the analysis.
[[nodiscard]] HRESULT ReportAnalysisFailure() noexcept;
/// The same of a call by number, which also fills the caller's exception record, if there is one.
[[nodiscard]] HRESULT ReportInvokeFailure(EXCEPINFO* record) noexcept;

/// Runs a member that goes to the host.
template <typename Call>
HRESULT ForwardToHost(const CAnalysisModelessDialog& dialog, const MemberName& member, const Call& call) noexcept {
    try {
        const EnterModuleState entered(OrvGetAppModuleState());
        SetErrorInfo(0, nullptr);
        dialog.ThrowIfClosed();
        return call();
    } catch (...) {
        return ReportForwardingFailure(member);
    }
}

/// Runs a member of the analysis itself, which is the host's current one meanwhile.
/// Intended: an error object of an earlier call stays, unlike in ForwardToHost; callers clear it who look at it after a
/// plain status.
template <typename Call>
HRESULT RunInAnalysis(const CAnalysisModelessDialog& dialog, CAnalysisSupport& analysis, const Call& call) noexcept {
    try {
        const EnterModuleState entered(OrvGetAppModuleState());
        dialog.ThrowIfClosed();
        const CEnterAnalysisContext current(analysis);
        return call();
    } catch (...) {
        return ReportAnalysisFailure();
    }
}

}  // namespace drilldown
