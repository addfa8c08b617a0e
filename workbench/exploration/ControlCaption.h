#pragma once

#include <string>
#include <string_view>

namespace quillara {

/// The caption of a control, apart from the mark that it may begin with.
struct ControlCaption {
    std::string Mark;  ///< "!372", "h", "j", "e" or "`": the icon that a host shows; empty: none
    std::string Text;  ///< with & before the letter that is the access key, && for the sign itself

    /// The text without access key, for people and scripts.
    [[nodiscard]] std::string Plain() const;
};

/// Takes a caption of a resource apart.
[[nodiscard]] ControlCaption CaptionOf(std::string_view caption);

}  // namespace quillara
