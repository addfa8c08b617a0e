#pragma once

#include <memory>
#include <span>

#include "workbench/data/DataTable.h"

/// Gives a variable numbers that nobody changes while their owner lives. They are used where they stand and the owner
/// is kept; if some are missing (NaN), which a table marks among its own values, they are copied.
void UseNumbers(quillara::Variable& variable, std::span<const double> numbers, std::shared_ptr<const void> owner);
