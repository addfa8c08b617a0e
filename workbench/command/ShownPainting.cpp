#include "workbench/command/ShownPainting.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "workbench/command/ProgressBar.h"
#include "workbench/scripting/ChartLibrary.h"

namespace quillara {
namespace {

void Show(const std::stop_token& ended, const std::atomic<std::int32_t>& painted, std::int32_t charts) {
    using namespace std::chrono_literals;
    ProgressBar bar;
    bar.Start("Painting charts ", charts);
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any wake;
    while (!ended.stop_requested()) {
        wake.wait_for(lock, ended, 100ms, [] { return false; });
        bar.Advance(painted);
    }
}

}  // namespace

ShownPainting::ShownPainting(std::int32_t charts) {
    if (charts > 0 && ProgressBar::IsWanted()) {
        Display = std::jthread([this, charts](const std::stop_token& ended) { Show(ended, Painted, charts); });
    }
}

std::string ShownPainting::Paint(const GraphDocument& graph, const ChartLook& look, ChartFormat format) {
    std::string bytes = PaintChart(graph, look, format);
    ++Painted;
    return bytes;
}

}  // namespace quillara
