#include "workbench/data/CaseSelection.h"

#include <algorithm>
#include <iterator>

#include "workbench/data/FormulaReader.h"

namespace quillara {
namespace {

/// Cases that are outside for a missing value alone, though one side of an `or` holds.
void NoticeLeftOut(const Formula& formula, const std::vector<double>& answers, std::vector<Remark>& notices) {
    const std::vector<double> known = ValuesOf(*formula.Whole.Term, answers.size(), true);
    std::size_t leftOut = 0;
    for (std::size_t i = 0; i < answers.size(); ++i) {
        leftOut += known[i] == 1 && answers[i] != 1 ? 1 : 0;
    }
    if (leftOut > 0) {
        const std::string cases = leftOut == 1 ? "1 case isn't" : std::to_string(leftOut) + " cases aren't";
        notices.push_back({"or-with-missing",
                           cases + " selected for a missing value, though another side of an or of the formula holds.",
                           "Write missing(VAR) or if(missing(VAR), ...) for what is to be selected without it."});
    }
}

}  // namespace

std::vector<CaseResult> SelectCases(const DataTable& table, std::string_view formula, std::vector<Remark>* notices) {
    Formula read = ReadFormula(table, {formula, SelectionRole});
    RequireCondition({table, {formula, SelectionRole}, read.Notices}, read.Whole);
    const std::vector<double> answers = ValuesOf(*read.Whole.Term, static_cast<std::size_t>(table.Cases));
    if (notices != nullptr) {
        std::ranges::move(read.Notices, std::back_inserter(*notices));
        if (read.JoinsByOr) {
            NoticeLeftOut(read, answers, *notices);
        }
    }
    std::vector<CaseResult> results(answers.size());
    std::ranges::transform(answers, results.begin(),
                           [](double answer) { return answer == 1 ? CaseResult::Use : CaseResult::Skip; });
    return results;
}

}  // namespace quillara
