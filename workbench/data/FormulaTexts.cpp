#include "workbench/data/FormulaTexts.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <unordered_map>

#include "workbench/data/LetterCase.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/Suggestion.h"

namespace quillara {
namespace {

using TextList = std::vector<std::string>;

bool IsPlainAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char letter) { return (static_cast<unsigned char>(letter) & 0x80U) == 0; });
}

/// Compares texts with one without regard to the case of letters.
class LooseMatch {
  public:
    explicit LooseMatch(std::string_view text)
        : Text(text), IsPlain(IsPlainAscii(text)), Folded(WithoutLetterCase(text)) {}

    bool operator()(std::string_view other) const {
        return EqualButForLetterCase(Text, other) ||
               ((!IsPlain || !IsPlainAscii(other)) && WithoutLetterCase(other) == Folded);
    }

  private:
    std::string_view Text;
    bool IsPlain;
    std::wstring Folded;
};

/// Calls `visit(value, label)` for each value that has a label or text.
template <class Visit>
void VisitLabels(const FormulaPart& part, Visit visit) {
    const auto labelOf = [&](double value) {
        const auto* labels = part.Labels.get();
        const auto found = labels == nullptr ? std::map<double, ValueTexts>::const_iterator() : labels->find(value);
        return labels == nullptr || found == labels->end() ? std::string_view() : std::string_view(found->second.Label);
    };
    if (part.Texts != nullptr) {
        for (std::size_t place = 1; place <= part.Texts->size(); ++place) {
            const std::string_view label = labelOf(static_cast<double>(place));
            visit(static_cast<double>(place), label.empty() ? std::string_view((*part.Texts)[place - 1]) : label);
        }
    } else if (part.Labels != nullptr) {
        for (const auto& [value, texts] : *part.Labels) {
            visit(value, std::string_view(texts.Label));
        }
    }
}

template <class Matches>
std::vector<double> BearersThat(const FormulaPart& part, std::set<std::string>& found, Matches matches) {
    std::vector<double> bearers;
    VisitLabels(part, [&](double value, std::string_view label) {
        if (!label.empty() && matches(label)) {
            bearers.push_back(value);
            found.emplace(label);
        }
    });
    return bearers;
}

std::string NameOf(const FormulaPart& part) {
    return part.Plain == nullptr ? "the value compared" : Quoted(part.Plain->Name);
}

/// The nearest of its texts; where none is near, all of a few.
std::string WhatMayBeMeant(const FormulaPart& part, const std::string& text) {
    constexpr std::size_t mostNamed = 3;
    constexpr std::size_t few = 10;
    constexpr std::size_t mostCompared = 10000;
    TextList known;
    VisitLabels(part, [&known](double, std::string_view label) {
        if (!label.empty() && known.size() < mostCompared) {
            known.emplace_back(label);
        }
    });
    const TextList nearest = Suggestions(text, known, mostNamed);
    if (!nearest.empty()) {
        return "Near to it: " + QuotedList(nearest) + ".";
    }
    return known.empty() || known.size() > few ? "Look up its texts and labels (quillara info)."
                                               : "It has " + QuotedList(known) + ".";
}

void Notice(const FormulaContext& context, const FormulaPart& part, const FormulaPart& quoted,
            const std::set<std::string>& found) {
    const std::string text = Quoted(quoted.Text);
    if (found.empty()) {
        context.Notices.push_back(
            {"text-not-found", "No value of " + NameOf(part) + " is " + text + ".", WhatMayBeMeant(part, quoted.Text)});
    } else {
        context.Notices.push_back(
            {"text-other-case", "No value of " + NameOf(part) + " is " + text + " in these letters; " +
                                    QuotedList({found.begin(), found.end()}) + " is taken for it."});
    }
}

/// Puts new places in place of those of texts: place i becomes places[i - 1].
TermPointer Renumbered(const TermPointer& term, std::vector<double> places) {
    return ChangedTerm(term, ChangeEach([places = std::move(places)](double place) {
                           return std::isnan(place) ? place : places[static_cast<std::size_t>(place) - 1];
                       }));
}

/// Numbers texts as they come.
class Numbering {
  public:
    double PlaceOf(const std::string& text) {
        const auto [entry, isNew] = Places.try_emplace(text, Texts->size() + 1);
        if (isNew) {
            Texts->push_back(text);
        }
        return static_cast<double>(entry->second);
    }

    void Number(FormulaPart& part) {
        std::vector<double> places;
        std::ranges::transform(*part.Texts, std::back_inserter(places),
                               [this](const std::string& text) { return PlaceOf(text); });
        part.Term = Renumbered(part.Term, std::move(places));
        part.Texts = Texts;
        part.Plain = nullptr;
        part.Labels = nullptr;
    }

  private:
    std::unordered_map<std::string, std::size_t> Places;
    std::shared_ptr<TextList> Texts = std::make_shared<TextList>();
};

}  // namespace

bool HasLabels(const FormulaPart& part) {
    return part.IsText() ||
           (part.Role == PartRole::Value && part.Labels != nullptr &&
            std::ranges::any_of(*part.Labels, [](const auto& entry) { return !entry.second.Label.empty(); }));
}

std::vector<double> BearersOf(const FormulaContext& context, const FormulaPart& part, const FormulaPart& quoted) {
    std::set<std::string> found;
    std::vector<double> bearers =
        BearersThat(part, found, [&](std::string_view label) { return label == quoted.Text; });
    if (found.empty()) {
        bearers = BearersThat(part, found, LooseMatch(quoted.Text));
        Notice(context, part, quoted, found);
    }
    return bearers;
}

FormulaPart AsText(const FormulaPart& part) {
    if (part.Role != PartRole::Quoted) {
        return part;
    }
    FormulaPart text = NumberPart(part.Offset, 1);
    text.Kind = ValueKind::Text;
    text.Texts = std::make_shared<const TextList>(TextList{part.Text});
    return text;
}

void NumberAlike(FormulaPart& left, FormulaPart& right) {
    if (left.Texts != right.Texts) {
        Numbering numbering;
        numbering.Number(left);
        numbering.Number(right);
    }
}

FormulaPart WithTexts(const FormulaPart& part, std::string (*change)(std::string_view text)) {
    FormulaPart changed = part;
    auto texts = std::make_shared<TextList>();
    std::ranges::transform(*part.Texts, std::back_inserter(*texts), change);
    changed.Texts = texts;
    Numbering().Number(changed);
    return changed;
}

}  // namespace quillara
