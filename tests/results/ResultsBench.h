#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "engine/DrillDown.h"
#include "workbench/data/DataTable.h"
#include "workbench/support/AnalysisDoc.h"
#include "workbench/support/LongTexts.h"

namespace quillara {

inline constexpr double NA = std::numeric_limits<double>::quiet_NaN();

/// The module on the real host core, over a small table made in the test.
class ResultsBench : public testing::Test {
  protected:
    static Variable Numbers(std::string name, std::vector<double> values) {
        Variable variable;
        variable.Name = std::move(name);
        variable.Values = std::move(values);
        variable.MissingCode = EncodeMissing(variable.Values);
        return variable;
    }

    void Open(std::vector<Variable> variables) {
        Document.reset();
        Data.Cases = variables.empty() ? 0 : static_cast<std::int32_t>(variables.front().Values.size());
        Data.Variables = std::move(variables);
        Document = std::make_unique<CAnalysisDoc>(Data);
        Document->Services.ShowMessage = [this](std::string_view text) { Messages.emplace_back(text); };
        Document->Services.TakeSpreadsheet = [this](SpreadsheetDocument shown) { Shown.push_back(std::move(shown)); };
        Document->Services.ChooseVariables = [this](const VariableListRequest&) { return Answer; };
        Document->Adopt(std::unique_ptr<CAnalysisSupport>(Orv6NewAnalysis()));
        ASSERT_TRUE(Document->RunSequence());
    }

    CDrillDown& Analysis() { return static_cast<CDrillDown&>(Document->Analysis()); }
    short Number(const std::string& name) const { return static_cast<short>(Data.IndexOf(name) + 1); }

    void Choose(const std::vector<std::string>& categorical, const std::vector<std::string>& continuous = {}) {
        Answer = {NumbersOf(categorical), NumbersOf(continuous)};
        Analysis().SetDDNVariable(nullptr, 1, 0, Limit, 0, Limit, Limit);
    }
    void Review(const std::vector<std::string>& categorical, const std::vector<std::string>& continuous = {}) {
        Answer = {NumbersOf(categorical), NumbersOf(continuous)};
        Analysis().SetRVVariable(nullptr, 1, 0, Limit);
    }

    /// Drills down on a row of the variable's list of categories; the row behind the last is Missing.
    void Drill(const std::string& name, int row) {
        Analysis().SetCurrentDown(Number(name));
        if (Analysis().GetCurrentIsset() == 0) {
            Analysis().ReadBeforeDrill(0);
        }
        Analysis().SetSelected(row);
        Analysis().MoveToDrillUps();
        Analysis().ReadAfterDrill(0);
        Analysis().SetAllIsset(0);
    }

    /// A record of a variable in one of the sets, for changing it.
    ::Drill& Record(CDrillDown::DrillSet* set, const std::string& name) {
        return Editable(*Analysis().LookFor(Number(name), set));
    }

    /// The documents shown since the last call: title lines, "corner | columns" (a star: whole numbers), one line a
    /// row.
    std::string Sheets() {
        std::ostringstream text;
        for (const SpreadsheetDocument& sheet : std::exchange(Shown, {})) {
            for (const std::string& line : sheet.Title) {
                text << OneLine(line) << '\n';
            }
            text << sheet.Corner << Columns(sheet) << '\n';
            for (const SpreadsheetRow& row : sheet.Rows) {
                text << row.Name << Cells(row) << '\n';
            }
        }
        return text.str();
    }

    DataTable Data;
    std::unique_ptr<CAnalysisDoc> Document;
    std::vector<std::string> Messages;
    std::vector<SpreadsheetDocument> Shown;

  private:
    static constexpr int Limit = 1000;

    static std::string OneLine(std::string text) {
        for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos;) {
            text.replace(at, 1, "\\n");
        }
        return text;
    }
    static std::string Columns(const SpreadsheetDocument& sheet) {
        std::string text;
        for (const SpreadsheetColumn& column : sheet.Columns) {
            text += " | " + OneLine(column.Name) + (column.Whole ? "*" : "");
        }
        return text;
    }
    static std::string Cells(const SpreadsheetRow& row) {
        std::ostringstream text;
        for (const SpreadsheetCell& cell : row.Cells) {
            text << " | ";
            if (const auto* number = std::get_if<double>(&cell)) {
                text << *number;
            } else if (const auto* words = std::get_if<std::string>(&cell)) {
                text << '\'' << *words << '\'';
            }
        }
        return text.str();
    }
    std::vector<short> NumbersOf(const std::vector<std::string>& names) const {
        std::vector<short> numbers;
        std::transform(names.begin(), names.end(), std::back_inserter(numbers),
                       [this](const std::string& name) { return Number(name); });
        return numbers;
    }

    std::optional<VariableLists> Answer;
};

}  // namespace quillara
