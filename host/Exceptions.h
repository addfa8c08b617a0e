#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

#include "platform/Automation.h"
#include "platform/CountedPointer.h"
#include "platform/ErrorInfo.h"

// The exceptions that cross between the module and its host. Those of the framework are made on the heap and thrown by
// their addresses; who catches one deletes it with Delete.

/// A failure that the framework reports.
class CException {
  public:
    CException() = default;
    CException(const CException&) = delete;
    CException& operator=(const CException&) = delete;

    /// Writes what failed, cut to `size` bytes with a zero at its end; false, and an empty text, when there is no text.
    virtual bool GetErrorMessage(char* text, unsigned size) const;
    /// Ends the life of the exception.
    void Delete() { delete this; }

  protected:
    virtual ~CException();
};

/// A failure of a call between objects, by its status.
class COleException : public CException {
  public:
    explicit COleException(HRESULT status) : m_sc(status) {}
    /// The standard message of the status.
    bool GetErrorMessage(char* text, unsigned size) const override;
    /// The status that stands for an exception: that of a COleException or a COleDispatchException, else E_UNEXPECTED.
    [[nodiscard]] static HRESULT Process(const CException* exception);

    HRESULT m_sc;

  protected:
    ~COleException() override;
};

/// A failure that an object reports to the script that called it.
class COleDispatchException : public CException {
  public:
    COleDispatchException(std::string description, std::uint16_t code, HRESULT status = E_FAIL)
        : m_strDescription(std::move(description)), m_wCode(code), m_scError(status) {}
    bool GetErrorMessage(char* text, unsigned size) const override;
    /// Fills an exception record from any exception; texts are the caller's to free.
    static void Process(EXCEPINFO* record, const CException* exception);

    std::string m_strDescription;
    std::uint16_t m_wCode;
    HRESULT m_scError;

  protected:
    ~COleDispatchException() override;
};

/// A failing status as the language throws it, with the error object that the failing call left.
class _com_error {
  public:
    explicit _com_error(HRESULT status, CountedPointer<IErrorInfo> error = {});
    _com_error(const _com_error&);
    _com_error& operator=(const _com_error&) = delete;
    virtual ~_com_error();

    [[nodiscard]] HRESULT Error() const noexcept { return Status; }
    /// The error object with a reference for the caller; null: none.
    [[nodiscard]] IErrorInfo* ErrorInfo() const { return CountedPointer(Object).Detach(); }
    /// What the error object says; empty without one.
    [[nodiscard]] std::string Description() const;
    /// The standard message of the status: the system's, without its line end; "IDispatch error #%d" from 0x80040200 to
    /// 0x8004FFFF with the low word less 512, but for the low word 512; else "Unknown error 0x%0lX".
    [[nodiscard]] std::string ErrorMessage() const;

  private:
    HRESULT Status;
    CountedPointer<IErrorInfo> Object;
};

/// Where a structured exception happened; made by the host.
struct FaultPointers {
    void* Record = nullptr;
    void* Context = nullptr;
};

/// A structured exception of the processor or the system, translated by the host.
class win32_exception : public std::exception {
  public:
    win32_exception(std::string what, std::uint32_t code, FaultPointers pointers = {});
    ~win32_exception() override;

    [[nodiscard]] const char* what() const noexcept override { return What.c_str(); }
    [[nodiscard]] std::uint32_t Code() const noexcept { return Number; }
    /// Both empty when the exception was made otherwise.
    [[nodiscard]] const FaultPointers& Pointers() const noexcept { return Where; }
    [[nodiscard]] bool HasPointers() const noexcept { return Where.Record != nullptr || Where.Context != nullptr; }

  private:
    std::string What;
    std::uint32_t Number;
    FaultPointers Where;
};
