#pragma once

#include "host/Commons.h"

namespace quillara {

class TableInUse;

/// The structures that an analysis shares with its document; null until it binds them.
struct BoundCommons {
    OrvTag* Table = nullptr;
    Orv88Tag* Names = nullptr;
    Wght_com* Weight = nullptr;

    /// Writes the fields that the host keeps up to date.
    void Fill(const TableInUse& table) const;
};

}  // namespace quillara
