#pragma once

namespace quillara {

/// How result windows show their documents; the user's choice, for all of them.
struct ViewOptions {
    bool HasCountBars = true;  ///< bars behind the counts of tables
    bool HasMotion = true;  ///< bars of charts slide to their new heights; not where the system wants no motion
};

}  // namespace quillara
