#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "engine/DisplayNames.h"
#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "engine/OutOfMemory.h"
#include "host/CaseBlocks.h"
#include "resources/StringTable.h"
#include "results/tables/ResultTable.h"

using namespace drilldown;

namespace {

/// Intended: a long name is cut, unlike every other text of a table, which goes in as its key; a sheet read by people
/// depends on the start of the name.
void SetLongName(CDrillDown& analysis, ResultTable& table, std::size_t column, const std::string& name) {
    if (table.ColLongNames == nullptr) {
        return;
    }
    const auto width = static_cast<std::size_t>(table.CellWidth);
    std::string key = name;
    if (key.size() > width) {
        analysis.Get8CharHash(key);
    }
    const std::size_t length = std::min({width, name.size(), key.size()});
    std::copy_n(name.data(), length, table.ColLongNames + column * width);
}

void WriteColumnNames(CDrillDown& analysis, ResultTable& table, char* nameField) {
    for (int var = 1; var <= analysis.Table.Variables; ++var) {
        const auto column = static_cast<std::size_t>(var) - 1;
        table.SetColumnName(column, std::to_string(var));
        SetLongName(analysis, table, column, DisplayName(analysis, static_cast<std::int16_t>(var), nameField));
    }
}

/// Ends the progress display, however its scope is left.
struct ProgressEnd {
    CDrillDown& Analysis;
    ~ProgressEnd() { Analysis.ddstop(); }
};

/// Intended: missing data deletes no case, unlike in the passes and in the new table of DDNSaveData; the sheet shows
/// every case of weight.
bool Remains(CDrillDown& analysis, const double* values) {
    return IsPositiveWeight(analysis.DealWithWeights(0)) && analysis.HasBeenDrilled(values) == 0;
}

/// Intended: a row starts with the spare entry of the case, unlike the names above it, so that every value stands one
/// column behind its name and the last variable has no column; scripts that read the sheet depend on the places.
void WriteRow(ResultTable& table, std::size_t row, const double* values) {
    for (std::size_t column = 0; column < static_cast<std::size_t>(table.Cols); ++column) {
        table.SetNumber(row, column, values[column]);
    }
}

/// Writes the cases that remain; those beyond the rows of the table, which counts the cases of the last pass, are
/// passed over. False when the user or the host ends it.
bool WriteRows(CDrillDown& analysis, ResultTable& table, double* values) {
    analysis.tdstar(analysis.Table.Cases, analysis.GetResourceString(ComputingText));
    const ProgressEnd progress{analysis};
    std::size_t row = 0;
    for (int caseNumber = 1; caseNumber <= analysis.Table.Cases; ++caseNumber) {
        analysis.CaseLine = {};
        const auto result = static_cast<CaseResult>(analysis.ReadCase(caseNumber, values));
        if (result == CaseResult::Skip) {
            continue;
        }
        if (result == CaseResult::Stop || analysis.lookbr() != 0) {
            return false;
        }
        if (Remains(analysis, values)) {
            WriteRow(table, row++, values);
        }
    }
    return true;
}

}  // namespace

std::int16_t CDrillDown::DDNDatasheet(HWND) {
    BringUpToDate();
    const HostBuffer<char> nameField(*this, NameFieldSize);
    if (!nameField) {
        return 0;
    }
    ResultTable table(*this, static_cast<std::size_t>(ValidVar), static_cast<std::size_t>(Table.Variables));
    if (!table) {
        return static_cast<std::int16_t>(ReportNotEnoughMemory(*this));
    }
    table.SetTitle(0, GetResourceString(DataSheetTitleText));
    WriteColumnNames(*this, table, nameField.data());
    const HostBuffer<double> values(*this, static_cast<std::size_t>(Table.Variables) + 1);
    if (!values) {
        return static_cast<std::int16_t>(ReportNotEnoughMemory(*this));
    }
    if (!WriteRows(*this, table, values.data())) {
        return 0;
    }
    table.Output();
    return 1;
}
