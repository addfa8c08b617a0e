#pragma once

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "platform/CountedPointer.h"
#include "workbench/data/DataTable.h"
#include "workbench/documents/OutputCollection.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisModule.h"
#include "workbench/recording/SessionRecorder.h"

namespace recordingtest {

using namespace quillara;
using Texts = std::vector<std::string>;

/// Records, and counts the steps.
class CountingRecorder : public SessionRecorder {
  public:
    using SessionRecorder::SessionRecorder;

    void RecordStep(CAnalysisDoc& document, const std::vector<RecordedValue>& values, int control) override {
        ++Steps;
        SessionRecorder::RecordStep(document, values, control);
    }
    int Steps = 0;
};

/// A person at the startup dialog who does anything at random.
class RandomSession {
  public:
    /// Works on the first file with the dictionary in the second, and may open the third.
    RandomSession(unsigned seed, const Texts& files);

    /// Chooses variables, and then does so much.
    void Run(int commands);
    std::string Script() { return Recorder.Text(); }
    /// What has been made since the recording began and is left open, as programs read it.
    std::string Documents();

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
        int StepsBefore;
        std::vector<Kept> Taken;
        OutputCollection Shown;
    };

    // Chance

    int Below(std::size_t limit) { return std::uniform_int_distribution<int>(0, static_cast<int>(limit) - 1)(Random); }
    bool Chance(int percent) { return Below(100) < percent; }
    template <typename Values>
    auto AnyOf(const Values& values) {
        return values[static_cast<std::size_t>(Below(std::size(values)))];
    }

    // Documents

    TableRun& Present();
    int StepsNow() { return Recorder.Steps - Present().StepsBefore; }
    void Take(ResultDocument& document, bool standsAlone);
    int EarlierPairs(const TableRun& run, const ResultDocument& document);
    void BeginToRecord(int unused);

    // Modal windows; one that isn't confirmed is left to be cancelled

    bool WorkIn(Window& window);
    bool Confirm(Window& window, int percent);
    bool TakeCategory(Window& window);
    bool ChangeOrder(Window& window);
    bool SelectCases(Window& window);
    bool ChooseWeight(Window& window);
    bool OpenData(Window& window);
    bool ChooseVariables(Window& window);
    bool PickBar(BrushingRun& run);

    // The startup window

    Window& Startup() { return *Analysis.StartupWindow(); }
    static bool CanUse(Window& window, int id);
    void ClickAnyRow(Window& window, int list);
    static void ClickIfUsable(Window& window, int id);
    void Click(int id);
    void ClickRow(int list, int row);
    void Pick(int list) { ClickAnyRow(Startup(), list); }
    void Drag(int list);
    void Categorize(int firstMethod);
    void PickAndCategorize(int list);
    void CategorizeSeveral(int list);
    void Toggle(int unused);
    void Show(int unused);
    void RunCommand(int unused);
    void CloseDocument(int unused);
    void CloseData(int unused);
    void Act();

    std::mt19937 Random;
    bool HasChosen = false;
    const Texts Files;
    CountingRecorder Recorder;
    DataTable Table;
    std::vector<TableRun> Runs;
    std::vector<std::shared_ptr<const DataTable>> Saved;
    AnalysisModule Library;
    AnalysisDocument Analysis;
};

}  // namespace recordingtest
