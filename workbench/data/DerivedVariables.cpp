#include "workbench/data/DerivedVariables.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

#include "workbench/data/ColumnBuilder.h"
#include "workbench/data/Errors.h"
#include "workbench/data/FormulaReader.h"
#include "workbench/data/FormulaTexts.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

void CheckName(const DataTable& table, const std::string& name) {
    if (name.empty()) {
        throw UsageError("A derived variable has no name; write NAME=FORMULA.");
    }
    if (table.Find(name)) {
        throw DataError("The data have a variable " + Quoted(name) + " already; a derived one takes another name.");
    }
    CheckSize(table.Variables.size() + 1, static_cast<std::size_t>(table.Cases));
}

/// The texts that a case has, by their place from 1; the empty one is none.
std::vector<bool> UsedTexts(const std::vector<std::string>& texts, const std::vector<double>& places) {
    std::vector<bool> isUsed(texts.size() + 1);
    for (const double place : places) {
        isUsed[std::isnan(place) ? 0 : static_cast<std::size_t>(place)] = true;
    }
    isUsed[0] = false;
    for (std::size_t place = 1; place < isUsed.size(); ++place) {
        isUsed[place] = isUsed[place] && !texts[place - 1].empty();
    }
    return isUsed;
}

/// Numbers the texts that cases have in byte order, as text variables do.
void GiveTexts(Variable& variable, const std::vector<std::string>& texts, std::vector<double> places) {
    const std::vector<bool> isUsed = UsedTexts(texts, places);
    std::vector<std::size_t> order;
    for (std::size_t place = 1; place < isUsed.size(); ++place) {
        if (isUsed[place]) {
            order.push_back(place);
        }
    }
    std::ranges::sort(order, {}, [&](std::size_t place) -> const std::string& { return texts[place - 1]; });
    std::vector<double> newPlaces(isUsed.size(), std::nan(""));
    for (const std::size_t place : order) {
        variable.Texts.push_back(texts[place - 1]);
        newPlaces[place] = static_cast<double>(variable.Texts.size());
    }
    for (double& place : places) {
        place = std::isnan(place) ? place : newPlaces[static_cast<std::size_t>(place)];
    }
    EncodeNumbers(variable, std::move(places));
}

Variable Evaluated(const FormulaPart& part, std::size_t cases) {
    Variable variable;
    std::vector<double> values = ValuesOf(*part.Term, cases);
    if (part.Role == PartRole::Condition) {
        variable.Labels = {{0, {"no", ""}}, {1, {"yes", ""}}};
    } else {
        variable.Kind = part.Kind;
    }
    if (part.IsText()) {
        GiveTexts(variable, *part.Texts, std::move(values));
        return variable;
    }
    if (part.Labels != nullptr) {
        variable.Labels = *part.Labels;
    }
    EncodeNumbers(variable, std::move(values));
    return variable;
}

}  // namespace

void Derive(DataTable& table, const DerivedVariable& derived, std::vector<Remark>& notices) {
    CheckName(table, derived.Name);
    const FormulaText text{derived.Formula, "The formula of " + Quoted(derived.Name)};
    Formula formula = ReadFormula(table, text);
    if (formula.Whole.Role == PartRole::Nothing) {
        RequireValue({table, text, formula.Notices}, formula.Whole);
    }
    Variable variable = Evaluated(AsText(formula.Whole), static_cast<std::size_t>(table.Cases));
    variable.Name = derived.Name;
    variable.LongName = derived.Formula;
    std::ranges::move(formula.Notices, std::back_inserter(notices));
    table.Variables.push_back(std::move(variable));
}

}  // namespace quillara
