#pragma once

#include <QString>

#include "workbench/exploration/TableReading.h"

namespace quillara {

class LongWork;

/// Reads a data file while the window lives and the user can cancel.
[[nodiscard]] TableReading::Outcome ReadWhileAlive(const QString& path, LongWork& work);

}  // namespace quillara
