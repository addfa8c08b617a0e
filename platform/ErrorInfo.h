#pragma once

#include <cstdint>

#include "platform/Automation.h"

/// An error object: what a failing call says of its failure. The texts are the caller's to free.
struct IErrorInfo : IUnknown {
    static constexpr GUID Id = GuidOf("{1CF2B120-547D-101B-8E65-08002B2BD119}");

    /// The interface whose member failed; GUID_NULL when it isn't known.
    virtual HRESULT GetGUID(GUID* interface) = 0;
    virtual HRESULT GetSource(BSTR* source) = 0;
    virtual HRESULT GetDescription(BSTR* description) = 0;
    virtual HRESULT GetHelpFile(BSTR* file) = 0;
    virtual HRESULT GetHelpContext(std::uint32_t* context) = 0;

  protected:
    ~IErrorInfo() = default;
};

/// An object that tells whether the members of an interface leave error objects.
struct ISupportErrorInfo : IUnknown {
    static constexpr GUID Id = GuidOf("{DF0B3D60-548F-101B-8E65-08002B2BD119}");

    /// S_OK when they do, else S_FALSE.
    virtual HRESULT InterfaceSupportsErrorInfo(const GUID& interface) = 0;

  protected:
    ~ISupportErrorInfo() = default;
};

/// Sets the error object of this thread, of which a reference is taken; null clears it. `reserved` is 0.
HRESULT SetErrorInfo(std::uint32_t reserved, IErrorInfo* error);
/// Takes the error object of this thread away, with its reference, or writes null and gives S_FALSE. `reserved` is 0.
HRESULT GetErrorInfo(std::uint32_t reserved, IErrorInfo** error);
