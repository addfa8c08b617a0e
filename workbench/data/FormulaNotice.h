#pragma once

#include <string>

namespace quillara {

/// Something about a formula that its writer should know, though it was read.
struct FormulaNotice {
    std::string Code;  ///< for programs: small letters and hyphens
    std::string Text;  ///< one line, a sentence
    std::string Advice{};  ///< what to do about it; one line, a sentence; may be empty
};

}  // namespace quillara
