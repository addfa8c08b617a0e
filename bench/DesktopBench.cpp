// How long the windows take. The counter "pass" is the time divided by that of the pass after a drill and its recount
// over the same 1,000,000 cases, measured in turns in one run by processor time.
//
// Repaint: results in tiles follow a drill step. The time runs from the moment when the analysis has made the last of
// its documents to the one when all their windows are painted.
// Start: the program from its call until its first window is painted, by the clock, with files in memory.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QProcess>
#include <algorithm>
#include <chrono>
#include <vector>

#include "bench/DrillTable.h"
#include "bench/Times.h"
#include "resources/ControlIds.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/desktop/window/Workspace.h"

using quillara::Exploration;
using quillara::ExplorationModel;

namespace {

constexpr int Rounds = 15;
constexpr int Starts = 7;

struct Dashboard {
    const char* Name;
    std::vector<int> Buttons;
    std::vector<short> Categorical;
    std::vector<short> Continuous;
};

const std::vector<Dashboard>& Dashboards() {
    static const std::vector<Dashboard> all{
        {"SixResults", {HistogramsButton, DescriptivesButton}, {1, 2, 3}, {7, 8, 9, 10}},
        {"AllHistogramsAndTables",
         {HistogramsButton, FrequenciesButton, DescriptivesButton},
         {1, 2, 3, 4, 5, 6},
         {7, 8, 9, 10, 11, 12}},
    };
    return all;
}

/// A main window with results in tiles that follow each step.
class Windows {
  public:
    Windows(const Dashboard& dashboard, bool hasMotion) {
        Main.resize(1600, 1000);
        Main.show();
        Model().Begin(std::make_shared<quillara::DataTable>(BenchTable()), {"bench.csv"});
        Main.Results().SetOptions({.HasMotion = hasMotion});
        Do([&](Exploration& now) {
            now.ChooseDrillVariables({dashboard.Categorical, dashboard.Continuous});
            now.Press(AutoUpdateBox);
            std::ranges::for_each(dashboard.Buttons, [&](int button) { now.Press(button); });
        });
        Main.Results().Tile();
        Do([](Exploration& now) { now.Down("c2", "1"); });
        QObject::connect(&Model(), &ExplorationModel::documentChanged, &Main,
                         [this] { Told = Told == 0.0 ? SecondsOf(Clock::Processor) : Told; });
    }

    [[nodiscard]] int Count() { return static_cast<int>(Main.Results().subWindowList().size()); }
    /// The windows' part of a step.
    double Step(const std::function<void(Exploration&)>& step) {
        Told = 0.0;
        Do(step);
        return SecondsOf(Clock::Processor) - Told;
    }

  private:
    [[nodiscard]] ExplorationModel& Model() { return Main.Model(); }
    void Do(const std::function<void(Exploration&)>& action) {
        Model().Do(action);
        QApplication::processEvents();
    }

    quillara::MainWindow Main{nullptr};
    double Told = 0.0;
};

void Repaint(benchmark::State& state, const Dashboard& dashboard, bool hasMotion) {
    Windows windows(dashboard, hasMotion);
    BenchAnalysis analysis({.Steps = 1});
    Times passes;
    Times repaints;
    bool isDown = false;
    for (auto round : state) {
        (void)round;
        analysis.Forget();
        passes.Add(SecondsOf(Clock::Processor, [&] { analysis.ReadBoth(); }));
        isDown = !isDown;
        const double seconds = windows.Step([&](Exploration& now) {
            if (isDown) {
                now.Down("c9", "2");
            } else {
                now.Up("c9");
            }
        });
        repaints.Add(seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["windows"] = windows.Count();
    state.counters["ms"] = repaints.Median() * 1e3;
    state.counters["pass"] = repaints.Median() / passes.Median();
}

/// Seconds until the program says that its first window is painted.
double StartOnce() {
    QProcess program;
    const auto start = std::chrono::steady_clock::now();
    program.start(QApplication::applicationDirPath() + QStringLiteral("/quillara-desktop"),
                  {QStringLiteral("--first-window")});
    program.waitForReadyRead();
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    program.waitForFinished();
    return passed.count();
}

void Start(benchmark::State& state) {
    StartOnce();
    Times starts;
    for (auto round : state) {
        (void)round;
        const double seconds = StartOnce();
        starts.Add(seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["ms"] = starts.Median() * 1e3;
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    for (const Dashboard& dashboard : Dashboards()) {
        for (const bool hasMotion : {false, true}) {
            const std::string name = std::string("Repaint/") + dashboard.Name + (hasMotion ? "/motion" : "/still");
            benchmark::RegisterBenchmark(
                name.c_str(), [&, hasMotion](benchmark::State& state) { Repaint(state, dashboard, hasMotion); })
                ->Unit(benchmark::kMillisecond)
                ->UseManualTime()
                ->Iterations(Rounds);
        }
    }
    benchmark::RegisterBenchmark("Start", Start)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(Starts);
    benchmark::RunSpecifiedBenchmarks();
}
