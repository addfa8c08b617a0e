// Sessions of a person with the startup dialog, at random and through its windows alone; the recorded script of each is
// run in a process of its own and must give the same documents.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/Brushing.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "tests/workbench/Files.h"
#include "workbench/data/Errors.h"
#include "workbench/dialogs/CaseSelectionDialog.h"
#include "workbench/dialogs/DialogIds.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/dialogs/WeightDialog.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/documents/OutputCollection.h"
#include "workbench/formats/DataFile.h"
#include "workbench/formats/Dictionary.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisModule.h"
#include "workbench/recording/SessionRecorder.h"
#include "workbench/views/DocumentViews.h"

namespace recordingtest {
namespace {

using namespace quillara;
using Texts = std::vector<std::string>;

// Names that begin alike, are numbers or hold signs of the notation, and names in other scripts.
constexpr const char* People =
    "2,a,A: b,\"18-25\",ab,Größe,年齢,\"q\"\"|x\",w\n"
    "1,p,x,1,10,0.5,2,1,1\n1,2,x y,2,20,1.5,2,1,0.5\n2,10,x,1,30,2.5,3,2,2\n2,18-25,\"a: b\",3,40,NA,1,2,1\n"
    "1,p,x,2,50,0.25,5,3,\n1,P q,\"x | 1 y\",1,60,8,8,1,3\n3,2,X,3,70,9,13,2,1\n2,missing,x,1,80,3,21,3,1\n"
    "2,p,\"\"\"x\"\"\",2,90,3.5,2,,1\n3,Ωμέγα,x,1,15,4.123456789,1,1,0.25\n1,2,x y,2,25,4.5,1,2,1\n1,,x,,35,5,1,3,2\n"
    "2,10,Missing,1,45,6,NA,1,1\n2,18-25,x,3,NA,7,4,1,-1\n1,p,x,3,55,2,6,2,1\n3,日本語のとても長い名前,x,1,65,1,7,1,"
    "1\n";
// Equal labels, labels that look like numbers, and long ones.
constexpr const char* Labels =
    "variable,value,label,description\n\"18-25\",1,yes,the first\n\"18-25\",2,yes,\n\"18-25\",3,2,\n"
    "2,1,Never married and long,\n2,2,Never married and longer,\n2,3,\"a, b\",\n";
constexpr const char* Others = "u,v,Größe\nk,1,3\nl,2,4\nk,3,5\nm,4,NA\nk,5,7\n";

class Session : public StepRecorder {
  public:
    Session(unsigned seed, const Texts& files)
        : Random(seed),
          Files(files),
          Recorder({.File = files[0], .DictionaryFile = files[1]}),
          Table(ReadDataFile(files[0])),
          Library(AnalysisModule::DrillDownPath()),
          Analysis(Table) {
        ApplyDictionary(Table, files[1]);
        Analysis.Services.Recorder = this;
        Analysis.Services.Trace = [this](std::string_view call) { Log += "  " + std::string(call) + '\n'; };
        Analysis.Services.WorkIn = [this](Window& window) { return WorkIn(window); };
        Analysis.Services.Brush = [this](BrushingRun& run) { return PickBar(run); };
        Analysis.Services.TakeDocument = [this](ResultDocument& document) { Take(document, false); };
        Analysis.Services.HearStandAlone = [this](ResultDocument& document) { Take(document, true); };
        Analysis.Adopt(Library.NewAnalysis());
        EXPECT_TRUE(Analysis.RunSequence());
        Present();
    }

    void Run(int commands) {
        Click(DrillVariablesButton);
        for (int command = 0; command < commands; ++command) {
            Act();
            Analysis.RunMessages();
        }
    }
    std::string Script() { return Recorder.Text(); }

    /// What has been made and is left open, as programs read it.
    std::string Documents() {
        std::vector<OutputCollection> all;
        for (TableRun& run : Runs) {
            std::erase_if(run.Taken, [](const Kept& kept) {
                return kept.Document->IsClosed() || (kept.StandsAlone && !kept.Document->IsVisible());
            });
            std::ranges::sort(run.Taken, {},
                              [](const Kept& kept) { return std::pair(kept.Step, kept.Document->Number()); });
            for (const Kept& kept : run.Taken) {
                run.Shown.Step = kept.Step;
                DocumentOrigin origin = kept.Document->Origin();
                origin.Sequence += kept.EarlierPairs;
                run.Shown.Add(kept.Document->Content(), origin);
            }
            all.push_back(std::move(run.Shown));
        }
        return ViewOf(all, OutputFormat::Json);
    }

    std::string Log;

  private:
    struct Kept {
        CountedPointer<ResultDocument> Document;
        int Step;
        int EarlierPairs;  ///< 3D histograms of earlier presses in the step
        bool StandsAlone;
    };
    /// What has been made of one table.
    struct TableRun {
        const DataTable* Table;
        int Steps = 0;
        std::vector<Kept> Taken;
        OutputCollection Shown;
    };

    int Below(std::size_t limit) { return std::uniform_int_distribution<int>(0, static_cast<int>(limit) - 1)(Random); }
    bool Chance(int percent) { return Below(100) < percent; }
    template <typename Values>
    auto AnyOf(const Values& values) {
        return values[static_cast<std::size_t>(Below(std::size(values)))];
    }
    Window& Startup() { return *Analysis.StartupWindow(); }
    bool CanUse(Window& window, int id) { return window.At(id).Enabled && window.At(id).Visible; }

    // Documents

    TableRun& Present() {
        const DataTable& table = Analysis.Table();
        if (Runs.empty() || Runs.back().Table != &table) {
            Runs.push_back({&table, 0, {}, {}});
            Runs.back().Shown.FileName = table.FileName;
            Runs.back().Shown.Cases = table.Cases;
            Runs.back().Shown.Variables = static_cast<int>(table.Variables.size());
        }
        return Runs.back();
    }
    void Take(ResultDocument& document, bool standsAlone) {
        for (TableRun& run : Runs) {
            std::erase_if(run.Taken, [&document](const Kept& kept) { return kept.Document.Get() == &document; });
        }
        TableRun& run = Present();
        run.Taken.push_back({CountedPointer<ResultDocument>::Share(&document), run.Steps,
                             standsAlone ? 0 : EarlierPairs(run, document), standsAlone});
    }

    static int EarlierPairs(const TableRun& run, const ResultDocument& document) {
        const auto isPair = [&run](const Kept& kept) {
            return kept.Step == run.Steps && kept.Document->Origin().Command == Review3DHistogramsButton;
        };
        const auto last = std::find_if(run.Taken.rbegin(), run.Taken.rend(), isPair);
        if (document.Origin().Command != Review3DHistogramsButton || last == run.Taken.rend()) {
            return 0;
        }
        return document.Origin().Sequence == 1 ? static_cast<int>(std::ranges::count_if(run.Taken, isPair))
                                               : last->EarlierPairs;
    }

    // The recorder hears all; the session counts its steps

    void RecordStep(CAnalysisDoc& document, const std::vector<RecordedValue>& values, int control) override {
        ++Present().Steps;
        Recorder.RecordStep(document, values, control);
    }
    void RecordMethod(CAnalysisDoc& document, int control) override { Recorder.RecordMethod(document, control); }
    void RecordOutput(CAnalysisDoc& document, int control) override { Recorder.RecordOutput(document, control); }
    void BeginCommand(CAnalysisDoc& document, int control) override { Recorder.BeginCommand(document, control); }
    void EndCommand(CAnalysisDoc& document, int control) override { Recorder.EndCommand(document, control); }
    void RecordCall(const Window& window, const WindowCall& call) override { Recorder.RecordCall(window, call); }
    void RecordAnswer(Window& window) override { Recorder.RecordAnswer(window); }
    void RecordPick(const BrushingRun& run) override { Recorder.RecordPick(run); }
    void RecordDocument(const ResultDocument& document) override { Recorder.RecordDocument(document); }
    void RecordClose(const ResultDocument& document) override { Recorder.RecordClose(document); }

    // Modal windows; one that isn't confirmed is left to be cancelled

    bool WorkIn(Window& window) {
        switch (window.Resource().Id) {
            case CategoryDialog:
                return TakeCategory(window);
            case OrderDialog:
                return ChangeOrder(window);
            case BoundariesDialog:
                window.Type(BoundariesEdit,
                            AnyOf(std::array{"30 60", "2", "0.1234567 2.5", "1e-7 5 1000", "9 1", "x"}));
                return Confirm(window, 80);
            case CaseSelectionDialogId:
                return SelectCases(window);
            case WeightDialogId:
                return ChooseWeight(window);
            case OpenDataDialogId:
                return OpenData(window);
            default:
                return ChooseVariables(window);
        }
    }
    bool Confirm(Window& window, int percent) {
        if (Chance(percent)) {
            window.Click(OkCommand);
        }
        return window.IsClosed();
    }
    void ClickAnyRow(Window& window, int list) {
        const Control& control = window.At(list);
        const std::size_t rows = std::max(control.Rows.size(), control.ReportRows.size());
        if (rows > 0 && CanUse(window, list)) {
            window.ClickRow(list, Below(rows));
        }
    }
    void ClickIfUsable(Window& window, int id) {
        if (CanUse(window, id)) {
            window.Click(id);
        }
    }

    bool TakeCategory(Window& window) {
        const std::size_t rows = window.At(CategoryListControl).ReportRows.size();
        if (rows == 0 || Chance(12)) {
            return false;
        }
        if (Chance(30)) {
            window.DoubleClickRow(CategoryListControl, Below(rows));
            return true;
        }
        ClickAnyRow(window, CategoryListControl);
        return Confirm(window, 95);
    }
    bool ChangeOrder(Window& window) {
        for (int moves = Below(6); moves > 0; --moves) {
            const bool places = Chance(70);
            ClickAnyRow(window, places ? CurrentOrderList : NewOrderList);
            ClickIfUsable(window, places ? PlaceButton : TakeBackButton);
        }
        return Confirm(window, 80);
    }
    bool SelectCases(Window& window) {
        window.Click(Chance(75) ? CaseSelectionDialog::SelectedCases : CaseSelectionDialog::AllCases);
        if (CanUse(window, CaseSelectionDialog::Formula)) {
            window.Type(CaseSelectionDialog::Formula, AnyOf(std::array{"[ab] > 20", "[Größe] < 8", "not missing(a)",
                                                                       "a = \"p\"", "[18-25] = \"yes\"", "?"}));
        }
        return Confirm(window, 85);
    }
    bool ChooseWeight(Window& window) {
        ClickIfUsable(window, WeightDialog::NoWeight);
        ClickAnyRow(window, WeightDialog::VariableList);
        return Confirm(window, 85);
    }
    bool OpenData(Window& window) {
        if (CanUse(window, OpenDataDialog::FromRun) && Chance(50)) {
            window.Click(OpenDataDialog::FromRun);
            ClickAnyRow(window, OpenDataDialog::TableList);
        } else {
            window.Type(OpenDataDialog::Path, AnyOf(std::array{Files[0], Files[2], std::string("nowhere.csv")}));
        }
        return Confirm(window, 60);
    }
    bool ChooseVariables(Window& window) {
        const bool isFirst = std::exchange(HasChosen, true) == false;
        using Dialog = VariableListsDialog;
        for (int moves = isFirst ? 9 : Below(12); moves > 0; --moves) {
            const bool isSecond = Chance(60);
            if (isFirst || Chance(75)) {
                ClickAnyRow(window, Dialog::AvailableList);
                ClickIfUsable(window, isSecond ? Dialog::AddToSecond : Dialog::AddToFirst);
            } else {
                ClickAnyRow(window, isSecond ? Dialog::SecondList : Dialog::FirstList);
                ClickIfUsable(window, isSecond ? Dialog::TakeFromSecond : Dialog::TakeFromFirst);
            }
        }
        return Confirm(window, isFirst ? 100 : 85);
    }
    bool PickBar(BrushingRun& run) {
        if (Chance(35)) {
            return false;
        }
        run.Regions.setSelected(Below(run.Regions.Regions().size() + 1) - 1);
        run.Choice = Below(run.Options.size());
        return true;
    }

    // Commands

    void Click(int id) {
        ClickIfUsable(Startup(), id);
        Analysis.RunMessages();
    }
    void Press(int id) { Click(id); }
    void Pick(int list) { ClickAnyRow(Startup(), list); }
    void Drag(int list) {
        if (const auto rows = Startup().At(list).Rows.size(); rows > 0 && CanUse(Startup(), list)) {
            Startup().Drag(list, Below(rows + 1));
        }
    }
    void Categorize(int firstMethod) {
        Click(firstMethod + Below(6));
        for (const int field : {ExactCountField, NeatCountField, StepSizeField, StepStartField}) {
            if (CanUse(Startup(), field) && Chance(60)) {
                Startup().TypeNumber(field, AnyOf(std::array{2.0, 3.0, 7.0, 0.1, 0.5, 0.0, 15.0, 1.0 / 3.0, -4.0}));
            }
        }
        if (Chance(30)) {
            Click(StartAtMinimumBox);
        }
    }
    void PickAndCategorize(int list) {
        Pick(list);
        Categorize(DistinctValuesRadio);
        if (Chance(30)) {
            Click(BoundariesButton);
        }
    }
    void Toggle(int /*unused*/) {
        Click(AnyOf(std::array{AutoUpdateBox, AutoUpdateBox, ReviewCasewiseBox, CasewiseBox, CountMissingBox,
                               WeightedMomentsBox, MedianQuartileRangeBox, MeanSEAndSDBox, MeanSD196TimesSDBox,
                               MeanSE196TimesSEBox}));
    }
    void Show(int /*unused*/) {
        Click(AnyOf(std::array{SummaryButton, DescriptivesButton, FrequenciesButton, HistogramsButton, PieChartsButton,
                               SaveDataButton, ReviewDescriptivesButton, ReviewFrequenciesButton,
                               ReviewHistogramsButton, ReviewBoxWhiskerButton, ReviewScatterplotButton,
                               ReviewPieChartsButton, Review3DHistogramsButton}));
    }
    void CloseDocument(int /*unused*/) {
        TableRun& run = Runs.back();
        const auto windows = Analysis.Documents().InWindows();
        ResultDocument* document = !windows.empty() && Chance(60) ? AnyOf(windows)
                                   : run.Taken.empty()            ? nullptr
                                                                  : AnyOf(run.Taken).Document.Get();
        if (document != nullptr && document->Origin().Command != BrushButton) {
            document->Close();
        }
    }

    void Act() {
        struct Command {
            const char* Name;
            int Share;  ///< of 100
            int Control;
            void (Session::*Run)(int control);
        };
        // clang-format off
        static constexpr std::array commands{
            //      Name              Share Control               Run
            Command{"pick",             11, DrillDownListControl, &Session::Pick},
            Command{"pick up",           7, DrillUpListControl,   &Session::Pick},
            Command{"categorize",        6, DistinctValuesRadio,  &Session::Categorize},
            Command{"pick, categorize",  6, DrillDownListControl, &Session::PickAndCategorize},
            Command{"down",             17, DownButton,           &Session::Press},
            Command{"up",                9, UpButton,             &Session::Press},
            Command{"order",             3, OrderButton,          &Session::Press},
            Command{"drag",              3, DrillDownListControl, &Session::Drag},
            Command{"drag up",           3, DrillUpListControl,   &Session::Drag},
            Command{"toggle",            5, 0,                    &Session::Toggle},
            Command{"boundaries",        3, BoundariesButton,     &Session::Press},
            Command{"show",             13, 0,                    &Session::Show},
            Command{"brush",             4, BrushButton,          &Session::Press},
            Command{"reviews",           3, ReviewVariablesButton, &Session::Press},
            Command{"select",            2, SelectCasesButton,    &Session::Press},
            Command{"weight",            2, WeightButton,         &Session::Press},
            Command{"close",             2, 0,                    &Session::CloseDocument},
            Command{"open",              1, OpenDataButton,       &Session::Press},
        };
        // clang-format on
        const auto* command = commands.begin();
        for (int drawn = Below(100); drawn >= command->Share; ++command) {
            drawn -= command->Share;
        }
        Log += std::string(command->Name) + '\n';
        (this->*command->Run)(command->Control);
    }

    std::mt19937 Random;
    bool HasChosen = false;
    const Texts Files;
    SessionRecorder Recorder;
    DataTable Table;
    std::vector<TableRun> Runs;
    AnalysisModule Library;
    AnalysisDocument Analysis;
};

int SessionsWanted() {
    const char* wanted = std::getenv("QUILLARA_SESSIONS");
    return wanted == nullptr ? 1000 : std::atoi(wanted);
}

TEST(Replay, RecordedScriptsGiveTheDocumentsOfTheirSessions) {
    const TemporaryFolder folder;
    const Texts files{folder.Put("people.csv", People), folder.Put("labels.csv", Labels),
                      folder.Put("others.csv", Others)};
    const int sessions = SessionsWanted();
    for (int seed = 1; seed <= sessions; ++seed) {
        Session session(static_cast<unsigned>(seed), files);
        session.Run(10 + seed % 40);
        folder.Put(std::to_string(seed) + ".py", session.Script());
        folder.Put(std::to_string(seed) + ".json", session.Documents());
        folder.Put(std::to_string(seed) + ".txt", session.Log);
    }
    if (!std::filesystem::exists(testing_locations::Library("python/quillara"))) {
        GTEST_SKIP() << "this build has no Python package";
    }
    const std::string replay = testing_locations::Program() + " run " + testing_locations::Replayer() + " " +
                               folder.Path("") + " " + std::to_string(sessions);
    EXPECT_EQ(std::system(replay.c_str()), 0);
}

}  // namespace
}  // namespace recordingtest
