#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace quillara {

/// Something that the host noticed and that its user should know, though the work went on: about data, a formula, or an
/// analysis.
struct Remark {
    std::string Code;  ///< for programs, the same in every version: small letters and hyphens ("weight-fractions")
    std::string Text;  ///< what it is, with its numbers; one line, a sentence
    std::string Advice{};  ///< what to do about it; one line, a sentence; may be empty
    std::optional<std::size_t> Case{};  ///< one that it is about, from 0: without it there is nothing to remark

    /// Both on one line, for people.
    [[nodiscard]] std::string Line() const { return Advice.empty() ? Text : Text + ' ' + Advice; }
    friend bool operator==(const Remark&, const Remark&) = default;
};

}  // namespace quillara
