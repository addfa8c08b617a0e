#include <algorithm>
#include <array>

#include "workbench/command/VariableSummary.h"
#include "workbench/formats/DelimitedText.h"
#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

constexpr std::size_t ShownValues = 5;
constexpr std::size_t LongestText = 48;
constexpr std::size_t ColumnCount = 6;

using Line = std::array<std::string, ColumnCount>;

/// Whether the numbers of a column stand at its right edge.
constexpr std::array<bool, ColumnCount> RightAligned = {true, false, false, true, false, false};

bool BeginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

std::size_t CharactersIn(const std::string& text) {
    return static_cast<std::size_t>(std::ranges::count_if(text, BeginsCharacter));
}

/// A text on one line, cut between characters when it is too long for a column.
std::string Shortened(const std::string& text) {
    std::string line = ShownLine(text);
    if (CharactersIn(line) <= LongestText) {
        return line;
    }
    std::size_t characters = 0;
    const auto cut =
        std::ranges::find_if(line, [&](char byte) { return BeginsCharacter(byte) && ++characters >= LongestText - 2; });
    return std::string(line.begin(), cut) + "...";
}

/// A text among others with commas between.
std::string ListedText(const std::string& text) {
    return QuotedField(Shortened(text));
}

std::string ShownValue(const LabelledValue& value) {
    const bool sayBoth = !value.Label.empty() && value.Label != value.Text;
    return ListedText(value.Text) + (sayBoth ? " = " + ListedText(value.Label) : "");
}

/// The first values with their labels and, of many, how many more there are; without any, where the values lie.
std::string ShownValuesOf(const VariableSummary& summary) {
    if (summary.Values.empty()) {
        const bool isOne = summary.Smallest == summary.Largest;
        return isOne ? summary.Smallest : summary.Smallest + " to " + summary.Largest;
    }
    std::string shown;
    const std::size_t count = std::min(summary.Values.size(), ShownValues);
    for (std::size_t value = 0; value < count; ++value) {
        shown += (value == 0 ? "" : ", ") + ShownValue(summary.Values[value]);
    }
    const std::size_t more = summary.Values.size() - count;
    return more == 0 ? shown : shown + ", and " + std::to_string(more) + " more";
}

Line LineOf(std::size_t number, const VariableSummary& summary) {
    return {std::to_string(number),   ShownLine(summary.Name), summary.Type, std::to_string(summary.MissingCases),
            Shortened(summary.Label), ShownValuesOf(summary)};
}

std::string Aligned(const std::vector<Line>& lines) {
    std::array<std::size_t, ColumnCount> widths{};
    for (const Line& line : lines) {
        for (std::size_t column = 0; column < ColumnCount; ++column) {
            widths[column] = std::max(widths[column], DisplayWidth(line[column]));
        }
    }
    std::string text;
    for (const Line& line : lines) {
        std::string row;
        for (std::size_t column = 0; column < ColumnCount; ++column) {
            const std::string padding(widths[column] - DisplayWidth(line[column]), ' ');
            row += (column == 0 ? "" : "  ") + (RightAligned[column] ? padding + line[column] : line[column] + padding);
        }
        row.erase(row.find_last_not_of(' ') + 1);
        text += row + "\n";
    }
    return text;
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

std::string VariablesAsText(const DataTable& table) {
    std::vector<Line> lines = {{"#", "Name", "Type", "Missing", "Label", "Values"}};
    for (std::size_t index = 0; index < table.Variables.size(); ++index) {
        lines.push_back(LineOf(index + 1, SummaryOf(table.Variables[index])));
    }
    return HeadingOf(table) + Aligned(lines);
}

}  // namespace quillara
