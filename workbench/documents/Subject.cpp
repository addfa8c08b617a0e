#include "workbench/documents/Subject.h"

#include <algorithm>
#include <array>

namespace quillara {
namespace {

struct WeightTexts {
    WeightUse Use;
    std::string_view Word;
    std::string_view Note;
};

constexpr std::array<WeightTexts, 4> TextsOfWeights{{
    {WeightUse::None, "", ""},
    {WeightUse::Exact, "exact", ""},
    {WeightUse::Rounded, "rounded", " (weights rounded)"},
    {WeightUse::Unused, "unused", " (unweighted)"},
}};

const WeightTexts& TextsOf(WeightUse use) {
    return *std::ranges::find(TextsOfWeights, use, &WeightTexts::Use);
}

}  // namespace

std::string Subject::Name() const {
    const ShownVariable* variable = OnlyVariable();
    std::string name = variable == nullptr ? "" : variable->Name;
    for (const std::string& by : By) {
        name += (name.empty() ? "" : " by ") + by;
    }
    return Aspect.empty() ? name : name + " " + Aspect;
}

std::string_view Subject::WeightNote() const {
    return TextsOf(Weights).Note;
}

std::string Subject::Noted(std::string title) const {
    const std::string_view note = WeightNote();
    return title.ends_with(note) ? title : title.append(note);
}

std::string_view Subject::WeightWord() const {
    return TextsOf(Weights).Word;
}

}  // namespace quillara
