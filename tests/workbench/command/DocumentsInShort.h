#pragma once

#include <nlohmann/json.hpp>
#include <string>

/// A document of JSON results in one line: "9060.1@0 sex: Female 3, Male 2, Missing 1" - button, sequence, step, the
/// last word of the title, then each row with its first cell. Of a chart its kind in place of the title, then its
/// categories with their counts, or the statistics that are drawn.
[[nodiscard]] std::string InShort(const nlohmann::json& document);

/// The text at a place of an axis; "?" when there is none.
[[nodiscard]] std::string LabelAt(const nlohmann::json& axis, const nlohmann::json& at);
