#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillara {

/// Text fields of one width in a row; an array that isn't there holds empty ones.
struct FieldArray {
    const char* Start;
    int Width;  ///< bytes of a field

    [[nodiscard]] std::string_view Field(std::size_t index) const {
        if (Start == nullptr || Width <= 0) {
            return {};
        }
        const auto width = static_cast<std::size_t>(Width);
        return {Start + index * width, width};
    }
};

/// A field's text, whole: without what a cut has broken in a full field, and with its long texts in place of keys.
[[nodiscard]] std::string TextOfField(std::string_view field);

}  // namespace quillara
