#include "bench/DrillTable.h"

#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "workbench/dialogs/VariableListsDialog.h"

using quillara::DataTable;
using quillara::Variable;

namespace {

constexpr int CaseCount = 1'000'000;
constexpr double MissingShare = 0.03;
constexpr std::size_t WeightColumn = CategoricalVariables + ContinuousVariables;
/// The category that a step keeps; the most frequent of each variable.
constexpr double KeptValue = 1.0;

Variable Column(std::string name, std::vector<double> values) {
    Variable variable;
    variable.Name = std::move(name);
    EncodeNumbers(variable, std::move(values));
    return variable;
}

template <typename Draw>
std::vector<double> Values(std::mt19937_64& random, Draw draw) {
    std::uniform_real_distribution<double> share(0.0, 1.0);
    std::vector<double> values(CaseCount);
    for (double& value : values) {
        const double drawn = draw(random);
        value = share(random) < MissingShare ? std::numeric_limits<double>::quiet_NaN() : drawn;
    }
    return values;
}

/// 1 .. count, the low values more often.
std::vector<double> CategoricalColumn(std::mt19937_64& random, int count) {
    std::uniform_real_distribution<double> share(0.0, 1.0);
    return Values(random, [&](std::mt19937_64& source) {
        const double u = share(source);
        return 1.0 + std::floor(u * u * count);
    });
}

DataTable MakeTable() {
    std::mt19937_64 random(20240229);
    DataTable table;
    table.Cases = CaseCount;
    for (const int count : CategoricalValues) {
        table.Variables.push_back(Column("c" + std::to_string(count), CategoricalColumn(random, count)));
    }
    for (int i = 0; i < ContinuousVariables; ++i) {
        std::lognormal_distribution<double> income(3.0 + i, 0.5);
        table.Variables.push_back(Column("x" + std::to_string(i), Values(random, income)));
    }
    std::uniform_real_distribution<double> weight(0.2, 1.8);
    std::vector<double> weights(CaseCount);
    for (double& value : weights) {
        value = weight(random);
    }
    table.Variables.push_back(Column("weight", std::move(weights)));
    return table;
}

/// Keeps the rows for which `test` holds; without branches on the data, as a careful author of plain loops would.
template <typename Test>
void KeepRows(std::vector<std::int32_t>& rows, Test test) {
    std::size_t kept = 0;
    for (const std::int32_t row : rows) {
        rows[kept] = row;
        kept += test(row) ? 1 : 0;
    }
    rows.resize(kept);
}

std::vector<std::int32_t> RemainingRows(const DataTable& table, const BenchCase& setting, const double* weights) {
    std::vector<std::int32_t> rows(CaseCount);
    std::iota(rows.begin(), rows.end(), 0);
    if (weights != nullptr) {
        KeepRows(rows, [&](std::int32_t row) { return weights[row] > 0.0; });
    }
    for (int step = 0; step < setting.Steps; ++step) {
        const double* values = table.Variables[static_cast<std::size_t>(step)].Values.Doubles().data();
        KeepRows(rows, [&](std::int32_t row) { return values[row] == KeptValue; });
    }
    return rows;
}

}  // namespace

const DataTable& BenchTable() {
    static const DataTable table = MakeTable();
    return table;
}

BenchAnalysis::BenchAnalysis(const BenchCase& setting) : Document(BenchTable()) {
    Document.OfferCaseBlocks(setting.Blocks);
    if (setting.Weighted) {
        Document.SetWeight(WeightColumn);
    }
    First.resize(CategoricalVariables);
    std::iota(First.begin(), First.end(), short{1});
    Second.resize(ContinuousVariables);
    std::iota(Second.begin(), Second.end(), static_cast<short>(CategoricalVariables + 1));
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
    analysis.ReadAfterDrill(0);
    analysis.SetAllIsset(0);
}

double PlainLoops::Run() const {
    const DataTable& table = BenchTable();
    const double* weights = Setting.Weighted ? table.Variables[WeightColumn].Values.Doubles().data() : nullptr;
    const std::vector<std::int32_t> rows = RemainingRows(table, Setting, weights);
    double all = 0.0;
    for (std::size_t i = static_cast<std::size_t>(Setting.Steps); i < WeightColumn; ++i) {
        const double* values = table.Variables[i].Values.Doubles().data();
        const double missing = table.Variables[i].MissingCode;
        const bool categorical = i < CategoricalVariables;
        double sum = 0.0;
        double squares = 0.0;
        std::vector<double> counts(512);
        for (const std::int32_t row : rows) {
            const double x = values[row];
            const double weight = weights == nullptr ? 1.0 : weights[row];
            if (x != missing) {
                sum += weight * x;
                squares += weight * x * x;
                if (categorical) {
                    counts[static_cast<std::size_t>(x)] += weight;
                }
            }
        }
        all += sum + squares + counts[1];
    }
    return all;
}
