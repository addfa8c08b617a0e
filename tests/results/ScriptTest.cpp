// Runs the scripts beside it; the README there tells how they are written.

#include <algorithm>
#include <map>
#include <sstream>

#include "host/Brushing.h"
#include "tests/Scripts.h"
#include "tests/results/RecordedCalls.h"
#include "tests/results/ResultsBench.h"
#include "workbench/dialogs/VariableListsDialog.h"

namespace drilltest {
namespace {

using testing_scripts::Split;

Names Parts(const std::string& text, char separator) {
    Names parts;
    std::istringstream rest(text);
    for (std::string part; std::getline(rest, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}

double NumberOf(const std::string& text) {
    return text == "-" ? NA : std::strtod(text.c_str(), nullptr);
}

template <typename T = double>
std::vector<T> NumbersOf(const std::string& text) {
    std::vector<T> numbers;
    for (const std::string& part : Parts(text, ' ')) {
        numbers.push_back(static_cast<T>(NumberOf(part)));
    }
    return numbers;
}

template <auto Member>
void Assign(auto& object, double value) {
    object.*Member = static_cast<std::remove_reference_t<decltype(object.*Member)>>(value);
}

template <auto Operation>
int Run(CDrillDown& analysis) {
    if constexpr (requires { (analysis.*Operation)(nullptr); }) {
        return (analysis.*Operation)(nullptr);
    } else {
        return (analysis.*Operation)(0, nullptr);
    }
}

// clang-format off
#define NAMED(Name) {#Name, Run<&CDrillDown::Name>}
const std::map<std::string, int (*)(CDrillDown&)> Operations{
    NAMED(DDNDescriptive), NAMED(DDNFrequency), NAMED(DDNSummary), NAMED(RVSummary), NAMED(RVFrequency),
    NAMED(DDNDatasheet), NAMED(DDNSaveData), NAMED(DDNHistograms), NAMED(RVHistograms), NAMED(DDNPiecharts),
    NAMED(RVPiecharts), NAMED(DDNStackedplots), NAMED(RVStackedplots), NAMED(RVBoxWhiker), NAMED(RVScatterPlot),
    NAMED(RV3DHistograms), NAMED(DDNGraphForBrushing), NAMED(DDNCloseBrushing)};
#undef NAMED
#define NAMED(Name) {#Name, Assign<&CDrillDown::Name>}
#define SETTER(Name) {#Name, [](CDrillDown& a, double value) { a.Set##Name(static_cast<std::int16_t>(value)); }}
const std::map<std::string, void (*)(CDrillDown&, double)> Members{
    NAMED(ValidVar), NAMED(DataChanged), NAMED(NoContinuous), NAMED(PlotMedianQuartileRange), NAMED(PlotMeanSEAndSD),
    NAMED(PlotMeanSD196TimesSD), NAMED(PlotMeanSE196TimesSE), SETTER(MD), SETTER(RVMD), SETTER(CountMD), SETTER(WM),
    SETTER(AllIsset), SETTER(CurrentDown)};
#undef NAMED
#define NAMED(Name) {#Name, Assign<&Drill::Name>}
const std::map<std::string, void (*)(Drill&, double)> Fields{
    NAMED(Method), NAMED(Min), NAMED(Max), NAMED(Mean), NAMED(SumSquares), NAMED(ValidCount), NAMED(ValidWeight),
    NAMED(MissingWeight), NAMED(ChosenCategory), NAMED(VarType), NAMED(Isset)};
// clang-format on

class Script : public ResultsBench, public testing::WithParamInterface<std::string> {
  protected:
    void Do(const std::string& line) { Verbs.at(Split(line, " ").first)(Split(line, " ").second); }
    /// What an operation gives in one of the ways that the README lists.
    std::string Outcome(const std::string& line) {
        const auto [way, command] = Split(line, " ");
        const auto [name, arguments] = Split(command, " ");
        if (const auto found = Reports.find(name); found != Reports.end()) {
            return found->second(arguments) + '\n';
        }
        TakeCalls();
        TakeShown();
        Said.clear();
        Taken = nullptr;
        const int result = Operations.at(name)(Analysis());
        std::string text = way == "%" ? TakeCalls() : way == "?" ? Said : TakeShown();
        text += way == "$" && Taken != nullptr ? TextOf(*Taken) + '\n' : "";
        for (const std::string& message : TakeMessages()) {
            text += "! " + message + '\n';
        }
        return text + (result == 1 ? "" : "gave " + std::to_string(result) + '\n');
    }

  private:
    quillara::Variable& Last() { return Input.Variables.back(); }
    /// "x: Field value ...": numbers for fields of a record.
    void SetFields(const CDrillDown::DrillSet& set, const std::string& text) {
        const auto [name, fields] = Split(text, ": ");
        const Names words = Parts(fields, ' ');
        for (std::size_t word = 0; word + 1 < words.size(); word += 2) {
            Fields.at(words[word])(RecordIn(set, name), NumberOf(words[word + 1]));
        }
    }
    /// "x: lower upper count name; ..."
    void SetCategories(const std::string& text) {
        const auto [name, categories] = Split(text, ":");
        Record(name).CategorySet.clear();
        for (const std::string& each : Parts(categories, ';')) {
            Categories made{};
            std::istringstream words(each);
            std::getline(words >> made.Lower >> made.Upper >> made.Count >> std::ws, made.Name);
            Record(name).CategorySet.insert(made);
        }
    }
    void Pair(const std::string& text) {
        Host().Services.WorkIn = [text](quillara::Window& window) {
            if (!text.empty() && !window.IsClosed()) {
                const auto [first, second] = Split(text, "; ");
                quillara::ChooseVariables(window, NumbersOf<short>(first), NumbersOf<short>(second));
            }
            return !text.empty() && window.IsClosed();
        };
    }
    /// One cycle in which the user picks a bar (-1: none) with an option, or leaves: "result item action, row".
    std::string Brush(const std::string& arguments) {
        const std::vector<int> picks = NumbersOf<int>(arguments);
        std::ostringstream text;
        Host().Services.Brush = [&](quillara::BrushingRun& run) {
            if (picks.empty()) {
                WriteOffer(text, run);
                return false;
            }
            run.Regions.setSelected(picks[0]);
            run.Choice = picks[1];
            return true;
        };
        int item = 77;  // stands for untouched
        int action = 77;
        Analysis().SetSelected(77);
        const int result = Analysis().DDNBrushing(&item, &action);
        text << result << ' ' << item << ' ' << action << ", row " << Analysis().GetSelected();
        return text.str();
    }
    static void WriteOffer(std::ostream& text, const quillara::BrushingRun& run) {
        for (const BrushRegion& region : run.Regions.Regions()) {
            text << region.Left << ".." << region.Right << " x " << region.Bottom << ".." << region.Top << ' '
                 << region.Tip << " kind " << region.Kind << '\n';
        }
        int selected = -1;
        text << (run.Regions.getSelected(selected) ? "bar " : "no bar ") << selected;
        for (const std::string& option : run.Options) {
            text << ' ' << option;
        }
        text << '\n';
    }
    /// The captions behind a step by each of some methods; the README tells of the numbers.
    std::string Clauses(const std::string& arguments) {
        const std::vector<int> numbers = NumbersOf<int>(arguments);
        const Categories all[]{
            {1, 1, 1e-7, "low", -1.5}, {1, 1, 2.1234567, "mid", 1e-7}, {1, 1, 1e20, "high", 2.1234567}};
        std::string text;
        for (int method = numbers[0]; method <= numbers[1]; ++method) {
            Drill step(1, 1, 0, "x");
            step.Method = method;
            step.CategorySet.insert(all, all + numbers[2]);
            step.ChosenCategory = numbers[3];
            step.Max = numbers[4];
            Analysis().DrillUps->clear();
            Analysis().DrillUps->insert(step);
            text += (text.empty() ? "" : "\n") + Caption();
        }
        return text;
    }
    /// Passes that an operation runs when each is cancelled at its first case.
    std::string CancelledPasses(const std::string& operation) {
        int passes = 0;
        Host().Services.ProgressStarted = [&](auto, auto) { ++passes; };
        Host().Services.BreakRequested = [] { return true; };
        Operations.at(operation)(Analysis());
        return std::to_string(passes);
    }
    template <typename Operation>
    void Lists(const std::string& text, Operation operation) {
        const auto [categorical, continuous] = Split(text, "; ");
        (this->*operation)(Parts(categorical, ','), Parts(continuous, ','));
    }

    quillara::DataTable Input;
    const std::map<std::string, std::function<void(const std::string&)>> Verbs{
        {"table", [this](auto&) { Input = {}; }},
        {"variable",
         [this](auto& text) {
             const auto [name, values] = Split(text, ": ");
             Input.Variables.push_back(Numbers(name, NumbersOf(values)));
             Input.Cases = static_cast<std::int32_t>(Last().Values.size());
         }},
        {"long", [this](auto& text) { Last().LongName = text; }},
        {"label",
         [this](auto& text) {
             const auto [value, label] = Split(text, " ");
             const auto [name, description] = Split(label, "; ");
             Last().Labels[NumberOf(value)] = {name, description};
         }},
        {"header", [this](auto& text) { Input.Header = text; }},
        {"case-names", [this](auto& text) { Input.CaseNames = Parts(text, ','); }},
        {"open", [this](auto&) { ResultsBench::Open(Input); }},
        {"weigh", [this](auto& name) { Weigh(name); }},
        {"choose", [this](auto& text) { Lists(text, &Script::Choose); }},
        {"review", [this](auto& text) { Lists(text, &Script::Review); }},
        {"down", [this](auto& text) { Down(Split(text, "=").first, Split(text, "=").second); }},
        {"take", [this](auto& row) { Take(std::stoi(row)); }},
        {"up", [this](auto& name) { Up(name); }},
        {"categorize",
         [this](auto& text) {
             Categorize(Split(text, ": ").first,
                        [&](Drill& record) { record.Method = std::stoi(Split(text, ": ").second); });
         }},
        {"set",
         [this](auto& text) { Members.at(Split(text, " ").first)(Analysis(), NumberOf(Split(text, " ").second)); }},
        {"drill", [this](auto& text) { SetFields(*Analysis().DrillDowns, text); }},
        {"reviewed", [this](auto& text) { SetFields(*Analysis().Reviews, text); }},
        {"step", [this](auto& text) { SetFields(*Analysis().DrillUps, text); }},
        {"categories", [this](auto& text) { SetCategories(text); }},
        {"stale", [this](auto&) { Analysis().ReadAfterDrill(0); }},
        {"recount", [this](auto&) { Recount(); }},
        {"select", [this](auto& results) { Host().SetSelection(NumbersOf<CaseResult>(results)); }},
        {"shift", [](auto& text) { HostAnswers::DataShift = NumberOf(text); }},
        {"refuse", [](auto& text) { HostAnswers::WritesUntilRefusal = std::stoi(text); }},
        {"answer", [](auto& text) { HostAnswers::Scatterplots = static_cast<short>(std::stoi(text)); }},
        {"answer-itself", [](auto&) { HostAnswers::Scatterplots.reset(); }},
        {"pair", [this](auto& text) { Pair(text); }},
        {"translate", [](auto& text) { HostAnswers::TranslatedText = std::stoi(text); }},
    };
    const std::map<std::string, std::function<std::string(const std::string&)>> Reports{
        {"caption",
         [this](auto&) {
             std::string caption = Caption();
             std::ranges::replace(caption, '\1', '~');  // begins a key
             return caption;
         }},
        {"scatter-caption", [this](auto&) { return LongTextOf(Analysis().ScatterDrillString()); }},
        {"state", [this](auto&) { return State() + ", changed " + std::to_string(Analysis().DataChanged); }},
        {"long-label",
         [this](auto& arguments) {
             const std::vector<std::int16_t> asked = NumbersOf<std::int16_t>(arguments);
             return std::to_string(Analysis().LongDescription(asked[0], asked[1]));
         }},
        {"clauses", [this](auto& arguments) { return Clauses(arguments); }},
        {"brush", [this](auto& arguments) { return Brush(arguments); }},
        {"passes", [this](auto& operation) { return CancelledPasses(operation); }},
    };
};

TEST_P(Script, GoesAsWritten) {
    std::string expected, outcome, place;
    const auto compare = [&] { EXPECT_EQ(std::exchange(outcome, {}), std::exchange(expected, {})) << place; };
    for (const testing_scripts::Line& line : testing_scripts::LinesOf(GetParam())) {
        const std::string& text = line.Text;
        if (text.starts_with('>')) {
            expected += text.substr(std::min<std::size_t>(text.size(), 2)) + '\n';
        } else if (!line.SaysNothing()) {
            compare();
            place = line.Place + ": " + text;
            const bool isOperation = text.starts_with('$') || text.starts_with('%') || text.starts_with('?');
            isOperation ? void(outcome = Outcome(text)) : Do(text);
        }
    }
    compare();
}
INSTANTIATE_TEST_SUITE_P(Results, Script, testing::ValuesIn(testing_scripts::ScriptsIn({"results"})),
                         testing_scripts::NameOf);

}  // namespace
}  // namespace drilltest
