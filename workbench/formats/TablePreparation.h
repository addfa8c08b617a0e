#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/DerivedVariables.h"
#include "workbench/data/Remark.h"
#include "workbench/data/ValidCodes.h"

namespace quillara {

/// What is done with a table before it is used, in this order.
struct TablePreparation {
    std::vector<ValidCodes> Valid{};
    std::optional<std::string> DictionaryFile{};
    std::vector<DerivedVariable> Derived{};
};

/// Prepares a table that has been read, and gives what is noticed. `maxMemory` is as in ReadOptions. Throws as
/// TakeAsValid, ApplyDictionary and Derive do.
std::vector<Remark> PrepareTable(DataTable& table, const TablePreparation& preparation,
                                 std::optional<std::size_t> maxMemory = {});

}  // namespace quillara
