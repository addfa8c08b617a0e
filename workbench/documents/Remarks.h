#pragma once

#include <vector>

#include "workbench/data/Remark.h"

namespace quillara {

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
