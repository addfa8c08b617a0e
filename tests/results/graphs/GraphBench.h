#pragma once

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/engine/DrillBench.h"
#include "workbench/documents/GraphDocument.h"
#include "workbench/documents/ResultDocument.h"

namespace drilltest {

/// A drill bench that keeps the graphs shown.
class GraphBench : public testing::Test, public DrillBench {
  protected:
    GraphBench() : DrillBench(Road::Columns) {}

    void Open(quillara::DataTable table) {
        DrillBench::Open(std::move(table));
        Host().Services.TakeDocument = [this](quillara::ResultDocument& shown) {
            if (const quillara::GraphDocument* graph = shown.Graph()) {
                Shown.push_back(*graph);
            }
        };
    }
    void Open(std::vector<quillara::Variable> variables) { Open(TableOf(std::move(variables))); }

    /// Runs a command and gives its result.
    int Run(std::int16_t (CDrillDown::*command)(HWND)) { return (Analysis().*command)(nullptr); }
    int Run(int (CDrillDown::*command)(short, HWND)) { return (Analysis().*command)(0, nullptr); }

    /// Runs a command: the first title line of each chart shown and its first series with the x labels,
    /// "title [a:2 b:1]", then the result and the messages if they aren't 1 and none.
    template <typename Command>
    std::string Bars(Command command) {
        const int result = Run(command);
        std::ostringstream text;
        for (const quillara::GraphDocument& graph : std::exchange(Shown, {})) {
            text << graph.Title.front() << " [" << BarsOf(graph) << "] ";
        }
        for (const std::string& message : TakeMessages()) {
            text << message << ' ';
        }
        return text.str() + (result == 1 ? "" : "gave " + std::to_string(result));
    }

    std::vector<quillara::GraphDocument> Shown;

  private:
    static std::string BarsOf(const quillara::GraphDocument& graph) {
        std::ostringstream text;
        const quillara::SeriesChart& chart = *SeriesOf(graph);
        const char* separator = "";
        for (std::size_t bar = 0; bar < chart.Series.front().Points.size(); ++bar) {
            const auto& labels = chart.Series.front().Labels;
            text << std::exchange(separator, " ")
                 << (labels.empty()        ? chart.X.Labels.at(bar).Text
                     : bar < labels.size() ? labels[bar]
                                           : "")
                 << ':' << chart.Series.front().Points[bar].Y;
        }
        return text.str();
    }
};

}  // namespace drilltest
