#include "workbench/plots/OrderStatistics.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "platform/OrderedBits.h"

namespace quillara {
namespace {

constexpr int LeadingBits = 16;
constexpr std::size_t GroupCount = std::size_t{1} << LeadingBits;

constexpr int DigitBits = 11;
constexpr std::size_t DigitCount = 6;
using Digits = std::array<std::uint32_t, std::size_t{1} << DigitBits>;

/// A digit of the ordered bits, from the last one on; negative numbers come first.
std::size_t DigitOf(double value, std::size_t digit) {
    constexpr std::uint64_t sign = std::uint64_t{1} << 63;
    const std::uint64_t bits = static_cast<std::uint64_t>(OrderedBits(value)) ^ sign;
    return (bits >> (digit * DigitBits)) % (std::size_t{1} << DigitBits);
}

/// Moves values in order of one digit; those of the same stay as they stand.
void SortByDigit(const std::vector<double>& from, std::vector<double>& to, const Digits& counts, std::size_t digit) {
    Digits next{};
    std::exclusive_scan(counts.begin(), counts.end(), next.begin(), std::uint32_t{0});
    for (const double value : from) {
        to[next[DigitOf(value, digit)]++] = value;
    }
}

/// Sign, exponent and the first four bits behind.
std::size_t GroupOf(double value) {
    return static_cast<std::size_t>((OrderedBits(value) >> (64 - LeadingBits)) +
                                    static_cast<std::int64_t>(GroupCount / 2));
}

}  // namespace

OrderStatistics::OrderStatistics(std::span<const double> values, std::span<const std::size_t> places)
    : Count(values.size()), Ends(GroupCount) {
    for (const double value : values) {
        ++Ends[GroupOf(value)];
    }
    std::partial_sum(Ends.begin(), Ends.end(), Ends.begin());
    std::vector<std::size_t> groups;
    for (const std::size_t place : places) {
        groups.push_back(GroupOfPlace(place));
        groups.push_back(GroupOfPlace(std::min(place + 1, Count - 1)));
    }
    Gather(values, groups);
}

std::size_t OrderStatistics::GroupOfPlace(std::size_t place) const {
    return static_cast<std::size_t>(std::ranges::upper_bound(Ends, place) - Ends.begin());
}

/// Takes the values of some groups in one go.
void OrderStatistics::Gather(std::span<const double> values, std::span<const std::size_t> groups) {
    std::vector<std::uint8_t> isWanted(GroupCount);
    std::size_t size = 0;
    for (const std::size_t group : groups) {
        if (isWanted[group] == 0) {
            isWanted[group] = 1;
            size += Ends[group] - (group == 0 ? 0 : Ends[group - 1]);
        }
    }
    std::vector<double> found(size + 1);  // values of other groups are written over by the next one
    std::size_t count = 0;
    for (const double value : values) {
        found[count] = value;
        count += isWanted[GroupOf(value)];
    }
    found.resize(size);
    SortByBits(found);
    for (auto begin = found.begin(); begin != found.end();) {
        const std::size_t group = GroupOf(*begin);
        const auto end = std::find_if(begin, found.end(), [&](double value) { return GroupOf(value) != group; });
        Groups.emplace(group, std::vector<double>(begin, end));
        begin = end;
    }
}

double OrderStatistics::ValueAt(std::size_t place) const {
    const std::size_t group = GroupOfPlace(place);
    return Groups.at(group)[place - (group == 0 ? 0 : Ends[group - 1])];
}

std::pair<double, double> OrderStatistics::At(std::size_t place) const {
    return {ValueAt(place), ValueAt(std::min(place + 1, Count - 1))};
}

void SortByBits(std::vector<double>& values) {
    constexpr std::size_t few = 256;
    if (values.size() < few) {
        std::ranges::sort(values);
        return;
    }
    std::array<Digits, DigitCount> counts{};
    for (const double value : values) {
        for (std::size_t digit = 0; digit < DigitCount; ++digit) {
            ++counts[digit][DigitOf(value, digit)];
        }
    }
    std::vector<double> room(values.size());
    for (std::size_t digit = 0; digit < DigitCount; ++digit) {
        if (counts[digit][DigitOf(values.front(), digit)] != values.size()) {  // else all have the same
            SortByDigit(values, room, counts[digit], digit);
            values.swap(room);
        }
    }
}

}  // namespace quillara
