#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// One way to go on with a formula.
struct FormulaOffer {
    std::string Text;  ///< what takes the place of what has been typed of it: a name, in brackets where it needs them,
                       ///< or a label in quotes
    std::string Hint;  ///< for people: the label of a variable
};

/// What a formula can go on with at a place.
struct FormulaOffers {
    std::size_t From = 0;  ///< the bytes from here to the place are what has been typed of it
    std::vector<FormulaOffer> Offers;
};

/// A name as a formula writes it: in brackets where it needs them.
[[nodiscard]] std::string FormulaName(const std::string& name);

/// Variables whose name, or a word of whose label, begins with the word before a place, those by name first; within
/// quotes, and behind the comparison with a variable, the labels of that variable. Letters of either case are the same.
/// At most so many.
[[nodiscard]] FormulaOffers OffersAt(const DataTable& table, std::string_view formula, std::size_t place,
                                     std::size_t most = 50);

}  // namespace quillara
