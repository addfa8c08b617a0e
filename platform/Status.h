#pragma once

#include <cstdint>

/// Status of a call: negative values are failures.
using HRESULT = std::int32_t;

/// A status by the digits that it is known by.
consteval HRESULT StatusOf(std::uint32_t code) {
    return static_cast<HRESULT>(code);
}

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = StatusOf(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = StatusOf(0x80004002);
inline constexpr HRESULT E_POINTER = StatusOf(0x80004003);
inline constexpr HRESULT E_FAIL = StatusOf(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = StatusOf(0x8000FFFF);
inline constexpr HRESULT DISP_E_MEMBERNOTFOUND = StatusOf(0x80020003);
inline constexpr HRESULT DISP_E_PARAMNOTFOUND = StatusOf(0x80020004);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = StatusOf(0x80020005);
inline constexpr HRESULT DISP_E_UNKNOWNNAME = StatusOf(0x80020006);
inline constexpr HRESULT DISP_E_NONAMEDARGS = StatusOf(0x80020007);
inline constexpr HRESULT DISP_E_BADVARTYPE = StatusOf(0x80020008);
inline constexpr HRESULT DISP_E_EXCEPTION = StatusOf(0x80020009);
inline constexpr HRESULT DISP_E_OVERFLOW = StatusOf(0x8002000A);
inline constexpr HRESULT DISP_E_BADINDEX = StatusOf(0x8002000B);
inline constexpr HRESULT DISP_E_BADPARAMCOUNT = StatusOf(0x8002000E);
inline constexpr HRESULT TYPE_E_ELEMENTNOTFOUND = StatusOf(0x8002802B);
inline constexpr HRESULT CONNECT_E_NOCONNECTION = StatusOf(0x80040200);
inline constexpr HRESULT CO_E_OBJNOTCONNECTED = StatusOf(0x800401FD);  ///< the object behind the reference has closed
inline constexpr HRESULT RPC_E_SERVERCALL_RETRYLATER = StatusOf(0x8001010A);  ///< busy with another call
inline constexpr HRESULT E_ACCESSDENIED = StatusOf(0x80070005);
inline constexpr HRESULT E_OUTOFMEMORY = StatusOf(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = StatusOf(0x80070057);

[[nodiscard]] constexpr bool Succeeded(HRESULT status) noexcept {
    return status >= 0;
}
