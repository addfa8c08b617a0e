#include "workbench/formats/ColumnAssembly.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <span>
#include <string_view>
#include <utility>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/MissingCodes.h"
#include "workbench/formats/NumberAssembly.h"
#include "workbench/formats/PieceCodes.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

/// The texts of a variable in byte order, each once, and the place of each worker's texts among them. What a worker
/// has of them is freed as soon as they are here: there may be as many as cases.
class SortedTexts {
  public:
    SortedTexts(std::vector<ColumnGatherer>& workers, const FieldRules& rules) {
        for (ColumnGatherer& worker : workers) {
            Take(worker.TakeTexts(), rules);
        }
        std::vector<Entry> order(Texts.size());
        for (std::size_t text = 0; text < Texts.size(); ++text) {
            order[text] = {PrefixOf(Texts[text]), static_cast<std::uint32_t>(text)};
        }
        std::ranges::sort(order, [&](const Entry& left, const Entry& right) {
            return left.Prefix != right.Prefix ? left.Prefix < right.Prefix : Texts[left.Text] < Texts[right.Text];
        });
        Number(order);
        Arrange(order);
    }

    [[nodiscard]] std::vector<std::string> Take() { return std::move(Texts); }
    [[nodiscard]] std::size_t Count() const { return Texts.size(); }
    /// By the numbers of a worker's pieces; 0 for missing data.
    [[nodiscard]] std::span<const std::uint32_t> PlacesOf(std::size_t worker) const { return Places[worker]; }

  private:
    /// One of the texts; its first bytes decide most comparisons.
    struct Entry {
        std::uint64_t Prefix;
        std::uint32_t Text;
    };

    static std::uint64_t PrefixOf(std::string_view text) {
        std::uint64_t prefix = 0;
        for (std::size_t i = 0; i < sizeof(prefix); ++i) {
            prefix = prefix << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
        }
        return prefix;
    }

    /// Takes the texts of the next worker. Their places are 1 more than where they stand meanwhile.
    void Take(const TextCodes& codes, const FieldRules& rules) {
        std::vector<std::uint32_t>& places = Places.emplace_back(codes.Texts().size() + 1);
        Texts.reserve(Texts.size() + codes.Texts().size());
        for (std::size_t code = 0; code < codes.Texts().size(); ++code) {
            const std::string_view field = codes.Texts()[code];
            if (!rules.IsMissing(field)) {
                Texts.push_back(rules.StandsAsItIs(field) ? std::string(field) : rules.TextOf(field));
                places[code + 1] = static_cast<std::uint32_t>(Texts.size());
            }
        }
    }

    /// Gives all texts their places; the same ones have one.
    void Number(const std::vector<Entry>& order) {
        std::vector<std::uint32_t> placeOf(Texts.size());
        std::uint32_t place = 0;
        for (std::size_t i = 0; i < order.size(); ++i) {
            place += i == 0 || Texts[order[i - 1].Text] != Texts[order[i].Text] ? 1 : 0;
            placeOf[order[i].Text] = place;
        }
        for (std::vector<std::uint32_t>& places : Places) {
            for (std::uint32_t& text : places) {
                text = text == 0 ? 0 : placeOf[text - 1];
            }
        }
    }

    /// Puts the texts in order where they stand, and leaves out repeated ones.
    void Arrange(std::vector<Entry>& order) {
        for (std::uint32_t first = 0; first < order.size(); ++first) {
            std::string displaced = std::move(Texts[first]);
            std::uint32_t place = first;
            while (order[place].Text != first) {
                const std::uint32_t next = std::exchange(order[place].Text, place);
                Texts[place] = std::move(Texts[next]);
                place = next;
            }
            order[place].Text = place;
            Texts[place] = std::move(displaced);
        }
        Texts.erase(std::unique(Texts.begin(), Texts.end()), Texts.end());
        if (Texts.capacity() - Texts.size() > Texts.size() / 8) {
            Texts.shrink_to_fit();
        }
    }

    std::vector<std::string> Texts;
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
    if (areDates) {
        return FieldKind::Date;
    }
    const bool areDateTimes =
        AllTexts(column, rules, [](std::string_view field) { return SecondsFromDateTime(field).has_value(); });
    return areDateTimes ? std::optional(FieldKind::DateTime) : std::nullopt;
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
