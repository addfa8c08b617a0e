#include "automation/FailureReports.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "automation/CrashReport.h"
#include "host/ErrorReports.h"
#include "host/Exceptions.h"
#include "host/Log.h"
#include "platform/CountedPointer.h"
#include "platform/TextEncodings.h"

namespace drilldown {
namespace {

constexpr int FailureLevel = 1;

struct DeleteException {
    void operator()(CException* exception) const { exception->Delete(); }
};
/// An exception of the framework, which its catcher deletes.
using CaughtException = std::unique_ptr<CException, DeleteException>;

/// The text of an exception, cut to the room that each kind of report gives it.
template <unsigned Room>
class ExceptionText {
  public:
    explicit ExceptionText(const CException& exception) { exception.GetErrorMessage(Text.data(), Room); }
    [[nodiscard]] const char* Get() const { return Text.data(); }

  private:
    std::array<char, Room> Text{};
};

/// Intended: 0, a success, where no place is known, unlike of every other failure; the status is the code of the place,
/// and callers see what happened by the error object.
HRESULT StatusOfStructured(const win32_exception& exception) {
    return exception.HasPointers() ? static_cast<HRESULT>(exception.Code()) : S_OK;
}

/// A dump if one can be had; whether or not, the failure goes on being reported.
void TryToDump(const win32_exception& exception) noexcept {
    try {
        CrashReport(ErrorFolder(), exception.Pointers(), exception.what());
    } catch (const std::exception&) {
        // No dump.
    }
}

/// What a clause of the forwarding members stores for the end of the report.
struct Failure {
    HRESULT Result = E_FAIL;
    std::string Text;
};

void DescribeHandled(Failure& failure) {
    try {
        throw;
    } catch (COleException* exception) {
        const CaughtException caught(exception);
        failure.Result = exception->m_sc;
    } catch (CException* exception) {
        const EnterModuleState entered(OrvGetAppModuleState());
        const CaughtException caught(exception);
        failure.Result = DualHandleException(GUID_NULL, exception);
        failure.Text = ExceptionText<255>(*exception).Get();
    } catch (const _com_error& error) {
        failure.Result = error.Error();
        SetErrorInfo(0, CountedPointer<IErrorInfo>::Adopt(error.ErrorInfo()).Get());
        failure.Text = error.Description();
    } catch (const win32_exception& exception) {
        failure.Result = StatusOfStructured(exception);
        TryToDump(exception);
        DispatchReportError(GUID_NULL, std::string_view(exception.what()));
        failure.Text = exception.what();
    } catch (const std::exception& exception) {
        DispatchReportError(GUID_NULL, std::string_view(exception.what()));
        failure.Text = exception.what();
    } catch (...) {
        // E_FAIL and its standard message.
    }
}

void LogForwardingFailure(const MemberName& member, const Failure& failure) {
    const std::string text = failure.Text.empty() ? _com_error(failure.Result).ErrorMessage() : failure.Text;
    LogMessage(FailureLevel, 0, "Exception in automation method [%s%s%s]: %s", member.Scope, member.Use, member.Member,
               text.c_str());
}

void LogAnalysisFailure(const char* text) noexcept {
    try {
        LogMessage(FailureLevel, 0, "Exception in analysis method: %s", text);
    } catch (const std::exception&) {
        // Without memory for the line the failure is told to the caller alone.
    }
}

HRESULT ReportHandledInAnalysis(HRESULT& result) {
    try {
        throw;
    } catch (CException* exception) {
        const ExceptionText<512> text = [exception] {
            const CaughtException caught(exception);
            return ExceptionText<512>(*exception);
        }();
        LogAnalysisFailure(text.Get());
        return DispatchReportError(IUnknown::Id, std::string_view(text.Get()));
    } catch (const _com_error& error) {
        result = error.Error();
        const std::string description = error.Description();
        DispatchReportError(GUID_NULL, description);
        LogAnalysisFailure(description.c_str());
        return result;
    } catch (const win32_exception& exception) {
        DispatchReportError(GUID_NULL, std::string_view(exception.what()));
        LogAnalysisFailure(exception.what());
        TryToDump(exception);
        return StatusOfStructured(exception);
    } catch (const std::exception& exception) {
        const HRESULT reported = DispatchReportError(GUID_NULL, std::string_view(exception.what()));
        LogAnalysisFailure(exception.what());
        return reported;
    } catch (...) {
        LogAnalysisFailure("Unexpected error");
        return DispatchReportError(IUnknown::Id, std::string_view("Unexpected error in analysis method"));
    }
}

}  // namespace

HRESULT ReportForwardingFailure(const MemberName& member) noexcept {
    Failure failure;
    try {
        DescribeHandled(failure);
        if (!Succeeded(failure.Result)) {
            LogForwardingFailure(member, failure);
        }
    } catch (const std::exception&) {
        // Without memory for its texts a failure is told by its status alone.
    }
    return failure.Result;
}

HRESULT ReportAnalysisFailure() noexcept {
    HRESULT result = E_FAIL;
    try {
        return ReportHandledInAnalysis(result);
    } catch (const std::exception&) {
        return result;  // as above
    }
}

HRESULT ReportInvokeFailure(EXCEPINFO* record) noexcept {
    constexpr std::u16string_view unexpected = u"Unexpected Error";
    try {
        throw;
    } catch (CException* exception) {
        const CaughtException caught(exception);
        try {
            if (record != nullptr) {
                COleDispatchException::Process(record, exception);
            }
            return DispatchReportError(GUID_NULL, WideText(ExceptionText<255>(*exception).Get()));
        } catch (const std::exception&) {
            return DispatchReportError(GUID_NULL, unexpected);
        }
    } catch (...) {
        return DispatchReportError(GUID_NULL, unexpected);
    }
}

}  // namespace drilldown
