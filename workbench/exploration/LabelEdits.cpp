#include "workbench/exploration/LabelEdits.h"

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/exploration/KindChange.h"

namespace quillara {
namespace {

ValueTexts PresentTexts(const Variable& variable, double value) {
    const auto found = variable.Labels.find(value);
    return found == variable.Labels.end() ? ValueTexts{} : found->second;
}

bool AreSame(const ValueTexts& left, const ValueTexts& right) {
    return left.Label == right.Label && left.Description == right.Description;
}

}  // namespace

void LabelEdits::SetLabel(const DataTable& table, std::size_t variable, const std::string& label) {
    Variables[variable].Label =
        label == table.Variables.at(variable).LongName ? std::nullopt : std::optional<std::string>(label);
    Tidy(variable);
}

void LabelEdits::SetTexts(const DataTable& table, std::size_t variable, double value, const ValueTexts& texts) {
    if (AreSame(texts, PresentTexts(table.Variables.at(variable), value))) {
        Variables[variable].Values.erase(value);
    } else {
        Variables[variable].Values[value] = texts;
    }
    Tidy(variable);
}

void LabelEdits::Tidy(std::size_t variable) {
    const auto found = Variables.find(variable);
    if (!found->second.Label && found->second.Values.empty() && !found->second.Kind) {
        Variables.erase(found);
    }
}

void LabelEdits::SetKind(const DataTable& table, std::size_t variable, ValueKind kind) {
    const Variable& present = table.Variables.at(variable);
    if (kind == ValueKind::Text && table.Weight == variable) {
        throw DataError("The variable " + Quoted(present.Name) + " weights the cases and stays a number.");
    }
    static_cast<void>(OfKind(present, kind));
    Variables[variable].Kind = kind == present.Kind ? std::nullopt : std::optional(kind);
    Tidy(variable);
}

ValueKind LabelEdits::KindOf(const DataTable& table, std::size_t variable) const {
    const auto found = Variables.find(variable);
    return found != Variables.end() && found->second.Kind ? *found->second.Kind : table.Variables.at(variable).Kind;
}

const std::string& LabelEdits::LabelOf(const DataTable& table, std::size_t variable) const {
    const auto found = Variables.find(variable);
    const bool isEdited = found != Variables.end() && found->second.Label;
    return isEdited ? *found->second.Label : table.Variables.at(variable).LongName;
}

ValueTexts LabelEdits::TextsOf(const DataTable& table, std::size_t variable, double value) const {
    if (const auto found = Variables.find(variable); found != Variables.end()) {
        if (const auto texts = found->second.Values.find(value); texts != found->second.Values.end()) {
            return texts->second;
        }
    }
    return PresentTexts(table.Variables.at(variable), value);
}

std::shared_ptr<const DataTable> LabelEdits::Apply(const DataTable& table) const {
    auto edited = std::make_shared<DataTable>(table);
    for (const auto& [number, edits] : Variables) {
        Variable& variable = edited->Variables.at(number);
        variable.LongName = edits.Label.value_or(variable.LongName);
        for (const auto& [value, texts] : edits.Values) {
            if (texts.Label.empty() && texts.Description.empty()) {
                variable.Labels.erase(value);
            } else {
                variable.Labels[value] = texts;
            }
        }
        if (edits.Kind) {
            variable = OfKind(variable, *edits.Kind);
        }
    }
    return edited;
}

}  // namespace quillara
