#pragma once

#include <cstdint>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillara {

/// Gives long texts keys of 8 bytes that fixed fields can hold, and turns the keys back. LongTexts.h offers the one
/// register of the program. Thread-safe.
class LongTextRegister {
  public:
    using Hash = std::uint64_t (*)(std::string_view);

    LongTextRegister();
    /// `hash` chooses the first key that is tried for a text; the keys behind it are tried when it is taken.
    explicit LongTextRegister(Hash hash);

    /// The key of a text of more than 8 bytes; a shorter text, unchanged.
    [[nodiscard]] std::string KeyOf(std::string_view text);
    /// The text of a key; null when it is none.
    [[nodiscard]] const std::string* Find(std::string_view key) const;
    /// A text with every key in it, and every key in what those stand for, expanded. Keys nested deeper than any
    /// real text, or that would make it grow without end, stay as they are.
    [[nodiscard]] std::string Expand(std::string_view text) const;

  private:
    void ExpandInto(std::string& result, std::string_view text, int depth) const;

    Hash FirstKey;
    mutable std::shared_mutex Guard;
    std::unordered_map<std::string, std::string> Texts;  ///< by key; entries stay where they are
    std::unordered_map<std::string_view, std::string_view> Keys;  ///< by text; both views point into Texts
};

}  // namespace quillara
