#pragma once

namespace quillara {

/// Sees to it that there is an application object to paint with: makes one without a screen when the program has none.
/// Throws std::logic_error when the program has one without fonts and pictures.
void EnsureApplication();

}  // namespace quillara
