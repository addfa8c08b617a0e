#include "workbench/command/ReviewPairs.h"

#include <algorithm>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

std::vector<short> AllOf(const VariableLists& lists) {
    std::vector<short> all = lists.Categorical;
    all.insert(all.end(), lists.Continuous.begin(), lists.Continuous.end());
    return all;
}

std::vector<short> ReviewVariables(const DataTable& table, const VariableLists& reviews,
                                   const std::vector<std::string>& names) {
    const std::vector<short> all = AllOf(reviews);
    std::vector<short> numbers;
    for (const std::string& name : names) {
        const auto number = static_cast<short>(table.IndexOf(name) + 1);
        if (std::ranges::find(all, number) == all.end()) {
            throw DataError("The variable " + Quoted(name) + " can't be in a 3D histogram: it is no review variable; " +
                            "name it in --review-categorical or --review-continuous.");
        }
        numbers.push_back(number);
    }
    return numbers;
}

}  // namespace

PairedLists NamedPairs(const DataTable& table, const VariableLists& reviews, const VariablePairs& names) {
    return {ReviewVariables(table, reviews, names.Horizontal), ReviewVariables(table, reviews, names.Vertical)};
}

AllPairs PairsOf(const VariableLists& reviews) {
    const std::vector<short> all = AllOf(reviews);
    AllPairs pairs;
    std::size_t room = AllPairs::Most;
    for (auto first = all.begin(); first != all.end(); ++first) {
        const auto behind = static_cast<std::size_t>(all.end() - first) - 1;
        pairs.Count += behind;
        const std::size_t taken = std::min(behind, room);
        if (taken > 0) {
            pairs.Lists.push_back({{*first}, {first + 1, first + 1 + static_cast<std::ptrdiff_t>(taken)}});
        }
        room -= taken;
    }
    return pairs;
}

}  // namespace quillara
