// What becomes of failures that members of the startup dialog meet: status, error object and log.

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <regex>
#include <stdexcept>

#include "automation/CrashReport.h"
#include "host/ErrorReports.h"
#include "host/Exceptions.h"
#include "tests/Locations.h"
#include "tests/automation/FaceBench.h"
#include "tests/automation/HostCalls.h"
#include "tests/dialogs/DialogScript.h"
#include "tests/workbench/Tables.h"

namespace dialogtest {
namespace {

struct Wordless : CException {};

CountedPointer<IErrorInfo> ErrorSaying(std::string_view text) {
    DispatchReportError(GUID_NULL, text);
    IErrorInfo* error = nullptr;
    GetErrorInfo(0, &error);
    return CountedPointer<IErrorInfo>::Adopt(error);
}

int Place = 0;  // where a structured exception happened

struct FailureCase {
    std::function<void()> Throw;
    const char* Forwarded;  ///< status, error object, text of the log line
    const char* Own;
};

// clang-format off
const std::vector<FailureCase> Failures{
    {[] { throw new COleException(E_ACCESSDENIED); },                       "80070005 | - | Access is denied.",                       "80020009 | Access is denied. | Access is denied."},
    {[] { throw new COleException(7); },                                    "7 | - | no line",                                        "80020009 | Unknown error 0x7 | Unknown error 0x7"},
    {[] { throw new COleDispatchException("größer", 7); },                  "80004005 | größer | größer",                             "80020009 | größer | größer"},
    {[] { throw new COleDispatchException(std::string(600, 'x'), 7); },     "80004005 | 511 x | 254 x",                               "80020009 | 511 x | 511 x"},
    {[] { throw static_cast<CException*>(new Wordless); },                  "8000ffff | Catastrophic failure | Catastrophic failure", "80020009 | - | -"},
    {[] { throw _com_error(E_INVALIDARG, ErrorSaying("no such")); },        "80070057 | no such | no such",                           "80070057 | no such | no such"},
    {[] { throw _com_error(E_INVALIDARG); },                                "80070057 | - | The parameter is incorrect.",             "80070057 | - | -"},
    {[] { throw win32_exception("access", 0xC0000005, {&Place, &Place}); }, "c0000005 | access | access",                             "c0000005 | access | access"},
    {[] { throw win32_exception("made up", 0xC0000005); },                  "ok | made up | no line",                                 "ok | made up | made up"},
    {[] { throw std::runtime_error("boom"); },                              "80004005 | boom | boom",                                 "80020009 | boom | boom"},
    {[] { throw std::bad_alloc(); },                                        "80004005 | std::bad_alloc | std::bad_alloc",             "80020009 | std::bad_alloc | std::bad_alloc"},
    {[] { throw 7; },                                                       "80004005 | - | Unspecified error",                       "80020009 | Unexpected error in analysis method | Unexpected error"},
};
// clang-format on

constexpr char Forwarded[] = "Exception in automation method [CDefineTask::";
constexpr char Own[] = "Exception in analysis method: ";
constexpr char OfEveryDialog[] =
    "Exception in automation method [IQuillaraDialog2Impl<struct DDNStartup,&struct _GUID const IID_DDNStartup,&struct "
    "_GUID const LIBID_QLADrillDown,1,0,class ATL::CComTypeInfoHolder>::get_Name]: ";

/// A text; "-" for an empty one, "254 x" for a long one of nothing but that.
std::string Short(const std::string& text) {
    const bool isRun = text.size() > 100 && text.find_first_not_of('x') == std::string::npos;
    return text.empty() ? "-" : isRun ? std::to_string(text.size()) + " x" : text;
}

class FailureReportsTest : public testing::Test, public OutputsBench {
  protected:
    void SetUp() override {
        Open(quillara::TableOf({quillara::Texts("sex", {"f", "m"})}));
        Do(*this, "choose sex");
        setenv("XDG_STATE_HOME", State.c_str(), 1);
        TakeLog();
    }
    void TearDown() override { unsetenv("XDG_STATE_HOME"); }

    /// "80004005 | boom | boom": the status, the error object, and the log line behind what it begins with.
    static std::string Reported(HRESULT status, const std::string& beginning) {
        std::string log = TakeLog();
        const std::string whole = "1 0 " + beginning;
        EXPECT_TRUE(log.empty() || log.starts_with(whole)) << log;
        const std::string error = TakeError();
        return StatusText(status) + " | " + Short(error) + " | " +
               (log.empty() ? "no line" : Short(log.substr(std::min(log.size(), whole.size()))));
    }

    const std::string State = testing::TempDir() + "state-of-reports";
    const OwnedVariant One = OwnedVariant::OfInteger(1);
};

TEST_F(FailureReportsTest, EachClassOfFailureIsReportedByTheKindOfItsMember) {
    DDNStartup& face = FaceOf(Dialog());
    int state = 0;
    OwnedText name;
    for (const FailureCase& failure : Failures) {
        SCOPED_TRACE(failure.Forwarded);
        ErrorSaying("old");
        FailNext("get integer", failure.Throw);
        EXPECT_EQ(Reported(face.get_WeightedMoments(&state), Forwarded + std::string("get_WeightedMoments]: ")),
                  failure.Forwarded);
        FailNext("name", failure.Throw);
        EXPECT_EQ(Reported(face.get_Name(name.Put()), OfEveryDialog), failure.Forwarded);
        FailNext("text", failure.Throw);  // in the host
        EXPECT_EQ(Reported(face.put_DrillDownVariable(One.Get()), Own), failure.Own);
        FailNext("controls", failure.Throw);  // where the dialog shows its state
        EXPECT_EQ(Reported(face.put_DrillDownVariable(One.Get()), Own), failure.Own);
        EXPECT_EQ(CurrentModuleState(), nullptr) << "left while the exception unwound";
    }
}

TEST_F(FailureReportsTest, FailuresWithinAPressComeOutOfTheMember) {
    DDNStartup& face = FaceOf(Dialog());
    const std::string forwarded = std::string(Forwarded) + "DrillDown]: ";
    Host().OfferCaseBlocks(false);  // so that the host is asked for each case
    for (const FailureCase& failure : Failures) {
        for (const char* place : {"pass", "controls"}) {  // in the engine, and where the dialog shows its state
            SCOPED_TRACE(std::string(failure.Forwarded) + " in " + place);
            ASSERT_EQ(PutByName(Dialog(), "Variables", "'sex'"), "ok");
            PutByName(Dialog(), "DrillDownVariable", "'sex'");
            PutByName(Dialog(), "DrillDownCategory", "'f'");
            FailNext(place, failure.Throw);
            EXPECT_EQ(
                Reported(face.DrillDown(), forwarded),
                std::regex_replace(failure.Forwarded, std::regex("std::bad_alloc"),
                                   "There is not enough memory for this command; close other programs and try again."));
            EXPECT_EQ(OnHostCall, nullptr) << "not reached";
            EXPECT_EQ(CurrentModuleState(), nullptr);
        }
    }
}

TEST_F(FailureReportsTest, AStatusIsNoFailureToReport) {
    DDNStartup& face = FaceOf(Dialog());
    OwnedText text;
    DispatchReportError(GUID_NULL, std::string_view("old"));
    EXPECT_EQ(Reported(face.get_UserDefinedBoundaries(text.Put()), Own), "80004005 | old | no line");
    DispatchReportError(GUID_NULL, std::string_view("old"));
    EXPECT_EQ(Reported(face.get_Name(text.Put()), OfEveryDialog), "ok | - | no line");
}

TEST_F(FailureReportsTest, AfterTheWindowHasGoneOnlyTheApplicationAnswers) {
    const auto held = CountedPointer<DDNStartup>::Share(&FaceOf(Dialog()));
    DDNStartup& face = *held;
    EXPECT_EQ(face.Cancel(), S_OK);
    Host().RunMessages();
    ASSERT_EQ(Host().StartupWindow(), nullptr);
    for (const AutomationMember& member : StartupMembers) {
        for (const MemberFunction& function : member.Functions) {
            if (function.Call == nullptr) {
                continue;
            }
            SCOPED_TRACE(member.Name);
            VARIANT value;
            const HRESULT status = function.Call(face, value);
            const std::string use = function.Use == DispatchPropertyGet   ? "get_"
                                    : function.Use == DispatchPropertyPut ? "put_"
                                                                          : "";
            EXPECT_EQ(Reported(status, member.Control == 0 ? Own : Forwarded + use + member.Name + "]: "),
                      member.Control == 0
                          ? "80020009 | Object is not connected to server | Object is not connected to server"
                          : "800401fd | - | Object is not connected to server");
        }
    }
    for (const AutomationMember& member : DialogMembers) {
        VARIANT value;
        const bool isApplication = member.Id == 1;
        EXPECT_EQ(member.Functions[0].Call(face, value) == CO_E_OBJNOTCONNECTED, !isApplication) << member.Name;
        EXPECT_EQ(TakeLog().empty(), isApplication) << member.Name;
        if (value.Type == VariantType::Dispatch) {
            VariantClear(value);
        }
    }
}

/// A dialog whose one member without a report of its own throws.
struct ThrowingTask : CDefineTask {
    using CDefineTask::CDefineTask;
    HRESULT get_Application(IDispatch** /*pApp*/) override {
        Failure();
        return S_OK;
    }
    std::function<void()> Failure;
};

TEST_F(FailureReportsTest, CallsByNumberReportWhatTheMemberDoesNot) {
    ThrowingTask task(Analysis());
    // clang-format off
    const struct { std::function<void()> Throw; const char* Report; const char* Record; } failures[] = {
        {[] { throw new COleDispatchException("größer", 7); },              "80020009 | größer | no line",           "größer"},
        {[] { throw new COleDispatchException(std::string(600, 'x'), 7); }, "80020009 | 254 x | no line",            "511 x"},
        {[] { throw new COleException(E_ACCESSDENIED); },                   "80020009 | Access is denied. | no line", "Access is denied."},
        {[] { throw std::runtime_error("boom"); },                          "80020009 | Unexpected Error | no line", "-"},
        {[] { throw 7; },                                                   "80020009 | Unexpected Error | no line", "-"},
    };
    // clang-format on
    for (const auto& [failure, report, told] : failures) {
        task.Failure = failure;
        EXCEPINFO record;
        for (EXCEPINFO* given : {&record, static_cast<EXCEPINFO*>(nullptr)}) {
            VARIANT result;
            EXPECT_EQ(Reported(FaceOf(task).Invoke(1, GUID_NULL, NeutralLanguage, DispatchPropertyGet, {}, &result,
                                                   given, nullptr),
                               ""),
                      report);
            EXPECT_EQ(CurrentModuleState(), nullptr);
        }
        const OwnedText source(record.Source), description(record.Description);
        EXPECT_EQ(Short(NarrowText(description.View())), told);
    }
}

// Dumps

TEST_F(FailureReportsTest, ErrorsHaveAFolderOfTheirOwnIfItCanBeHad) {
    std::filesystem::remove_all(State);
    EXPECT_EQ(ErrorFolder(), State + "/quillara/errors");
    EXPECT_EQ(ErrorFolder(), State + "/quillara/errors") << "there already";
    EXPECT_TRUE(std::filesystem::is_directory(ErrorFolder()));
    std::filesystem::remove_all(State);
    std::filesystem::create_directory(State);
    std::ofstream(State + "/quillara") << "in the way";
    EXPECT_EQ(ErrorFolder(), "");
    std::filesystem::remove_all(State);
    std::ofstream(State) << "in the way";
    EXPECT_EQ(ErrorFolder(), "");
    std::filesystem::remove_all(State);
}

TEST_F(FailureReportsTest, ADumpIsMadeAndLoggedWhereTheReportLibraryIs) {
    DDNStartup& face = FaceOf(Dialog());
    int state = 0;
    const auto fail = [] { throw win32_exception("access", 0xC0000005, {&Place, &Place}); };
    void* library = dlopen(testing_locations::Library("reports/libCrashRpt.so").c_str(), RTLD_NOW);
    ASSERT_NE(library, nullptr) << dlerror();  // from now on it is found by its plain name
    const std::string& told = *static_cast<std::string*>(dlsym(library, "Told"));
    const std::string dump = "1 0 Process dump was generated in [" + ErrorFolder() + "]";
    FailNext("get integer", fail);
    EXPECT_EQ(face.get_WeightedMoments(&state), StatusOf(0xC0000005));
    EXPECT_EQ(TakeLog(), dump + " / 1 0 " + Forwarded + "get_WeightedMoments]: access");
    EXPECT_EQ(told, "trace 9999 here; report " + ErrorFolder() + " here access; ");
    FailNext("text", fail);
    EXPECT_EQ(face.put_DrillDownVariable(One.Get()), StatusOf(0xC0000005));
    EXPECT_EQ(TakeLog(), std::string("1 0 ") + Own + "access / " + dump);
    dlclose(library);
}

}  // namespace
}  // namespace dialogtest
