#include "bench/DrillTable.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "workbench/data/MissingCodes.h"
#include "workbench/dialogs/VariableListsDialog.h"

using quillara::DataTable;
using quillara::Variable;

namespace {

constexpr int CaseCount = 1'000'000;
constexpr double MissingShare = 0.03;
constexpr double MissingValue = -9999.0;  // drawn values are positive
constexpr std::size_t WeightColumn = CategoricalVariables + ContinuousVariables;

template <typename Draw>
FloorColumn Drawn(std::mt19937_64& random, Draw draw) {
    std::uniform_real_distribution<double> share(0.0, 1.0);
    FloorColumn column;
    column.Values.resize(CaseCount);
    for (double& value : column.Values) {
        const double drawn = draw(random);
        value = share(random) < MissingShare ? MissingValue : drawn;
    }
    column.Missing = MissingValue;
    return column;
}

/// 1 .. count, the low values more often.
FloorColumn CategoricalColumn(std::mt19937_64& random, int count) {
    std::uniform_real_distribution<double> share(0.0, 1.0);
    FloorColumn column = Drawn(random, [&](std::mt19937_64& source) {
        const double u = share(source);
        return 1.0 + std::floor(u * u * count);
    });
    column.Codes.reserve(CaseCount);
    for (const double value : column.Values) {
        column.Codes.push_back(value == column.Missing ? std::uint16_t{0} : static_cast<std::uint16_t>(value));
    }
    return column;
}

FloorColumns DrawColumns() {
    std::mt19937_64 random(20240229);
    FloorColumns columns;
    for (const int count : CategoricalValues) {
        columns.Categorical.push_back(CategoricalColumn(random, count));
    }
    for (int i = 0; i < ContinuousVariables; ++i) {
        std::lognormal_distribution<double> income(3.0 + i, 0.5);
        columns.Continuous.push_back(Drawn(random, income));
    }
    std::uniform_real_distribution<double> weight(0.2, 1.8);
    columns.Weights.resize(CaseCount);
    for (double& value : columns.Weights) {
        value = weight(random);
    }
    return columns;
}

Variable VariableOf(std::string name, std::vector<double> values, double missing) {
    std::replace(values.begin(), values.end(), missing, std::numeric_limits<double>::quiet_NaN());
    Variable variable;
    variable.Name = std::move(name);
    EncodeNumbers(variable, std::move(values));
    return variable;
}

DataTable MakeTable() {
    const FloorColumns& columns = BenchColumns();
    DataTable table;
    table.Cases = CaseCount;
    for (std::size_t i = 0; i < columns.Categorical.size(); ++i) {
        const FloorColumn& column = columns.Categorical[i];
        table.Variables.push_back(
            VariableOf("c" + std::to_string(CategoricalValues[i]), column.Values, column.Missing));
    }
    for (std::size_t i = 0; i < columns.Continuous.size(); ++i) {
        const FloorColumn& column = columns.Continuous[i];
        table.Variables.push_back(VariableOf("x" + std::to_string(i), column.Values, column.Missing));
    }
    table.Variables.push_back(VariableOf("weight", columns.Weights, -1.0));
    return table;
}

}  // namespace

const FloorColumns& BenchColumns() {
    static const FloorColumns columns = DrawColumns();
    return columns;
}

const DataTable& BenchTable() {
    static const DataTable table = MakeTable();
    return table;
}

BenchAnalysis::BenchAnalysis(const BenchCase& setting)
    : BenchAnalysis(BenchTable(), CategoricalVariables, ContinuousVariables, setting) {}

BenchAnalysis::BenchAnalysis(const DataTable& table, short categorical, short continuous, const BenchCase& setting)
    : Document(table), First(static_cast<std::size_t>(categorical)), Second(static_cast<std::size_t>(continuous)) {
    Document.OfferCaseBlocks(setting.Services);
    Document.SetThreads(setting.Threads);
    if (setting.Weighted) {
        Document.SetWeight(WeightColumn);
    }
    std::iota(First.begin(), First.end(), short{1});
    std::iota(Second.begin(), Second.end(), static_cast<short>(categorical + 1));
    Document.Services.WorkIn = [this](quillara::Window& window) {
        quillara::ChooseVariables(window, First, Second);
        return true;
    };
    Document.Adopt(std::unique_ptr<CAnalysisSupport>(Orv6NewAnalysis()));
    Document.RunSequence();
    CDrillDown& analysis = Analysis();
    const int variables = analysis.Table.Variables;
    analysis.SetWM(1);
    analysis.SetDDNVariable(nullptr, 1, 0, variables, 0, variables, variables);
    for (int step = 1; step <= setting.Steps; ++step) {
        Drill(static_cast<std::int16_t>(step));
    }
}

void BenchAnalysis::Drill(std::int16_t var) {
    CDrillDown& analysis = Analysis();
    analysis.SetCurrentDown(var);
    analysis.SetSelected(0);
    analysis.MoveToDrillUps();
    ReadBoth();
}

void BenchAnalysis::DrillUp(std::int16_t stepsAgo) {
    CDrillDown& analysis = Analysis();
    analysis.SetCurrentUpItem(stepsAgo);
    analysis.MoveBackToDrillDowns();
    ReadBoth();
}
