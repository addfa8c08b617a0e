// Runs the courses of actions in the text files of this folder and of tests/navigation; courses.md tells how they are
// written.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <numeric>
#include <sstream>

#include "tests/Locations.h"
#include "tests/engine/DrillBench.h"

namespace drilltest {

namespace {

using Words = Names;

Words Split(std::string text, char separator) {
    std::replace(text.begin(), text.end(), separator, ' ');
    std::istringstream stream(text);
    Words words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

/// "." is missing, "1~15" lies 15 representable numbers above 1.
double ValueOf(const std::string& word) {
    const std::size_t units = word.find('~');
    return word == "."                  ? NA
           : units == std::string::npos ? std::stod(word)
                                        : Moved(std::stod(word), std::stoll(word.substr(units + 1)));
}

/// The values of the words from one on; "0..9" are the whole numbers from 0 to 9.
std::vector<double> ValuesOf(const Words& words, std::size_t from) {
    std::vector<double> values;
    for (std::size_t i = from; i < words.size(); ++i) {
        const std::size_t dots = words[i].find("..");
        const double last = ValueOf(dots == std::string::npos ? words[i] : words[i].substr(dots + 2));
        values.push_back(dots == std::string::npos ? last : ValueOf(words[i].substr(0, dots)));
        while (values.back() < last) {
            values.push_back(values.back() + 1);
        }
    }
    return values;
}

int FirstNumber(const Words& words) {
    return std::stoi(words.at(0));
}

std::int16_t FirstShort(const Words& words) {
    return static_cast<std::int16_t>(FirstNumber(words));
}

/// "a b / c", or nothing where the user cancels the dialog.
std::optional<VariableLists> ListsOf(const DrillBench& bench, const Words& words) {
    if (words == Words{"cancelled"}) {
        return std::nullopt;
    }
    VariableLists lists;
    bool second = false;
    for (const std::string& word : words) {
        second = second || word == "/";
        if (word != "/") {
            (second ? lists.Second : lists.First).push_back(bench.Number(word));
        }
    }
    return lists;
}

bool IsReview(const std::string& name) {
    return name.starts_with("review:");
}

/// The record that a course calls "x", "step:x" or "review:x".
Drill& RecordOf(const DrillBench& bench, const std::string& name) {
    const CDrillDown& analysis = bench.Analysis();
    const CDrillDown::DrillSet* set = IsReview(name)              ? analysis.Reviews
                                      : name.starts_with("step:") ? analysis.DrillUps
                                                                  : analysis.DrillDowns;
    return bench.RecordIn(*set, name.substr(name.find(':') + 1));
}

/// Sets members of a record: "Method=5 Boundaries=2,6".
void Set(Drill& record, const Words& members) {
    static const std::map<std::string, std::int32_t Drill::*> whole{{"Method", &Drill::Method},
                                                                    {"ExactCount", &Drill::ExactCount},
                                                                    {"NeatCount", &Drill::NeatCount},
                                                                    {"StartAtMin", &Drill::StartAtMin},
                                                                    {"Chosen", &Drill::ChosenCategory}};
    static const std::map<std::string, double Drill::*> real{
        {"StepSize", &Drill::StepSize}, {"StepStart", &Drill::StepStart}, {"Min", &Drill::Min}, {"Max", &Drill::Max}};
    for (const std::string& member : members) {
        const Words pair = Split(member, '=');
        if (pair.at(0) == "Boundaries") {
            const std::vector<double> bounds = ValuesOf(Split(pair.at(1), ','), 0);
            record.NU = static_cast<std::int32_t>(bounds.size());
            std::copy(bounds.begin(), bounds.end(), record.UserInterv.begin());
        } else if (whole.contains(pair[0])) {
            record.*whole.at(pair[0]) = std::stoi(pair.at(1));
        } else {
            record.*real.at(pair[0]) = ValueOf(pair.at(1));
        }
    }
}

/// "lower..upper name, ...", with a "*" behind categories that aren't intervals and the count unless it is 0.
std::string CutText(const Drill& record) {
    std::ostringstream text;
    for (const Categories& category : record.CategorySet) {
        text << (text.tellp() > 0 ? ", " : "") << category.Lower << ".." << category.Upper << ' ' << category.Name
             << (category.Kind == 1 ? "" : "*");
        if (category.Count != 0) {
            text << ':' << category.Count;
        }
    }
    return text.str();
}

/// The categories that an own record gets in place of an old one.
std::string Cut(const Words& members) {
    Drill record(1, ContinuousVariable, 0, "x");
    record.CategorySet = {{0, 3.0, 7.0, "old", 7.0}};
    Set(record, members);
    record.RebuildCategories();
    return CutText(record);
}

/// "Z0 Y1 | X0": steps and open variables with their Order, and the chosen category where an open one has any.
std::string OrderText(const CDrillDown& analysis) {
    std::string text;
    for (const CDrillDown::DrillSet* set : {analysis.DrillUps, analysis.DrillDowns}) {
        for (const Drill& record : *set) {
            const bool chosen = set == analysis.DrillDowns && record.ChosenCategory != -1;
            text += record.Name + std::to_string(record.Order) + (chosen ? "(chosen) " : " ");
        }
        text += set == analysis.DrillUps ? "| " : "";
    }
    return text.substr(0, text.size() - 1);
}

std::string NameOf(const DrillBench& bench, int var) {
    const bool exists = var >= 1 && var <= bench.Analysis().Table.Variables;
    return exists ? bench.Analysis().VariableDisplayName(static_cast<std::int16_t>(var)) : std::to_string(var);
}

/// The names of the categories, between bars.
std::string CategoryNames(const Drill& record) {
    return std::accumulate(record.CategorySet.begin(), record.CategorySet.end(), std::string("|"),
                           [](auto text, auto& category) { return text + category.Name + '|'; });
}

void SetHistograms(CDrillDown& analysis, const VariableLists& lists) {
    analysis.FirstVarCount = static_cast<std::int16_t>(lists.First.size());
    analysis.SecondVarCount = static_cast<std::int16_t>(lists.Second.size());
    std::copy(lists.First.begin(), lists.First.end(), analysis.FirstVarList);
    std::copy(lists.Second.begin(), lists.Second.end(), analysis.SecondVarList);
}

/// "a b / c": the lists of the 3D histograms.
std::string HistogramText(const DrillBench& bench) {
    const CDrillDown& analysis = bench.Analysis();
    const auto names = [&](const std::int16_t* list, int count) {
        return std::accumulate(list, list + count, std::string(),
                               [&](const std::string& text, int var) { return text + NameOf(bench, var) + ' '; });
    };
    return names(analysis.FirstVarList, analysis.FirstVarCount) + "/ " +
           names(analysis.SecondVarList, analysis.SecondVarCount);
}

/// "1: 0 8 0 9 10": the method of the current record, its type and parameters.
std::string Parameters(const CDrillDown& analysis) {
    int type = -1, count = -1, atMin = -1;
    double step = -1, start = -1;
    std::ostringstream text;
    text << analysis.GetDrillMethod(type, count, atMin, step, start) << ": ";
    text << type << ' ' << count << ' ' << atMin << ' ' << step << ' ' << start;
    return text.str();
}

/// "drills" or "reviews" or both: whose casewise deletion takes a case in which only this variable is missing.
std::string DeletedFor(const DrillBench& bench, const std::string& name) {
    std::vector<double> values(static_cast<std::size_t>(bench.Analysis().Table.Variables) + 1, 1.0);
    bench.Analysis().getmd5(bench.Number(name), &values[static_cast<std::size_t>(bench.Number(name))]);
    return std::string(bench.Analysis().SetMissingData(values.data()) == 1 ? "drills" : "") +
           (bench.Analysis().MDReviews(values.data()) == 1 ? "reviews" : "");
}

/// How many messages were shown since the last time; all tell that memory is short.
std::size_t Told(DrillBench& bench) {
    const Names messages = bench.TakeMessages();
    EXPECT_EQ(messages, Names(messages.size(), NotEnoughMemory));
    return messages.size();
}

void SetCounts(Drill& record, const std::vector<double>& counts) {
    record.CategorySet.clear();
    for (const double count : counts) {
        record.CategorySet.insert({0, count, static_cast<double>(record.CategorySet.size()), "", 0});
    }
}

std::string Reorder(CDrillDown& analysis, const Words& words) {
    std::vector<std::int32_t> request;
    std::transform(words.begin() + 2, words.end(), std::back_inserter(request), [](auto& word) { return stoi(word); });
    const auto reorder = words.at(0) == "steps" ? &CDrillDown::ReorderDrillUps : &CDrillDown::ReorderDrillDowns;
    (analysis.*reorder)(request.data(), static_cast<int>(request.size()), std::stoi(words.at(1)));
    const CDrillDown::DrillSet& set = words.at(0) == "steps" ? *analysis.DrillUps : *analysis.DrillDowns;
    return std::accumulate(set.begin(), set.end(), std::string(),
                           [](auto text, auto& each) { return text + each.Name; });
}

/// Moves a variable to the steps, on a row of its list, without a pass. Gives the category that it came to.
int Move(DrillBench& bench, const Words& words) {
    bench.Analysis().SetCurrentDown(bench.Number(words.at(0)));
    bench.Analysis().SetSelected(std::stoi(words.at(1)));
    bench.Analysis().MoveToDrillUps();
    return bench.Analysis().DrillUps->begin()->ChosenCategory;
}

/// What a word at the beginning of a line does; gives what the line says behind its arrow.
struct Verb {
    template <typename Action>
    Verb(Action action)
        : Act([action](DrillBench& bench, const Words& words) {
              std::ostringstream text;
              if constexpr (std::is_void_v<decltype(action(bench, words))>) {
                  action(bench, words);
              } else {
                  text << action(bench, words);
              }
              return text.str();
          }) {}
    std::function<std::string(DrillBench&, const Words&)> Act;
};

using Bench = DrillBench;

// clang-format off
const std::map<std::string, Verb> Verbs{
    {"choose",    [](Bench& b, const Words& w) { return b.ChooseLists(ListsOf(b, w)); }},
    {"review",    [](Bench& b, const Words& w) { return b.ReviewLists(ListsOf(b, w)); }},
    {"weigh",     [](Bench& b, const Words& w) { b.Weigh(w.at(0)); }},
    {"moments",   [](Bench& b, const Words& w) { b.Analysis().SetWM(FirstShort(w)); }},
    {"count-missing", [](Bench& b, const Words& w) { b.Analysis().SetCountMD(FirstShort(w)); }},
    {"casewise",  [](Bench& b, const Words& w) { b.Analysis().SetMD(FirstShort(w)); }},
    {"casewise-reviews", [](Bench& b, const Words& w) { b.Analysis().SetRVMD(FirstShort(w)); }},
    {"change",    [](Bench& b, const Words&) { b.Analysis().DataChanged = 1; }},
    {"down",      [](Bench& b, const Words& w) { b.Down(w.at(0), w.at(1)); return b.State(); }},
    {"row",       [](Bench& b, const Words& w) { b.Analysis().SetCurrentDown(b.Number(w.at(0))); b.Take(std::stoi(w.at(1))); return b.State(); }},
    {"move",      [](Bench& b, const Words& w) { return Move(b, w); }},
    {"up",        [](Bench& b, const Words& w) { b.Up(w.at(0)); return b.State(); }},
    {"set",       [](Bench& b, const Words& w) { Set(RecordOf(b, w.at(0)), {w.begin() + 1, w.end()}); }},
    {"categorize", [](Bench& b, const Words& w) { b.Categorize(w.at(0), [&](Drill& r) { Set(r, {w.begin() + 1, w.end()}); }); }},
    {"counts",    [](Bench& b, const Words& w) { SetCounts(RecordOf(b, w.at(0)), ValuesOf(w, 1)); }},
    {"interval",  [](Bench& b, const Words& w) { RecordOf(b, w.at(0)).CategorySet = {{1, 1.0, std::stod(w.at(2)), "", std::stod(w.at(1))}}; }},
    {"read",      [](Bench& b, const Words&) { return b.Analysis().ReadAfterDrill(0); }},
    {"recount",   [](Bench& b, const Words&) { return b.Analysis().ReadBeforeDrill(0); }},
    {"neat",      [](Bench& b, const Words&) { return b.Analysis().SetNeatIntervals(); }},
    {"neat-reviews", [](Bench& b, const Words&) { return b.Analysis().SetReviewsIntervals(); }},
    {"continuous", [](Bench& b, const Words&) { return b.Analysis().SetContinuousIntervals(); }},
    {"fill-neat", [](Bench& b, const Words&) { return b.Analysis().FillNeatIntervals(); }},
    {"fill-continuous", [](Bench& b, const Words&) { return b.Analysis().FillContinuousIntervals(); }},
    {"reset",     [](Bench& b, const Words&) { return b.Analysis().ResetMembers(); }},
    {"cancel-at", [](Bench& b, const Words& w) { b.CancelAt(FirstNumber(w)); }},
    {"focus",     [](Bench& b, const Words& w) { b.Focus(b.Number(w.at(0))); }},
    {"point-up",  [](Bench& b, const Words& w) { b.Analysis().SetCurrentUp(b.Number(w.at(0))); }},
    {"select",    [](Bench& b, const Words& w) { return b.Analysis().SetSelectedItem(FirstNumber(w)) == b.Analysis().GetSelected() ? b.Analysis().GetSelected() : -2; }},
    {"place",     [](Bench& b, const Words& w) { return NameOf(b, b.Analysis().SetCurrentUpItem(FirstShort(w))); }},
    {"place?",    [](Bench& b, const Words&) { return b.Analysis().GetCurrentUpItem(); }},
    {"reorder",   [](Bench& b, const Words& w) { return Reorder(b.Analysis(), w); }},
    {"state",     [](Bench& b, const Words&) { return b.State(); }},
    {"show",      [](Bench& b, const Words& w) { return IsReview(w.at(0)) ? b.Reviewed(w[0].substr(7)) : b.Open(w[0]); }},
    {"bounds",    [](Bench& b, const Words& w) { return CutText(RecordOf(b, w.at(0))); }},
    {"cut",       [](Bench&, const Words& w) { return Cut(w); }},
    {"describe-review", [](Bench& b, const Words& w) { return b.Analysis().SetReviewDescriptives(b.Number(w.at(0)), 1, 2, 3, 4); }},
    {"squares",   [](Bench& b, const Words& w) { return RecordOf(b, w.at(0)).SumSquares; }},
    {"min",       [](Bench& b, const Words& w) { return RecordOf(b, w.at(0)).Min; }},
    {"max",       [](Bench& b, const Words& w) { return RecordOf(b, w.at(0)).Max; }},
    {"chosen",    [](Bench& b, const Words& w) { return RecordOf(b, w.at(0)).ChosenCategory; }},
    {"order",     [](Bench& b, const Words&) { return OrderText(b.Analysis()); }},
    {"current",   [](Bench& b, const Words&) { return NameOf(b, b.Analysis().GetCurrentDown()) + ' ' + NameOf(b, b.Analysis().GetCurrentUp()); }},
    {"shown",     [](Bench& b, const Words&) { return b.Analysis().GetCurrentDrillUpName() + NameOf(b, b.Analysis().GetCurrentDrillUp()) + b.Analysis().GetCurrentVariableName() + NameOf(b, b.Analysis().GetCurrentDrillDown()); }},
    {"method",    [](Bench& b, const Words&) { return b.Analysis().GetCurrentMethod(); }},
    {"drops",     [](Bench& b, const Words& w) { std::vector<double> values = ValuesOf(w, 0); values.insert(values.begin(), 0.0); return b.Analysis().HasBeenDrilled(values.data()); }},
    {"reviews",   [](Bench& b, const Words&) { return b.Analysis().GetDrillReviewsSize(); }},
    {"first-reviewed", [](Bench& b, const Words&) { return NameOf(b, b.Analysis().AllReviewVars[0]); }},
    {"selected",  [](Bench& b, const Words& w) { return b.Analysis().SelectedVariable(b.Number(w.at(0))); }},
    {"categorical", [](Bench& b, const Words& w) { return b.Analysis().IsCategoricalVariable(b.Number(w.at(0))); }},
    {"deleted-for", [](Bench& b, const Words& w) { return DeletedFor(b, w.at(0)); }},
    {"polls",     [](Bench& b, const Words&) { return b.Polls(); }},
    {"settings",  [](Bench& b, const Words&) { return std::to_string(b.Analysis().GetWM()) + ' ' + std::to_string(b.Analysis().GetCountMD()) + ' ' + std::to_string(b.Analysis().DataChanged); }},
    {"messages",  [](Bench& b, const Words&) { return Told(b); }},
    {"fail",      [](Bench& b, const Words& w) { b.Host().FailAllocation(FirstNumber(w)); }},
    {"live",      [](Bench& b, const Words&) { return b.Host().LiveAllocations(); }},
    {"start",     [](Bench& b, const Words&) { return b.Host().RunSequence(); }},
    {"names",     [](Bench& b, const Words& w) { return CategoryNames(RecordOf(b, w.at(0))); }},
    {"histograms", [](Bench& b, const Words& w) { SetHistograms(b.Analysis(), *ListsOf(b, w)); }},
    {"histograms?", [](Bench& b, const Words&) { return HistogramText(b); }},
    {"parameters", [](Bench& b, const Words&) { return Parameters(b.Analysis()); }},
    {"add",       [](Bench& b, const Words& w) { return b.Analysis().AddCategories(ValueOf(w.at(1)), b.Number(w[0]), 0.5); }},
    {"take-over", [](Bench& b, const Words& w) { b.Analysis().NumOfCases = FirstNumber(w); return b.Analysis().SetNumOfCases(); }},
    {"rename",    [](Bench& b, const Words& w) { Editable(*RecordOf(b, w.at(0)).CategorySet.begin()).Name = w.at(1); }},
    {"missing",   [](Bench& b, const Words&) { return b.Analysis().GetCurrentMCount(); }},
    {"change-nothing", [](Bench& b, const Words&) { return b.Analysis().SetCurrentCategories(1, 2, 3, 4, 5); }},
};
// clang-format on

/// Goes through a course line by line.
struct Course {
    explicit Course(Road road) : Bench(road) {}

    void Take(const std::string& line) {
        const std::size_t arrow = line.find(" ->");
        Words words = Split(line.substr(0, arrow), ' ');
        if (const auto equals = std::find(words.begin(), words.end(), "="); equals != words.end()) {
            return TakeColumn(words, equals);
        }
        if (words.at(0) == "label" || words[0] == "kind") {
            return Describe(words[1], line.substr(line.find(words[1])));
        }
        if (!std::exchange(IsOpen, true)) {
            Bench.Open(std::exchange(Columns, {}));
        }
        const Verb& verb = Verbs.at(words.at(0));
        words.erase(words.begin());
        const std::string given = verb.Act(Bench, words);
        if (arrow != std::string::npos) {
            EXPECT_EQ(given, line.substr(std::min(arrow + 4, line.size())));
        }
    }
    /// "x = 1 2 .", or "x -9999 = 1 2", whose values are taken as they are.
    void TakeColumn(const Words& words, Words::const_iterator equals) {
        IsOpen = false;
        const std::vector<double> values = ValuesOf({equals + 1, words.end()}, 0);
        Columns.push_back(equals == words.begin() + 1 ? Numbers(words[0], values)
                                                      : RawNumbers(words[0], values, ValueOf(words[1])));
    }

    /// "label 1 Male", "kind Date": of the variable before.
    void Describe(const std::string& word, const std::string& rest) {
        using enum quillara::ValueKind;
        if (word == "Date" || word == "TimeOfDay") {
            Columns.back().Kind = word == "Date" ? Date : TimeOfDay;
        } else {
            Columns.back().Labels[ValueOf(word)] = {rest.substr(word.size() + 1), ""};
        }
    }

    DrillBench Bench;
    std::vector<quillara::Variable> Columns;
    bool IsOpen = false;
};

Names CourseFiles() {
    Names files;
    for (const char* folder : {"../tests/engine", "../tests/navigation"}) {
        for (const auto& entry : std::filesystem::directory_iterator(testing_locations::Sample(folder))) {
            if (entry.path().extension() == ".txt") {
                files.push_back(entry.path());
            }
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

struct CourseTest : testing::TestWithParam<std::string> {};

TEST_P(CourseTest, GoesAsWritten) {
    for (const Road road : {Road::CaseByCase, Road::Columns}) {
        Course course{road};
        std::ifstream file(GetParam());
        int number = 0;
        for (std::string line; std::getline(file, line);) {
            SCOPED_TRACE(GetParam() + ":" + std::to_string(++number) + ": " + line);
            if (!line.empty() && line.front() != '#') {
                ASSERT_NO_THROW(course.Take(line));
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Courses, CourseTest, testing::ValuesIn(CourseFiles()),
                         [](const auto& file) { return std::filesystem::path(file.param).stem().string(); });

}  // namespace

}  // namespace drilltest
