#include "workbench/data/Suggestion.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "workbench/data/LetterCase.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

constexpr std::size_t ShortestBeginning = 3;
constexpr std::size_t LettersPerMistake = 3;
constexpr std::size_t ShortestMistyped = 3;
constexpr std::size_t LongestCompared = 60;  ///< nobody types longer ones

/// Three rows of the table of distances between the beginnings of two texts.
struct DistanceRows {
    std::vector<std::size_t> Before, Last, Present;
};

std::size_t NextDistance(const DistanceRows& rows, std::wstring_view left, std::wstring_view right, std::size_t i,
                         std::size_t j) {
    const bool isSame = left[i - 1] == right[j - 1];
    std::size_t distance = std::min({rows.Last[j] + 1, rows.Present[j - 1] + 1, rows.Last[j - 1] + (isSame ? 0 : 1)});
    const bool areSwapped = i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1];
    return areSwapped ? std::min(distance, rows.Before[j - 2] + 1) : distance;
}

/// How many mistakes turn one text into the other.
std::size_t Distance(std::wstring_view left, std::wstring_view right) {
    DistanceRows rows{{}, std::vector<std::size_t>(right.size() + 1), std::vector<std::size_t>(right.size() + 1)};
    rows.Before = rows.Last;
    for (std::size_t j = 0; j <= right.size(); ++j) {
        rows.Last[j] = j;
    }
    for (std::size_t i = 1; i <= left.size(); ++i) {
        rows.Present[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            rows.Present[j] = NextDistance(rows, left, right, i, j);
        }
        std::swap(rows.Before, rows.Last);
        std::swap(rows.Last, rows.Present);
    }
    return rows.Last.back();
}

std::size_t MostMistakes(std::size_t letters) {
    return letters < ShortestMistyped ? 0 : std::max<std::size_t>(1, letters / LettersPerMistake);
}

/// Nothing when there are too many for one to be meant by the other.
std::optional<std::size_t> MistakesBetween(std::wstring_view wanted, std::wstring_view candidate) {
    const std::size_t longer = std::max(wanted.size(), candidate.size());
    const std::size_t shorter = std::min(wanted.size(), candidate.size());
    const std::size_t most = MostMistakes(shorter);
    if (longer > LongestCompared || longer - shorter > most) {
        return std::nullopt;
    }
    const std::size_t distance = Distance(wanted, candidate);
    return distance <= most ? std::optional(distance) : std::nullopt;
}

}  // namespace

std::vector<std::string> Suggestions(std::string_view text, std::span<const std::string> candidates, std::size_t most) {
    const std::wstring wanted = WithoutLetterCase(text);
    constexpr std::size_t begun = std::numeric_limits<std::size_t>::max();
    std::vector<std::pair<std::size_t, const std::string*>> near;  // the mistakes of each
    for (const std::string& candidate : candidates) {
        const std::wstring folded = WithoutLetterCase(candidate);
        if (const std::optional<std::size_t> mistakes = MistakesBetween(wanted, folded)) {
            near.emplace_back(*mistakes, &candidate);
        } else if (wanted.size() >= ShortestBeginning && folded.starts_with(wanted)) {
            near.emplace_back(begun, &candidate);
        }
    }
    std::ranges::stable_sort(near, {}, [](const auto& each) { return each.first; });
    std::vector<std::string> nearest;
    for (std::size_t i = 0; i < std::min(near.size(), most); ++i) {
        nearest.push_back(*near[i].second);
    }
    return nearest;
}

std::optional<std::string> Suggestion(std::string_view text, const std::vector<std::string>& candidates) {
    std::vector<std::string> nearest = Suggestions(text, candidates, 1);
    return nearest.empty() ? std::nullopt : std::optional(std::move(nearest.front()));
}

std::string EndWithSuggestion(std::string_view text, const std::vector<std::string>& candidates) {
    const std::optional<std::string> meant = Suggestion(text, candidates);
    return meant ? "; did you mean " + Quoted(*meant) + "?" : ".";
}

std::string EndWithChoice(std::string_view text, const std::vector<std::string>& candidates) {
    std::string known;
    for (const std::string& candidate : candidates) {
        known += (known.empty() ? "" : ", ") + candidate;
    }
    const std::optional<std::string> meant = Suggestion(text, candidates);
    return (meant ? "; did you mean " + Quoted(*meant) + "? Choose from " : "; choose from ") + known + ".";
}

}  // namespace quillara
