#include "workbench/views/JsonText.h"

#include <cmath>
#include <cstdint>

#include "workbench/numbers/ExactNumbers.h"
#include "workbench/views/ShownText.h"

namespace quillara {

Json TextValue(const std::string& text) {
    return ValidText(text);
}

Json NumberValue(double number) {
    if (!std::isfinite(number)) {
        return nullptr;
    }
    // Whole numbers stand without a point; a double would get one.
    return IsExactWhole(number) ? Json(static_cast<std::int64_t>(number)) : Json(number);
}

std::string OneLine(const Json& value) {
    if (!value.is_structured()) {
        return UnsteeringText(value.dump());
    }
    std::string members;
    for (const auto& [key, member] : value.items()) {
        members += members.empty() ? "" : ", ";
        members += value.is_object() ? Json(key).dump() + ": " : "";
        members += OneLine(member);
    }
    return value.is_object() ? '{' + members + '}' : '[' + members + ']';
}

std::string Member(const std::string& key, const std::string& value) {
    return ",\n   \"" + key + "\": " + value;
}

}  // namespace quillara
