#pragma once

#include <string>
#include <vector>

namespace quillara {

/// Something that the host noticed about an analysis and that its user should know.
struct Remark {
    std::string Code;  ///< for programs, the same in every version: small letters and hyphens ("weight-fractions")
    std::string Text;  ///< what it is, with its numbers; one line, a sentence
    std::string Advice{};  ///< what to do about it; one line, a sentence; may be empty

    /// Both on one line, for people.
    [[nodiscard]] std::string Line() const { return Advice.empty() ? Text : Text + ' ' + Advice; }
    friend bool operator==(const Remark&, const Remark&) = default;
};

/// Remarks in the order in which they were made, each once.
class Remarks {
  public:
    /// Whether it is a new one.
    bool Add(Remark remark);
    [[nodiscard]] const std::vector<Remark>& All() const { return Made; }

  private:
    std::vector<Remark> Made;
};

}  // namespace quillara
