// What a failing call leaves: exceptions, error objects, the log.

#include <filesystem>
#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "host/ErrorReports.h"
#include "host/Exceptions.h"
#include "host/Log.h"
#include "host/ModuleState.h"
#include "host/PlatformServices.h"
#include "platform/OwnedText.h"
#include "tests/workbench/Files.h"
#include "workbench/data/Errors.h"
#include "workbench/documents/WideText.h"
#include "workbench/hosting/LogFile.h"

namespace quillara {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

struct Releaser {
    void operator()(CException* exception) const { exception->Delete(); }
};
using Thrown = std::unique_ptr<CException, Releaser>;

/// The description of the error object that was left, which is taken away; "none" without one.
std::string ErrorLeft() {
    IErrorInfo* error = nullptr;
    if (GetErrorInfo(0, &error) != S_OK) {
        return "none";
    }
    const auto held = CountedPointer<IErrorInfo>::Adopt(error);
    OwnedText text;
    EXPECT_EQ(held->GetDescription(text.Put()), S_OK);
    return NarrowText(text.View());
}

struct Plain : CException {};

TEST(Failures, ExceptionsBecomeErrorObjects) {
    // clang-format off
    const struct { Thrown Exception; HRESULT Status; const char* Text; } failures[] = {
        {Thrown(new COleException(CO_E_OBJNOTCONNECTED)),          CO_E_OBJNOTCONNECTED, "Object is not connected to server"},
        {Thrown(new COleException(StatusOf(0x80040123))),          StatusOf(0x80040123), "Unknown error 0x80040123"},
        {Thrown(new COleDispatchException("No steps.", 7)),        E_FAIL,               "No steps."},
        {Thrown(new COleDispatchException("", 0, E_ACCESSDENIED)), E_ACCESSDENIED,       "Access is denied."},
        {Thrown(new Plain),                                        E_UNEXPECTED,         "Catastrophic failure"},
    };
    // clang-format on
    for (const auto& [exception, status, text] : failures) {
        EXPECT_EQ(DualHandleException(GUID_NULL, exception.get()), status);
        EXPECT_EQ(ErrorLeft(), text);
        EXPECT_EQ(ErrorLeft(), "none");
    }
    EXPECT_EQ(DispatchReportError(GUID_NULL, std::string_view("größer")), DISP_E_EXCEPTION);
    EXPECT_EQ(ErrorLeft(), "größer");
    EXPECT_EQ(DispatchReportError(IUnknown::Id, std::u16string_view(u"wide")), DISP_E_EXCEPTION);
    EXPECT_EQ(ErrorLeft(), "wide");
    DispatchReportError(GUID_NULL, std::string_view("old"));
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(ErrorLeft(), "none");
}

TEST(Failures, StatusesHaveStandardMessages) {
    // clang-format off
    const struct { std::uint32_t Code; const char* Message; } statuses[] = {
        {0x80004005, "Unspecified error"},
        {0x80040200, "Unknown error 0x80040200"},  // or a status of its own with that message
        {0x80040201, "IDispatch error #1"},
        {0x8004FFFF, "IDispatch error #65023"},
        {0x80040000, "Unknown error 0x80040000"},
        {0x8004020A, "IDispatch error #10"},
        {0xDEADBEEF, "Unknown error 0xDEADBEEF"},
        {0x00000002, "Unknown error 0x2"},
    };
    // clang-format on
    for (const auto& [code, message] : statuses) {
        EXPECT_EQ(_com_error(static_cast<HRESULT>(code)).ErrorMessage(), message);
    }
}

TEST(Failures, MessagesAreCutToTheirRoom) {
    const Thrown exception(new COleDispatchException("abcdef", 1));
    char text[4] = "xyz";
    EXPECT_TRUE(exception->GetErrorMessage(text, sizeof(text)));
    EXPECT_STREQ(text, "abc");
    EXPECT_FALSE(Thrown(new Plain)->GetErrorMessage(text, sizeof(text)));
    EXPECT_STREQ(text, "");
}

TEST(Failures, ARecordIsFilledForTheCaller) {
    EXCEPINFO record;
    COleDispatchException::Process(&record, Thrown(new COleDispatchException("Nothing drilled.", 3)).get());
    EXPECT_EQ(record.Code, 3);
    EXPECT_EQ(record.Status, S_OK);
    EXPECT_EQ(ViewOf(record.Description), u"Nothing drilled.");
    SysFreeString(record.Description);
    SysFreeString(record.Source);
}

class Log : public testing::Test {
  protected:
    Log() { ForgetKeptLogLines(); }
    ~Log() override {
        CloseLogFile();
        ForgetKeptLogLines();
    }

    TemporaryFolder Folder;
};

TEST_F(Log, LinesAreKeptUntilItIsOpen) {
    LogMessage(1, 0, "%s of %d", "first", 2);
    ASSERT_EQ(KeptLogLines().size(), 1U);
    const std::string file = Folder.Path("log");
    OpenLogFile(file);
    EXPECT_TRUE(KeptLogLines().empty());
    LogMessage(3, 9, "two\nlines");
    EXPECT_THAT(ContentOf(file), MatchesRegex("[-0-9]+ [:0-9]+\t[0-9]+\t[0-9]+\t1\tfirst of 2\n"
                                              "[-0-9]+ [:0-9]+\t[0-9]+\t[0-9]+\t3\ttwo lines\t9\n"));
    EXPECT_THROW(OpenLogFile(Folder.Path("none/log")), DataError);
    EXPECT_EQ(GetOrvMainApp()->Logging, 1);
}

TEST_F(Log, StaysSmallWithOneOlderFile) {
    OpenLogFile(Folder.Path("log"));
    const std::string line(1000, 'x');
    for (int i = 0; i < 2300; ++i) {
        LogMessage(1, 0, "%s %d", line.c_str(), i);
    }
    EXPECT_LT(std::filesystem::file_size(Folder.Path("log")), (1U << 20) + 1);
    EXPECT_LT(std::filesystem::file_size(Folder.Path("log.1")), (1U << 20) + 1);
    EXPECT_THAT(ContentOf(Folder.Path("log")), HasSubstr("x 2299\n"));
}

TEST_F(Log, KeepsTheLastThousandLines) {
    for (int i = 0; i < 1500; ++i) {
        LogMessage(1, 0, "%d", i);
    }
    EXPECT_EQ(KeptLogLines().size(), 1000U);
    EXPECT_EQ(KeptLogLines().front().Text, "500");
}

TEST(PlatformServices, WhatIsNotThereIsNull) {
    EXPECT_EQ(LoadLibraryA("NoSuchLibraryAnywhere"), nullptr);
    EXPECT_EQ(GetProcAddress(nullptr, "StackTrace"), nullptr);
    EXPECT_EQ(GetProcAddress(LoadLibraryA("readstat"), "no_such_function"), nullptr);
}

TEST(ModuleStates, AreEnteredAndLeftInTurn) {
    ModuleState outer;
    ModuleState inner;
    const EnterModuleState entered(&outer);
    {
        const EnterModuleState deeper(&inner);
        EXPECT_EQ(CurrentModuleState(), &inner);
    }
    EXPECT_EQ(CurrentModuleState(), &outer);
}

}  // namespace
}  // namespace quillara
