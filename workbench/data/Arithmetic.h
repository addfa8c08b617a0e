#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// An arithmetic expression in + - * / and brackets over numbers and variables. The variable of index i in the table is
/// written as ArithmeticName(i); numbers have a point.
struct ArithmeticText {
    std::string Expression;
    std::vector<std::size_t> Variables;  ///< those that occur; may repeat one
};

[[nodiscard]] std::string ArithmeticName(std::size_t variable);

/// Computes an arithmetic expression for the cases of a table, which must outlive it.
class Arithmetic {
  public:
    /// Throws UsageError when the expression is longer than can be computed.
    Arithmetic(const DataTable& table, const ArithmeticText& text);
    Arithmetic(Arithmetic&&) noexcept;
    Arithmetic& operator=(Arithmetic&&) noexcept;
    ~Arithmetic();

    /// The results of cases first, first + 1, ... (from 0), as many as `results` has room for. Where the expression
    /// divides by zero the result isn't finite.
    void Compute(std::size_t first, std::span<double> results);

  private:
    struct Engine;
    std::unique_ptr<Engine> Computing;
};

}  // namespace quillara
