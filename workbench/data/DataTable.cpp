#include "workbench/data/DataTable.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "platform/OrderedBits.h"
#include "workbench/data/ColumnBuilder.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/Suggestion.h"
#include "workbench/data/TextColumnBuilder.h"

namespace quillara {
namespace {

/// Results have row names as wide as the case names; narrower ones would cut what they show.
constexpr std::size_t RowNameWidth = 12;

/// An analysis copies no longer name; names wider than the field travel as keys.
constexpr std::size_t MostCaseNameWidth = 218;

constexpr std::size_t MostVariables = 32766;
constexpr std::size_t MostCases = 2147483646;

/// The texts of exactly this value; null when it has none.
const ValueTexts* TextsOf(const std::map<double, ValueTexts>& labels, double value) {
    // The order of a map takes NaN for equal to every key.
    const auto found = std::isnan(value) ? labels.end() : labels.find(value);
    return found == labels.end() ? nullptr : &found->second;
}

const std::string* UnlessEmpty(const std::string& text) {
    return text.empty() ? nullptr : &text;
}

}  // namespace

const std::string* Variable::LabelOf(double value) const {
    if (const ValueTexts* texts = TextsOf(Labels, value); texts != nullptr && !texts->Label.empty()) {
        return &texts->Label;
    }
    const bool isPlace = value >= 1 && value <= static_cast<double>(Texts.size()) && value == std::floor(value);
    return Kind == ValueKind::Text && isPlace ? UnlessEmpty(Texts[static_cast<std::size_t>(value) - 1]) : nullptr;
}

const std::string* Variable::DescriptionOf(double value) const {
    const ValueTexts* texts = TextsOf(Labels, value);
    return texts == nullptr ? nullptr : UnlessEmpty(texts->Description);
}

bool Variable::IsMissing(double value) const {
    return NearlyEqual(value, MissingCode);
}

bool Variable::HasLabels() const {
    return Kind == ValueKind::Text ||
           std::ranges::any_of(Labels, [](const auto& entry) { return !entry.second.Label.empty(); });
}

std::optional<std::size_t> DataTable::Find(std::string_view name) const {
    const auto found = std::ranges::find(Variables, name, &Variable::Name);
    if (found == Variables.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - Variables.begin());
}

std::size_t DataTable::IndexOf(std::string_view name) const {
    if (const std::optional<std::size_t> index = Find(name)) {
        return *index;
    }
    std::vector<std::string> names;
    std::ranges::transform(Variables, std::back_inserter(names), &Variable::Name);
    throw DataError("The data have no variable named " + Quoted(name) + EndWithSuggestion(name, names));
}

std::size_t WeightNamed(const DataTable& table, const std::string& name) {
    const std::size_t index = table.IndexOf(name);
    if (table.Variables[index].Kind == ValueKind::Text) {
        throw DataError("The variable " + Quoted(name) + " can't be the weight: it holds texts.");
    }
    return index;
}

std::size_t DataTable::CaseNameWidth() const {
    if (CaseNames.empty()) {
        return 0;
    }
    std::size_t width = RowNameWidth;
    for (const std::string& name : CaseNames) {
        width = std::max(width, name.size());
    }
    return std::min(width, MostCaseNameWidth);
}

void EncodeNumbers(Variable& variable, ColumnBuilder&& values) {
    variable.MissingCode = values.EncodeMissing();
    variable.Values = values.Finish();
}

void EncodeNumbers(Variable& variable, std::vector<double> values) {
    EncodeNumbers(variable, ColumnBuilder(std::move(values)));
}

void EncodeTexts(Variable& variable, const std::vector<std::optional<std::string>>& texts) {
    TextColumnBuilder column;
    column.Reserve(texts.size());
    for (const std::optional<std::string>& text : texts) {
        text ? column.Append(*text) : column.AppendMissing();
    }
    column.Finish(variable);
}

void CheckSize(std::size_t variables, std::size_t cases) {
    if (variables > MostVariables) {
        throw DataError("The data have " + std::to_string(variables) + " variables; an analysis takes at most " +
                        std::to_string(MostVariables) + ".");
    }
    if (cases > MostCases) {
        throw DataError("The data have " + std::to_string(cases) + " cases; an analysis takes at most " +
                        std::to_string(MostCases) + ".");
    }
}

}  // namespace quillara
