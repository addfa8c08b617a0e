#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/DrillDown.h"
#include "tests/engine/QuickHost.h"
#include "tests/workbench/Tables.h"
#include "workbench/hosting/AnalysisDocument.h"

namespace drilltest {

using namespace drilldown;

using quillara::Infinity, quillara::Numbers, quillara::TableOf;
inline constexpr double NA = quillara::Missing;
inline constexpr char NotEnoughMemory[] =
    "Not enough memory to complete the requested computations; close other applications and try again.";

/// How the module gets its cases from the host.
enum class Road : std::uint8_t {
    CaseByCase,
    Columns,
    Quick,  ///< by services of the tests, in many forms
    Workbench,  ///< by all that the workbench offers, over columns in their narrowest form
};

using Names = std::vector<std::string>;

/// Two lists of numbers of variables, from 1.
struct VariableLists {
    std::vector<short> First;
    std::vector<short> Second;
};

/// A variable whose values reach the module as they are.
quillara::Variable RawNumbers(std::string name, std::vector<double> values, double missingCode = -9999);

/// `value` moved by so many representable numbers.
double Moved(double value, std::int64_t units);

/// "x: n=5 mean=2.5 [1:3 2:2] missing 1", with "w=" behind n where the weights differ from it.
std::string TextOf(const Drill& record);

/// The real module on the real host, over a small table: verbs of an exploration, and its state as short texts.
class DrillBench {
  public:
    explicit DrillBench(Road road, const QuickServices& services = {}) : TheRoad(road), Services(services) {}
    /// A new analysis of a table.
    void Open(quillara::DataTable table);
    void Open(std::vector<quillara::Variable> variables) { Open(TableOf(std::move(variables))); }

    // Verbs

    /// Chooses the drill variables, categorical and continuous. Gives the result of the operation.
    int Choose(const Names& categorical, const Names& continuous = {}) {
        return ChooseLists(ListsOf(categorical, continuous));
    }
    int Review(const Names& categorical, const Names& continuous = {}) {
        return ReviewLists(ListsOf(categorical, continuous));
    }
    /// The same by numbers; nothing: the user cancels the dialog.
    int ChooseLists(const std::optional<VariableLists>& answer);
    int ReviewLists(const std::optional<VariableLists>& answer);
    void Weigh(const std::string& name) { Weigh(Data.IndexOf(name)); }
    void Weigh(std::optional<std::size_t> variable);
    void Select(std::vector<CaseResult> results);
    /// Makes a variable the current one and its counts fresh, as the dialog does before it shows the categories.
    void Focus(std::int16_t var);
    /// Moves a variable to the steps, on a row of its list, or back; no case is read.
    int MoveDown(std::int16_t var, std::int32_t row);
    int MoveUp(std::int16_t var);
    /// Drills down on a row of the current variable's list; the row behind the last is Missing.
    void Take(int row);
    /// A whole step down on the category of that name, or on "Missing".
    void Down(const std::string& name, const std::string& category);
    /// Undoes the step on a variable.
    void Up(const std::string& name);
    /// Gives a drill-down variable another method as the Categorization tab does, and recounts.
    void Categorize(const std::string& name, const std::function<void(Drill&)>& change);
    void Recount() { Analysis().ReadBeforeDrill(0); }
    /// Cancels at the n-th poll from now on; 0: never.
    void CancelAt(int poll);

    // State

    CDrillDown& Analysis() const { return static_cast<CDrillDown&>(Document->Analysis()); }
    quillara::AnalysisDocument& Host() const { return *Document; }
    std::int16_t Number(const std::string& name) const { return static_cast<std::int16_t>(Data.IndexOf(name) + 1); }
    const quillara::Column& ValuesOf(int var) const { return Data.Variables[static_cast<std::size_t>(var - 1)].Values; }
    /// Polls since CancelAt.
    int Polls() const { return PollCount; }
    /// Rows that a record's list shows before Missing.
    static int Rows(const Drill& record);
    /// "Z Y X | 3 open, 120 cases": the steps, newest first, the variables left, ValidVar.
    std::string State() const;
    Drill& Record(const std::string& name) const { return RecordIn(*Analysis().DrillDowns, name); }
    Drill& RecordIn(const CDrillDown::DrillSet& set, const std::string& name) const;
    /// Messages shown since the last call.
    Names TakeMessages() { return std::exchange(Messages, {}); }
    /// "Select variables: First list, Second list": what the dialog of two lists asked for last.
    const std::string& Asked() const { return Question; }

  protected:
    VariableLists ListsOf(const Names& first, const Names& second) const;

  private:
    bool WorkIn(quillara::Window& window);
    bool Poll();

    Road TheRoad;
    QuickServices Services;
    quillara::DataTable Data;
    std::unique_ptr<quillara::AnalysisDocument> Document;
    std::unique_ptr<QuickHost> Quick;
    std::optional<VariableLists> Answer;
    std::string Question;
    Names Messages;
    int PollCount = 0;
    int CancelPoll = 0;
};

}  // namespace drilltest
