#pragma once

#include <cstddef>
#include <set>
#include <span>
#include <variant>
#include <vector>

#include "host/CaseBlocks.h"
#include "workbench/data/Arithmetic.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// The values of a variable as they are, by its index in the table.
struct ColumnOperand {
    std::size_t Variable;
};

/// One side of a comparison: the same number for every case, a column, or arithmetic.
using Operand = std::variant<double, ColumnOperand, Arithmetic>;

enum class Relation { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

struct Comparison {
    Relation Between;
    Operand Left;
    Operand Right;
};

/// Whether the value is one of those that bear a label, or isn't.
struct LabelTest {
    std::size_t Variable;
    std::vector<double> Bearers;  ///< rising
    bool Wanted;  ///< the answer for a bearer
};

struct MissingTest {
    std::size_t Variable;
};

enum class Connective { Not, And, Or };

using SelectionStep = std::variant<Comparison, LabelTest, MissingTest, Connective>;

/// A case selection that has been read: steps in postfix order, which leave one answer.
struct SelectionProgram {
    std::vector<SelectionStep> Steps;
    std::set<std::size_t> Required;  ///< variables that must not be missing
};

/// Runs the program for every case of the table it was read for.
[[nodiscard]] std::vector<CaseResult> RunSelection(const DataTable& table, SelectionProgram& program);

}  // namespace quillara
