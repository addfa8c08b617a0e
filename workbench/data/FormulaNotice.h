#pragma once

#include "workbench/data/Remark.h"

namespace quillara {

/// Something about a formula that its writer should know, though it was read.
using FormulaNotice = Remark;

}  // namespace quillara
