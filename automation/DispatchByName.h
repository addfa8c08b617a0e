#pragma once

#include "platform/Automation.h"
#include "platform/CountedPointer.h"

// Objects of the host by the names of their members.

/// Writes a property, and gives the status of that call. An object goes by reference where the property takes one.
HRESULT PutProperty(IDispatch* object, const char16_t* name, VARIANT value);

/// The object that a property holds; nothing when it can't be read or holds none.
[[nodiscard]] CountedPointer<IUnknown> GetObjectProperty(IDispatch* object, const char16_t* name);

/// Calls a method that has no arguments.
HRESULT CallMethod(IDispatch* object, const char16_t* name);
