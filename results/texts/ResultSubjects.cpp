#include "results/texts/ResultSubjects.h"

#include <new>
#include <string>
#include <utility>

#include "results/texts/ResultTexts.h"

using namespace drilldown;

namespace {

SubjectVariable WithNames(CDrillDown& analysis, const Drill& record, bool hasMissing) {
    SubjectVariable variable{record.VarNo, {}, hasMissing};
    variable.Categories.reserve(record.CategorySet.size());
    variable.Bounds.reserve(record.CategorySet.size());
    for (const Categories& category : record.CategorySet) {
        std::string name = CategoryName(record, category);
        analysis.ExpandPossible8CharHash(name);
        variable.Categories.push_back(std::move(name));
        variable.Bounds.push_back({category.Lower, category.Upper});
    }
    return variable;
}

}  // namespace

template <typename Make>
void SubjectWriter::Add(Make make) noexcept {
    try {
        Subject.Variables.push_back(make());
    } catch (const std::bad_alloc&) {
        IsComplete = false;
    }
}

void SubjectWriter::AddVariable(std::int16_t var) noexcept {
    Add([&] { return SubjectVariable{var, {}, false}; });
}

void SubjectWriter::AddCategories(const Drill& record, bool hasMissing) noexcept {
    Add([&] { return WithNames(Analysis, record, hasMissing); });
}

ResultSubject SubjectWriter::Take() noexcept {
    if (!IsComplete) {
        Subject.Variables.clear();
    }
    return std::exchange(Subject, {});
}

ResultSubject SubjectOf(CDrillDown& analysis, ResultSide side, const Drill& record, bool hasMissing) noexcept {
    SubjectWriter writer(analysis, side);
    writer.AddCategories(record, hasMissing);
    return writer.Take();
}
