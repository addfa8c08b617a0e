#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "platform/CountedPointer.h"
#include "workbench/documents/ResultDocument.h"

namespace quillara {

class TableInUse;

/// Which cases are analysed before the first step, and their weights: equal where these are the same, whatever formula
/// or row has chosen them.
struct CasesInForce {
    int Table = 0;  ///< how many others had been opened
    std::size_t Selection = 0;  ///< its mark
    std::optional<std::size_t> Weight{};

    [[nodiscard]] friend bool operator==(const CasesInForce&, const CasesInForce&) = default;
};

[[nodiscard]] CasesInForce CasesInForceOf(const TableInUse& data);

/// What each result that follows the steps has been made of.
class ResultBases {
  public:
    void Note(const ResultDocument& document, const CasesInForce& base) { Known[&document] = base; }
    void Forget(const ResultDocument& document) { Known.erase(&document); }
    /// Whether one of these documents has been made of other cases or weights of the same table.
    [[nodiscard]] bool HasOther(const std::vector<CountedPointer<ResultDocument>>& documents,
                                const CasesInForce& now) const;

  private:
    std::map<const ResultDocument*, CasesInForce> Known;
};

}  // namespace quillara
