#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace quillara {

using Json = nlohmann::ordered_json;

/// A text in well-formed UTF-8.
[[nodiscard]] Json TextValue(const std::string& text);

/// A number as it reads back as the same double; null when it isn't finite.
[[nodiscard]] Json NumberValue(double number);

/// A value on one line, with a blank behind each comma and colon.
[[nodiscard]] std::string OneLine(const Json& value);

/// A member of a document, on a line of its own, behind another.
[[nodiscard]] std::string Member(const std::string& key, const std::string& value);

/// An array of what `valueOf` makes of each element, on one line when written.
Json Array(const auto& elements, auto valueOf) {
    Json array = Json::array();
    for (const auto& element : elements) {
        array.push_back(valueOf(element));
    }
    return array;
}

/// A list that begins a line for each of its elements.
std::string Stacked(const auto& elements, const std::string& lineStart, auto textOf) {
    std::string text = "[";
    for (const auto& element : elements) {
        text += &element == &*elements.begin() ? "\n" : ",\n";
        text += lineStart + textOf(element);
    }
    return text + ']';
}

}  // namespace quillara
