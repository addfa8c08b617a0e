#include <algorithm>
#include <array>

#include "workbench/command/StandardStreams.h"
#include "workbench/command/VariableSummary.h"

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
    std::string line = OnOneLine(text);
    if (CharactersIn(line) <= LongestText) {
        return line;
    }
    std::size_t characters = 0;
    const auto cut =
        std::ranges::find_if(line, [&](char byte) { return BeginsCharacter(byte) && ++characters >= LongestText - 2; });
    return std::string(line.begin(), cut) + "...";
}

std::string ShownValue(const LabelledValue& value) {
    const bool sayBoth = !value.Label.empty() && value.Label != value.Text;
    return Shortened(sayBoth ? value.Text + " = " + value.Label : value.Text);
}

/// The first values with their labels; of many, how many more there are.
std::string ShownValuesOf(const VariableSummary& summary) {
    std::string shown;
    const std::size_t count = std::min(summary.Values.size(), ShownValues);
    for (std::size_t value = 0; value < count; ++value) {
        shown += (value == 0 ? "" : ", ") + ShownValue(summary.Values[value]);
    }
    const std::size_t more = summary.Values.size() - count;
    return more == 0 ? shown : shown + ", and " + std::to_string(more) + " more";
}

Line LineOf(std::size_t number, const VariableSummary& summary) {
    return {std::to_string(number),   OnOneLine(summary.Name), summary.Type, std::to_string(summary.MissingCases),
            Shortened(summary.Label), ShownValuesOf(summary)};
}

std::string Aligned(const std::vector<Line>& lines) {
    std::array<std::size_t, ColumnCount> widths{};
    for (const Line& line : lines) {
        for (std::size_t column = 0; column < ColumnCount; ++column) {
            widths[column] = std::max(widths[column], CharactersIn(line[column]));
        }
    }
    std::string text;
    for (const Line& line : lines) {
        std::string row;
        for (std::size_t column = 0; column < ColumnCount; ++column) {
            const std::string padding(widths[column] - CharactersIn(line[column]), ' ');
            row += (column == 0 ? "" : "  ") + (RightAligned[column] ? padding + line[column] : line[column] + padding);
        }
        row.erase(row.find_last_not_of(' ') + 1);
        text += row + "\n";
    }
    return text;
}

std::string HeadingOf(const DataTable& table) {
    std::string heading = OnOneLine(table.FileName) + ": " + std::to_string(table.Cases) + " cases, " +
                          std::to_string(table.Variables.size()) + " variables\n";
    if (!table.Header.empty()) {
        heading += "Title: " + OnOneLine(table.Header) + "\n";
    }
    if (table.Weight) {
        heading += "The file declares a weight: " + OnOneLine(table.Variables[*table.Weight].Name) + "\n";
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
