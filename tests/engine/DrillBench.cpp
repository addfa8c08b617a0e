#include "tests/engine/DrillBench.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "platform/OrderedBits.h"
#include "workbench/data/ColumnBuilder.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/hosting/AnalysisState.h"

namespace drilltest {

quillara::Variable RawNumbers(std::string name, std::vector<double> values, double missingCode) {
    quillara::Variable variable;
    variable.Name = std::move(name);
    variable.MissingCode = missingCode;
    variable.Values = std::move(values);
    return variable;
}

double Moved(double value, std::int64_t units) {
    return FromOrderedBits(OrderedBits(value) + units);
}

std::string TextOf(const Drill& record) {
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

namespace {

constexpr auto IsShown = [](const Categories& category) { return IsNonZero(category.Count); };

/// Columns of doubles in the form that readers of files would give them.
void MakeNarrow(quillara::DataTable& table) {
    for (quillara::Variable& variable : table.Variables) {
        variable.Values = quillara::ColumnBuilder(std::vector(variable.Values.begin(), variable.Values.end())).Finish();
    }
}

}  // namespace

void DrillBench::Open(quillara::DataTable table) {
    Quick.reset();
    Document.reset();
    Data = std::move(table);
    if (TheRoad == Road::Workbench) {
        MakeNarrow(Data);
    }
    Document = std::make_unique<quillara::AnalysisDocument>(Data);
    Document->OfferCaseBlocks(TheRoad != Road::CaseByCase);
    Document->Services.ShowMessage = [this](std::string_view text) { Messages.emplace_back(text); };
    Document->Services.WorkIn = [this](quillara::Window& window) { return WorkIn(window); };
    Document->Services.BreakRequested = [this] { return Poll(); };
    if (TheRoad == Road::Columns || TheRoad == Road::Quick) {
        Document->State().Quick = {};
    }
    if (TheRoad == Road::Quick) {
        Quick = std::make_unique<QuickHost>(*Document, Services);
    }
    Document->Adopt(std::unique_ptr<CAnalysisSupport>(Orv6NewAnalysis()));
    ASSERT_TRUE(Document->RunSequence());
}

void DrillBench::Weigh(std::optional<std::size_t> variable) {
    Document->SetWeight(variable);
    if (Quick != nullptr) {
        Quick->Renew();
    }
}

void DrillBench::Select(std::vector<CaseResult> results) {
    Document->SetSelection(std::move(results));
    if (Quick != nullptr) {
        Quick->Renew();
    }
}

bool DrillBench::WorkIn(quillara::Window& window) {
    using Dialog = quillara::VariableListsDialog;
    Question = window.Resource().Title + std::string(": ") + window.At(Dialog::FirstLabel).Text + ", " +
               window.At(Dialog::SecondLabel).Text;
    if (Answer && !window.IsClosed()) {
        quillara::ChooseVariables(window, Answer->First, Answer->Second);
    }
    return window.IsClosed();
}

bool DrillBench::Poll() {
    if (TheRoad == Road::CaseByCase) {
        b1_com& line = Analysis().CaseLine;
        EXPECT_EQ(std::ranges::count(line.Line, '\0') + line.Column, CaseLineWidth + 1) << "not an empty text line";
        std::ranges::fill(line.Line, 'x');
        line.Column = 50;
    }
    return ++PollCount == CancelPoll;
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

int DrillBench::MoveDown(std::int16_t var, std::int32_t row) {
    Analysis().SetCurrentDown(var);
    Analysis().SetSelected(row);
    return Analysis().MoveToDrillUps();
}

int DrillBench::MoveUp(std::int16_t var) {
    Analysis().SetCurrentUp(var);
    return Analysis().MoveBackToDrillDowns();
}

void DrillBench::Take(int row) {
    Analysis().SetSelected(row);
    Analysis().MoveToDrillUps();
    Analysis().ReadAfterDrill(0);
    Analysis().SetAllIsset(0);
}

void DrillBench::Down(const std::string& name, const std::string& category) {
    Focus(Number(name));
    const Drill& record = Record(name);
    const auto isNamed = [&](const Categories& each) { return IsShown(each) && each.Name == category; };
    const auto named = std::ranges::find_if(record.CategorySet, isNamed);
    EXPECT_TRUE(named != record.CategorySet.end() || category == "Missing") << category << " in " << TextOf(record);
    Take(static_cast<int>(std::count_if(record.CategorySet.begin(), named, IsShown)));
}

void DrillBench::Up(const std::string& name) {
    MoveUp(Number(name));
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
    return static_cast<int>(std::ranges::count_if(record.CategorySet, IsShown));
}

std::string DrillBench::State() const {
    std::ostringstream text;
    for (const Drill& step : *Analysis().DrillUps) {
        text << step.Name << ' ';
    }
    text << "| " << Analysis().GetDrillDownsSize() << " open, " << Analysis().GetValidVar() << " cases";
    return text.str();
}

Drill& DrillBench::RecordIn(const CDrillDown::DrillSet& set, const std::string& name) const {
    Drill* record = CDrillDown::FindRecord(&set, Number(name));
    if (record == nullptr) {
        throw std::runtime_error("no record of " + name);
    }
    return *record;
}

}  // namespace drilltest
