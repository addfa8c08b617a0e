#include "workbench/formats/ColumnAssembly.h"

#include <algorithm>
#include <array>
#include <deque>
#include <limits>
#include <numeric>
#include <span>
#include <string_view>
#include <utility>

#include "workbench/data/Calendar.h"
#include "workbench/data/MissingCodes.h"
#include "workbench/formats/NumberAssembly.h"
#include "workbench/formats/PieceCodes.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

/// The texts of a variable in byte order, each once, and the place of each worker's texts among them.
class SortedTexts {
  public:
    SortedTexts(const std::vector<ColumnGatherer>& workers, const FieldRules& rules) {
        Places.resize(workers.size());
        for (std::size_t worker = 0; worker < workers.size(); ++worker) {
            const std::vector<std::string_view>& texts = workers[worker].Texts().Texts();
            Places[worker].resize(texts.size() + 1);
            for (std::size_t code = 0; code < texts.size(); ++code) {
                Add(texts[code], rules, {.Worker = worker, .Number = code + 1});
            }
        }
        Sort();
    }

    [[nodiscard]] std::vector<std::string> Take() { return std::move(Sorted); }
    [[nodiscard]] std::size_t Count() const { return Sorted.size(); }
    /// By the numbers of a worker's pieces; 0 for missing data.
    [[nodiscard]] std::span<const std::uint32_t> PlacesOf(std::size_t worker) const { return Places[worker]; }

  private:
    /// A text and which one of which worker it is; its first bytes decide most comparisons.
    struct Entry {
        std::uint64_t Prefix;
        std::string_view Text;
        std::uint32_t Worker;
        std::uint32_t Number;

        friend bool operator<(const Entry& left, const Entry& right) {
            return left.Prefix != right.Prefix ? left.Prefix < right.Prefix : left.Text < right.Text;
        }
    };
    struct Origin {
        std::size_t Worker;
        std::size_t Number;
    };

    static std::uint64_t PrefixOf(std::string_view text) {
        std::uint64_t prefix = 0;
        for (std::size_t i = 0; i < sizeof(prefix); ++i) {
            prefix = prefix << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
        }
        return prefix;
    }

    void Add(std::string_view field, const FieldRules& rules, Origin origin) {
        if (rules.IsMissing(field)) {
            return;
        }
        const std::string_view text = rules.StandsAsItIs(field) ? field : Made.emplace_back(rules.TextOf(field));
        Entries.push_back({PrefixOf(text), text, static_cast<std::uint32_t>(origin.Worker),
                           static_cast<std::uint32_t>(origin.Number)});
    }

    void Sort() {
        std::sort(Entries.begin(), Entries.end());
        for (const Entry& entry : Entries) {
            if (Sorted.empty() || Sorted.back() != entry.Text) {
                Sorted.emplace_back(entry.Text);
            }
            Places[entry.Worker][entry.Number] = static_cast<std::uint32_t>(Sorted.size());
        }
        Entries = {};
        Made = {};
    }

    std::vector<Entry> Entries;
    std::deque<std::string> Made;  // texts that stand otherwise in their fields
    std::vector<std::string> Sorted;
    std::vector<std::vector<std::uint32_t>> Places;
};

void AssembleTexts(GatheredColumn& column, const FieldRules& rules, Variable& variable) {
    SortedTexts texts(column.Workers, rules);
    // What the code for missing data is depends on the least and the largest value only.
    const auto count = static_cast<double>(texts.Count());
    const std::array<double, 2> ends = {1, count};
    variable.Kind = ValueKind::Text;
    variable.MissingCode = MissingCodeFor(std::span(ends).first(count == 0 ? 0 : ends.size()));
    const auto append = [&](const auto& entries, std::size_t worker, auto& codes) {
        AppendCodes(entries, texts.PlacesOf(worker), codes);
    };
    if (texts.Count() < NumberCodes::MostCodes) {
        std::vector<double> values(texts.Count() + 1);
        std::iota(values.begin(), values.end(), 0.0);
        values[0] = variable.MissingCode;
        variable.Values = ColumnOfCodes(column.Pieces, append, std::move(values));
    } else if (variable.MissingCode < std::numeric_limits<std::int32_t>::min()) {
        std::vector<double> values = CodesOf<double>(column.Pieces, append);
        std::ranges::replace(values, 0.0, variable.MissingCode);
        variable.Values = std::move(values);
    } else {
        std::vector<std::int32_t> values = CodesOf<std::int32_t>(column.Pieces, append);
        std::ranges::replace(values, 0, static_cast<std::int32_t>(variable.MissingCode));
        variable.Values = Column::OfIntegers(std::move(values));
    }
    variable.Texts = texts.Take();
}

/// Whether a test holds of all texts that a variable was gathered as.
template <typename Test>
bool AllTexts(const GatheredColumn& column, const FieldRules& rules, Test test) {
    return std::ranges::all_of(column.Workers, [&](const ColumnGatherer& worker) {
        return std::ranges::all_of(worker.Texts().Texts(),
                                   [&](std::string_view field) { return rules.IsMissing(field) || test(field); });
    });
}

}  // namespace

std::optional<FieldKind> KindInPlaceOf(const GatheredColumn& column, const FieldRules& rules) {
    if (!column.IsOfKind) {
        return FieldKind::Text;
    }
    if (column.Kind != FieldKind::Text) {
        return {};
    }
    double value = 0;
    const auto isNumber = [&](std::string_view field) {
        return ReadDecimal(field, rules.Decimal(), value) != DecimalOutcome::NoNumber;
    };
    if (AllTexts(column, rules, isNumber)) {
        return FieldKind::Number;
    }
    const bool areDates =
        AllTexts(column, rules, [](std::string_view field) { return DaysFromText(field).has_value(); });
    return areDates ? std::optional(FieldKind::Date) : std::nullopt;
}

std::optional<ColumnGatherer::TooLarge> FirstTooLarge(const GatheredColumn& column) {
    std::optional<ColumnGatherer::TooLarge> first;
    for (const ColumnGatherer& worker : column.Workers) {
        if (worker.FirstTooLarge() && (!first || worker.FirstTooLarge()->Place < first->Place)) {
            first = worker.FirstTooLarge();
        }
    }
    return first;
}

void Assemble(GatheredColumn column, const FieldRules& rules, Variable& variable) {
    if (column.Kind == FieldKind::Text) {
        AssembleTexts(column, rules, variable);
    } else {
        AssembleNumbers(column, variable);
    }
}

}  // namespace quillara
