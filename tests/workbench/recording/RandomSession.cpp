#include "tests/workbench/recording/RandomSession.h"
#include "tests/Shares.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "host/Brushing.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "workbench/dialogs/CaseSelectionDialog.h"
#include "workbench/dialogs/DialogIds.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/dialogs/WeightDialog.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/formats/DataFile.h"
#include "workbench/formats/Dictionary.h"
#include "workbench/views/DocumentViews.h"

namespace recordingtest {
namespace {

constexpr std::array ResultButtons{SummaryButton,          DescriptivesButton,       FrequenciesButton,
                                   HistogramsButton,       PieChartsButton,          SaveDataButton,
                                   StackedPlotsButton,     ReviewDescriptivesButton, ReviewFrequenciesButton,
                                   ReviewHistogramsButton, ReviewBoxWhiskerButton,   ReviewScatterplotButton,
                                   ReviewPieChartsButton,  Review3DHistogramsButton, ReviewStackedPlotsButton};
constexpr std::array Boxes{AutoUpdateBox,       AutoUpdateBox,      ReviewCasewiseBox,      CasewiseBox,
                           CountMissingBox,     WeightedMomentsBox, MedianQuartileRangeBox, MeanSEAndSDBox,
                           MeanSD196TimesSDBox, MeanSE196TimesSEBox};

}  // namespace

RandomSession::RandomSession(unsigned seed, const Texts& files)
    : Random(seed),
      Files(files),
      Recorder({.File = files[0], .DictionaryFile = files[1]}),
      Table(ReadDataFile(files[0])),
      Library(AnalysisModule::DrillDownPath()),
      Analysis(Table) {
    ApplyDictionary(Table, files[1]);
    Analysis.Services.Recorder = &Recorder;
    Analysis.Services.Trace = [this](std::string_view call) { Log += "  " + std::string(call) + '\n'; };
    Analysis.Services.WorkIn = [this](Window& window) { return WorkIn(window); };
    Analysis.Services.Brush = [this](BrushingRun& run) { return PickBar(run); };
    Analysis.Services.TakeDocument = [this](ResultDocument& document) { Take(document, false); };
    Analysis.Services.HearStandAlone = [this](ResultDocument& document) { Take(document, true); };
    Analysis.Services.TakeData = [this](std::shared_ptr<const DataTable> table) { Saved.push_back(std::move(table)); };
    Analysis.Adopt(Library.NewAnalysis());
    EXPECT_TRUE(Analysis.RunSequence());
    Present();
}

void RandomSession::Run(int commands) {
    Click(DrillVariablesButton);
    for (int command = 0; command < commands; ++command) {
        Act();
        Analysis.RunMessages();
    }
}

// Documents

std::string RandomSession::Documents() {
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

RandomSession::TableRun& RandomSession::Present() {
    const DataTable& table = Analysis.Table();
    if (Runs.empty() || Runs.back().Table != &table) {
        Runs.push_back({&table, Recorder.Steps, {}, {}});
        Runs.back().Shown.FileName = table.FileName;
        Runs.back().Shown.Cases = table.Cases;
        Runs.back().Shown.Variables = static_cast<int>(table.Variables.size());
    }
    return Runs.back();
}

void RandomSession::Take(ResultDocument& document, bool standsAlone) {
    for (TableRun& run : Runs) {
        std::erase_if(run.Taken, [&document](const Kept& kept) { return kept.Document.Get() == &document; });
    }
    TableRun& run = Present();
    run.Taken.push_back({CountedPointer<ResultDocument>::Share(&document), StepsNow(),
                         standsAlone ? 0 : EarlierPairs(run, document), standsAlone});
}

int RandomSession::EarlierPairs(const TableRun& run, const ResultDocument& document) {
    const auto isPair = [this](const Kept& kept) {
        return kept.Step == StepsNow() && kept.Document->Origin().Command == Review3DHistogramsButton;
    };
    const auto last = std::find_if(run.Taken.rbegin(), run.Taken.rend(), isPair);
    if (document.Origin().Command != Review3DHistogramsButton || last == run.Taken.rend()) {
        return 0;
    }
    return document.Origin().Sequence == 1 ? static_cast<int>(std::ranges::count_if(run.Taken, isPair))
                                           : last->EarlierPairs;
}

void RandomSession::BeginToRecord(int /*unused*/) {
    Recorder.BeginHere();
    for (TableRun& run : Runs) {
        for (const Kept& kept : run.Taken) {
            if (!kept.StandsAlone) {
                kept.Document->Close();
            }
        }
    }
}

// Modal windows

bool RandomSession::WorkIn(Window& window) {
    switch (window.Resource().Id) {
        case CategoryDialog:
            return TakeCategory(window);
        case OrderDialog:
            return ChangeOrder(window);
        case BoundariesDialog:
            window.Type(BoundariesEdit, AnyOf(std::array{"30 60", "2", "0.1234567 2.5", "1e-7 5 1000", "9 1", "x"}));
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

bool RandomSession::Confirm(Window& window, int percent) {
    if (Chance(percent)) {
        window.Click(OkCommand);
    }
    return window.IsClosed();
}

bool RandomSession::TakeCategory(Window& window) {
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

bool RandomSession::ChangeOrder(Window& window) {
    for (int moves = Below(6); moves > 0; --moves) {
        const bool places = Chance(70);
        ClickAnyRow(window, places ? CurrentOrderList : NewOrderList);
        ClickIfUsable(window, places ? PlaceButton : TakeBackButton);
    }
    return Confirm(window, 80);
}

bool RandomSession::SelectCases(Window& window) {
    window.Click(Chance(75) ? CaseSelectionDialog::SelectedCases : CaseSelectionDialog::AllCases);
    if (CanUse(window, CaseSelectionDialog::Formula)) {
        window.Type(CaseSelectionDialog::Formula, AnyOf(std::array{"[ab] > 20", "[Größe] < 8", "not missing(a)",
                                                                   "a = \"p\"", "[18-25] = \"yes\"", "?"}));
    }
    return Confirm(window, 85);
}

bool RandomSession::ChooseWeight(Window& window) {
    ClickIfUsable(window, WeightDialog::NoWeight);
    ClickAnyRow(window, WeightDialog::VariableList);
    return Confirm(window, 85);
}

bool RandomSession::OpenData(Window& window) {
    if (CanUse(window, OpenDataDialog::FromRun) && Chance(50)) {
        window.Click(OpenDataDialog::FromRun);
        ClickAnyRow(window, OpenDataDialog::TableList);
    } else {
        window.Type(OpenDataDialog::Path, AnyOf(std::array{Files[0], Files[2], std::string("nowhere.csv")}));
    }
    return Confirm(window, 60);
}

bool RandomSession::ChooseVariables(Window& window) {
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

bool RandomSession::PickBar(BrushingRun& run) {
    if (Chance(6)) {
        run.Document.Close();
        return false;
    }
    if (Chance(35)) {
        return false;
    }
    run.Regions.setSelected(Below(run.Regions.Regions().size() + 1) - 1);
    run.Choice = Below(run.Options.size());
    return true;
}

// The startup window

bool RandomSession::CanUse(Window& window, int id) {
    return window.At(id).Enabled && window.At(id).Visible;
}

void RandomSession::ClickAnyRow(Window& window, int list) {
    const Control& control = window.At(list);
    const std::size_t rows = std::max(control.Rows.size(), control.ReportRows.size());
    if (rows > 0 && CanUse(window, list)) {
        window.ClickRow(list, Below(rows));
    }
}

void RandomSession::ClickIfUsable(Window& window, int id) {
    if (CanUse(window, id)) {
        window.Click(id);
    }
}

void RandomSession::Click(int id) {
    ClickIfUsable(Startup(), id);
    Analysis.RunMessages();
}

void RandomSession::ClickRow(int list, int row) {
    Startup().ClickRow(list, row);
    Analysis.RunMessages();
}

void RandomSession::Drag(int list) {
    if (const auto rows = Startup().At(list).Rows.size(); rows > 0 && CanUse(Startup(), list)) {
        Startup().Drag(list, Below(rows + 1));
    }
}

void RandomSession::Categorize(int firstMethod) {
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

void RandomSession::PickAndCategorize(int list) {
    Pick(list);
    Categorize(DistinctValuesRadio);
    if (Chance(30)) {
        Click(BoundariesButton);
    }
}

/// Stores each by another click on its row, and drills one of them perhaps.
void RandomSession::CategorizeSeveral(int list) {
    for (int times = 1 + Below(3); times > 0 && CanUse(Startup(), list); --times) {
        const int row = Below(Startup().At(list).Rows.size());
        ClickRow(list, row);
        Categorize(DistinctValuesRadio);
        if (Chance(40)) {
            Click(BoundariesButton);
        }
        ClickRow(list, Chance(80) ? row : Below(Startup().At(list).Rows.size()));
    }
    if (Chance(60)) {
        Pick(list);
        Analysis.RunMessages();
        Click(DownButton);
    }
}

void RandomSession::Toggle(int /*unused*/) {
    Click(AnyOf(Boxes));
}

void RandomSession::Show(int /*unused*/) {
    Click(AnyOf(ResultButtons));
}

/// Whether or not its control can be used.
void RandomSession::RunCommand(int /*unused*/) {
    Startup().SendCommand(Chance(70) ? AnyOf(ResultButtons) : AnyOf(Boxes));
    Analysis.RunMessages();
}

void RandomSession::CloseDocument(int /*unused*/) {
    const TableRun& run = Runs.back();
    const auto windows = Analysis.Documents().InWindows();
    ResultDocument* document = !windows.empty() && Chance(60) ? AnyOf(windows)
                               : run.Taken.empty()            ? nullptr
                                                              : AnyOf(run.Taken).Document.Get();
    if (document != nullptr) {
        document->Close();
    }
}

void RandomSession::CloseData(int /*unused*/) {
    if (!Saved.empty()) {
        Analysis.CloseData(*AnyOf(Saved));
    }
}

void RandomSession::Act() {
    struct Command {
        const char* Name;
        int Share;  ///< of 100
        int Control;
        void (RandomSession::*Run)(int control);
    };
    // clang-format off
    static constexpr std::array commands{
        //      Name              Share Control               Run
        Command{"pick",              8, DrillDownListControl, &RandomSession::Pick},
        Command{"pick up",           7, DrillUpListControl,   &RandomSession::Pick},
        Command{"categorize",        6, DistinctValuesRadio,  &RandomSession::Categorize},
        Command{"pick, categorize",  6, DrillDownListControl, &RandomSession::PickAndCategorize},
        Command{"down",             14, DownButton,           &RandomSession::Click},
        Command{"up",                9, UpButton,             &RandomSession::Click},
        Command{"order",             3, OrderButton,          &RandomSession::Click},
        Command{"drag",              3, DrillDownListControl, &RandomSession::Drag},
        Command{"drag up",           3, DrillUpListControl,   &RandomSession::Drag},
        Command{"toggle",            5, 0,                    &RandomSession::Toggle},
        Command{"boundaries",        3, BoundariesButton,     &RandomSession::Click},
        Command{"show",             11, 0,                    &RandomSession::Show},
        Command{"brush",             4, BrushButton,          &RandomSession::Click},
        Command{"reviews",           3, ReviewVariablesButton, &RandomSession::Click},
        Command{"select",            2, SelectCasesButton,    &RandomSession::Click},
        Command{"weight",            2, WeightButton,         &RandomSession::Click},
        Command{"close",             2, 0,                    &RandomSession::CloseDocument},
        Command{"close data",        1, 0,                    &RandomSession::CloseData},
        Command{"command",           2, 0,                    &RandomSession::RunCommand},
        Command{"categorize more",   4, DrillDownListControl, &RandomSession::CategorizeSeveral},
        Command{"record",            1, 0,                    &RandomSession::BeginToRecord},
        Command{"open",              1, OpenDataButton,       &RandomSession::Click},
    };
    // clang-format on
    const Command& command = RowByShare(commands, Below(100));
    Log += std::string(command.Name) + '\n';
    (this->*command.Run)(command.Control);
}

}  // namespace recordingtest
