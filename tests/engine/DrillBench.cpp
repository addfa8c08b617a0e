#include "tests/engine/DrillBench.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "platform/OrderedBits.h"
#include "workbench/dialogs/VariableListsDialog.h"

namespace drilltest {

quillara::Variable Numbers(std::string name, std::vector<double> values) {
    const double code = quillara::EncodeMissing(values);
    return RawNumbers(std::move(name), std::move(values), code);
}

quillara::Variable RawNumbers(std::string name, std::vector<double> values, double missingCode) {
    quillara::Variable variable;
    variable.Name = std::move(name);
    variable.MissingCode = missingCode;
    variable.Values = std::move(values);
    return variable;
}

quillara::DataTable TableOf(std::vector<quillara::Variable> variables) {
    quillara::DataTable table;
    table.Cases = variables.empty() ? 0 : static_cast<std::int32_t>(variables.front().Values.size());
    table.Variables = std::move(variables);
    return table;
}

double Moved(double value, std::int64_t units) {
    return FromOrderedBits(OrderedBits(value) + units);
}

void DrillBench::Open(quillara::DataTable table) {
    Document.reset();
    Data = std::move(table);
    Document = std::make_unique<quillara::AnalysisDocument>(Data);
    Document->OfferCaseBlocks(TheRoad == Road::Columns);
    Document->Services.ShowMessage = [this](std::string_view text) { Messages.emplace_back(text); };
    Document->Services.WorkIn = [this](quillara::Window& window) {
        if (Answer && !window.IsClosed()) {
            quillara::ChooseVariables(window, Answer->First, Answer->Second);
        }
        return window.IsClosed();
    };
    Document->Services.BreakRequested = [this] { return ++PollCount == CancelPoll; };
    Document->Adopt(std::unique_ptr<CAnalysisSupport>(Orv6NewAnalysis()));
    ASSERT_TRUE(Document->RunSequence());
}

VariableLists DrillBench::ListsOf(const Names& first, const Names& second) const {
    VariableLists lists;
    const auto number = [this](const std::string& name) { return Number(name); };
    std::transform(first.begin(), first.end(), std::back_inserter(lists.First), number);
    std::transform(second.begin(), second.end(), std::back_inserter(lists.Second), number);
    return lists;
}

int DrillBench::ChooseLists(const std::optional<VariableLists>& answer) {
    Answer = answer;
    const int variables = Analysis().Table.Variables;
    return Analysis().SetDDNVariable(nullptr, 1, 0, variables, 0, variables, variables);
}

int DrillBench::ReviewLists(const std::optional<VariableLists>& answer) {
    Answer = answer;
    return Analysis().SetRVVariable(nullptr, 1, 0, Analysis().Table.Variables);
}

void DrillBench::Focus(std::int16_t var) {
    Analysis().SetCurrentDown(var);
    if (Analysis().DataChanged == 1) {
        Analysis().ReadAfterDrill(0);
    }
    if (Analysis().GetCurrentIsset() == 0) {
        Analysis().ReadBeforeDrill(0);
    }
}

void DrillBench::Take(int row) {
    Analysis().SetSelected(row);
    Analysis().MoveToDrillUps();
    Analysis().ReadAfterDrill(0);
    Analysis().SetAllIsset(0);
}

void DrillBench::Down(const std::string& name, const std::string& category) {
    Focus(Number(name));
    int row = 0;
    for (const Categories& shown : Record(name).CategorySet) {
        if (IsNonZero(shown.Count)) {
            if (shown.Name == category) {
                return Take(row);
            }
            ++row;
        }
    }
    EXPECT_EQ(category, "Missing") << "no such category in " << Open(name);
    Take(row);
}

void DrillBench::Up(const std::string& name) {
    const auto step = Analysis().LookFor(Number(name), Analysis().DrillUps);
    UpPlace(static_cast<int>(std::distance(Analysis().DrillUps->cbegin(), step)));
}

void DrillBench::UpPlace(int place) {
    Analysis().SetCurrentUpItem(static_cast<std::int16_t>(place));
    Analysis().MoveBackToDrillDowns();
    Analysis().ReadAfterDrill(0);
}

void DrillBench::Categorize(const std::string& name, const std::function<void(Drill&)>& change) {
    change(Record(name));
    Analysis().DataChanged = 1;
    Recount();
}

void DrillBench::CancelAt(int poll) {
    PollCount = 0;
    CancelPoll = poll;
}

int DrillBench::Rows(const Drill& record) {
    return static_cast<int>(std::count_if(record.CategorySet.begin(), record.CategorySet.end(),
                                          [](const Categories& category) { return IsNonZero(category.Count); }));
}

std::string DrillBench::State() const {
    std::ostringstream text;
    for (const Drill& step : *Analysis().DrillUps) {
        text << step.Name << ' ';
    }
    text << "| " << Analysis().GetDrillDownsSize() << " open, " << Analysis().GetValidVar() << " cases";
    return text.str();
}

std::string DrillBench::Text(const CDrillDown::DrillSet& set, const std::string& name) const {
    const Drill& record = RecordIn(set, name);
    std::ostringstream text;
    text << record.Name << ": n=" << record.ValidCount;
    if (record.ValidWeight != record.ValidCount) {
        text << " w=" << record.ValidWeight;
    }
    text << " mean=" << record.Mean << " [";
    const char* separator = "";
    for (const Categories& category : record.CategorySet) {
        text << std::exchange(separator, " ") << category.Name << ':' << category.Count;
    }
    text << "] missing " << record.MissingWeight;
    return text.str();
}

Drill& DrillBench::RecordIn(const CDrillDown::DrillSet& set, const std::string& name) const {
    const auto record = Analysis().LookFor(Number(name), &set);
    if (record == set.end()) {
        throw std::runtime_error("no record of " + name);
    }
    return Editable(*record);
}

}  // namespace drilltest
