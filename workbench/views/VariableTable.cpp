#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <string_view>

#include "workbench/formats/DelimitedText.h"
#include "workbench/views/JsonText.h"
#include "workbench/views/ShownText.h"
#include "workbench/views/VariableSummary.h"

namespace quillara {
namespace {

constexpr std::size_t ShownValues = 5;
constexpr std::size_t LongestText = 48;
constexpr std::size_t ShortestText = 20;  ///< of label or values beside the other columns; else they go below
constexpr std::size_t NameColumn = 1;
constexpr std::size_t LongestNarrowName = 24;
constexpr std::size_t FactCount = 7;
constexpr std::size_t ColumnCount = FactCount + 2;
constexpr std::string_view Indent = "    ";
constexpr std::size_t Gap = 2;

/// Facts, then label and values.
using VariableLine = std::array<std::string, ColumnCount>;

/// Whether the numbers of a column stand at its right edge.
constexpr std::array<bool, ColumnCount> RightAligned = {true, false, false, false, true, true, false, false, false};

bool BeginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

std::size_t CharactersIn(const std::string& text) {
    return static_cast<std::size_t>(std::ranges::count_if(text, BeginsCharacter));
}

/// A line, cut between characters where it is longer.
std::string Cut(const std::string& line, std::size_t longest) {
    if (CharactersIn(line) <= longest) {
        return line;
    }
    std::size_t characters = 0;
    const auto cut =
        std::ranges::find_if(line, [&](char byte) { return BeginsCharacter(byte) && ++characters >= longest - 2; });
    return std::string(line.begin(), cut) + "...";
}

/// A text on one line, cut when it is too long for a column.
std::string Shortened(const std::string& text) {
    return Cut(ShownLine(text), LongestText);
}

/// A text among others with commas between.
std::string ListedText(const std::string& text) {
    return QuotedField(Shortened(text));
}

std::string ShownValue(const LabelledValue& value) {
    const bool sayBoth = !value.Label.empty() && value.Label != value.Text;
    return ListedText(value.Text) + (sayBoth ? " = " + ListedText(value.Label) : "");
}

/// Where the values lie.
std::string ShownRangeOf(const VariableSummary& summary) {
    const std::vector<std::string>& numbers = summary.Quantiles;
    if (numbers.empty() || numbers.front() == numbers.back()) {
        return numbers.empty() ? "" : numbers.front();
    }
    return numbers.front() + " to " + numbers.back() + ", quartiles " + numbers[1] + ", " + numbers[2] + ", " +
           numbers[3];
}

}  // namespace

std::string ShownValuesOf(const VariableSummary& summary) {
    if (summary.Values.empty()) {
        return ShownRangeOf(summary);
    }
    std::string shown;
    const std::size_t count = std::min(summary.Values.size(), ShownValues);
    for (std::size_t value = 0; value < count; ++value) {
        shown += (value == 0 ? "" : ", ") + ShownValue(summary.Values[value]);
    }
    const std::size_t more = summary.Values.size() - count;
    return more == 0 ? shown : shown + ", and " + std::to_string(more) + " more";
}

std::string ShownMissingOf(const VariableSummary& summary) {
    std::vector<std::string> parts;
    for (const MissingRange& range : summary.MissingRanges) {
        parts.push_back((std::isfinite(range.Lowest) ? NumberValue(range.Lowest).dump() : "lowest") + " to " +
                        (std::isfinite(range.Highest) ? NumberValue(range.Highest).dump() : "highest"));
    }
    const std::size_t count = std::min(summary.MissingCodes.size(), ShownValues);
    for (std::size_t place = 0; place < count; ++place) {
        const MissingCode& code = summary.MissingCodes[place];
        const std::string label = code.Reason.Label.empty() ? "" : " = " + ListedText(code.Reason.Label);
        parts.push_back(ListedText(code.Text) + label + " (" + std::to_string(code.Cases) + ")");
    }
    if (const std::size_t more = summary.MissingCodes.size() - count; more > 0) {
        parts.push_back("and " + std::to_string(more) + " more");
    }
    std::string shown;
    for (const std::string& part : parts) {
        shown += (shown.empty() ? "" : ", ") + part;
    }
    return shown;
}

namespace {

/// Values, and missing ones behind them.
std::string ShownContentOf(const VariableSummary& summary) {
    const std::string values = ShownValuesOf(summary);
    const std::string missing = ShownMissingOf(summary);
    return missing.empty() ? values : values + (values.empty() ? "missing: " : "; missing: ") + missing;
}

/// Bars of eight heights; a part with few cases still has the lowest, one without any is a dot.
std::string DrawingOf(const std::vector<std::size_t>& bars) {
    constexpr std::array<std::string_view, 8> heights = {"\u2581", "\u2582", "\u2583", "\u2584",
                                                         "\u2585", "\u2586", "\u2587", "\u2588"};
    const std::size_t highest = bars.empty() ? 1 : std::max<std::size_t>(std::ranges::max(bars), 1);
    std::string drawing;
    for (const std::size_t bar : bars) {
        drawing += bar == 0 ? "." : heights[(bar * (heights.size() - 1) + highest / 2) / highest];
    }
    return drawing;
}

std::string_view WordOf(DefaultRole role) {
    switch (role) {
        case DefaultRole::Categorical:
            return "categorical";
        case DefaultRole::Continuous:
            return "continuous";
        case DefaultRole::None:
            break;
    }
    return "-";
}

VariableLine LineOf(std::size_t number, const VariableSummary& summary) {
    return {std::to_string(number),
            ShownLine(summary.Name),
            summary.Type,
            std::string(WordOf(summary.Role)),
            std::to_string(summary.Spread.Missing),
            std::to_string(summary.Spread.Distinct),
            DrawingOf(summary.Spread.Bars),
            Shortened(summary.Label),
            ShownContentOf(summary)};
}

using Widths = std::array<std::size_t, ColumnCount>;

Widths WidthsOf(const std::vector<VariableLine>& lines) {
    Widths widths{};
    for (const VariableLine& line : lines) {
        for (std::size_t column = 0; column < ColumnCount; ++column) {
            widths[column] = std::max(widths[column], DisplayWidth(line[column]));
        }
    }
    return widths;
}

std::string WithoutBlanksBehind(std::string row) {
    row.erase(row.find_last_not_of(' ') + 1);
    return row + '\n';
}

std::string Row(const VariableLine& line, const Widths& widths, std::size_t columns) {
    std::string row;
    for (std::size_t column = 0; column < columns; ++column) {
        const std::string padding(widths[column] - std::min(widths[column], DisplayWidth(line[column])), ' ');
        row += (column == 0 ? "" : "  ") + (RightAligned[column] ? padding + line[column] : line[column] + padding);
    }
    return WithoutBlanksBehind(row);
}

/// Label and values below the facts.
std::string BelowFacts(const VariableLine& line, std::size_t width) {
    std::string rows;
    for (const std::string& text : {line[FactCount], line[FactCount + 1]}) {
        rows += text.empty() ? "" : std::string(Indent) + Cut(text, width - Indent.size()) + '\n';
    }
    return rows;
}

/// The places that the first columns take.
std::size_t WidthOf(const Widths& widths, std::size_t columns) {
    const auto end = widths.begin() + static_cast<std::ptrdiff_t>(columns);
    return std::accumulate(widths.begin(), end, Gap * (columns - 1));
}

std::string WithValuesBeside(std::vector<VariableLine> lines, std::size_t room) {
    for (VariableLine& line : lines) {
        line.back() = Cut(line.back(), room);
    }
    const Widths widths = WidthsOf(lines);
    std::string text;
    for (const VariableLine& line : lines) {
        text += Row(line, widths, ColumnCount);
    }
    return text;
}

std::string WithValuesBelow(std::vector<VariableLine> lines, std::size_t width) {
    for (VariableLine& line : lines) {
        line[NameColumn] = Cut(line[NameColumn], LongestNarrowName);
    }
    const Widths widths = WidthsOf(lines);
    std::string text;
    for (const VariableLine& line : lines) {
        text += Row(line, widths, FactCount) + (&line == &lines.front() ? "" : BelowFacts(line, width));
    }
    return text;
}

std::string Aligned(const std::vector<VariableLine>& lines, std::size_t width) {
    const std::size_t beside = WidthOf(WidthsOf(lines), FactCount + 1) + Gap;
    if (width > 0 && beside + ShortestText > width) {
        return WithValuesBelow(lines, width);
    }
    return WithValuesBeside(lines, width == 0 ? std::numeric_limits<std::size_t>::max() : width - beside);
}

std::string Counted(std::size_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::string HeadingOf(const DataTable& table) {
    std::string heading = ShownLine(table.FileName) + ": " + Counted(static_cast<std::size_t>(table.Cases), "case") +
                          ", " + Counted(table.Variables.size(), "variable") + "\n";
    if (!table.Header.empty()) {
        heading += "Title: " + ShownLine(table.Header) + "\n";
    }
    if (table.Weight) {
        heading += "The file declares a weight: " + ShownLine(table.Variables[*table.Weight].Name) + "\n";
    }
    return heading + "\n";
}

}  // namespace

std::string VariablesAsText(const DataTable& table, std::size_t width) {
    std::vector<VariableLine> lines = {
        {"#", "Name", "Type", "Used as", "Missing", "Distinct", "Cases", "Label", "Values"}};
    for (std::size_t index = 0; index < table.Variables.size(); ++index) {
        lines.push_back(LineOf(index + 1, SummaryOf(table.Variables[index])));
    }
    return HeadingOf(table) + Aligned(lines, width);
}

}  // namespace quillara
