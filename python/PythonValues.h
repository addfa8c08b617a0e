#pragma once

#include <pybind11/pybind11.h>

#include "platform/OwnedVariant.h"

// Values of automation and of Python: None, bool, int, float, str, objects, and lists of them.

/// Throws pybind11::type_error for what automation has no value for.
[[nodiscard]] OwnedVariant VariantOf(pybind11::handle value);
/// Takes over what a value owns.
[[nodiscard]] pybind11::object ObjectOf(OwnedVariant owned);
