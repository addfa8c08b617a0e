#pragma once

#include <string>
#include <string_view>

namespace quillara {

/// The ranges that a list of upper boundaries gives: "x<=2, 2<x<=2.5, 2.5<x", with the numbers as they are typed,
/// but decimal commas as points, and told so; or what is wrong with the list: "after 2.5: 2 is not greater". Empty for
/// an empty list. Of a long list the middle is left out.
[[nodiscard]] std::string BoundaryPreview(std::string_view typed);

}  // namespace quillara
