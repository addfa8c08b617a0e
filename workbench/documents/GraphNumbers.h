#pragma once

#include <string>
#include <vector>

#include "workbench/documents/GraphDocument.h"

namespace quillara {

/// Named numbers of a graph, one for each label.
struct NamedNumbers {
    std::string Name;
    std::vector<std::string> Labels;
    std::vector<double> X;
    std::vector<double> Y;
};

/// What a graph shows, as series of labelled points: the series of a chart; of a box plot each statistic, by variable;
/// of a scatterplot matrix the correlations of each variable with all; of a 3D histogram the counts of each of its
/// rows. Places that no number says are counted from 1.
[[nodiscard]] std::vector<NamedNumbers> NumbersOf(const GraphDocument& graph);

/// What a graph is called by people: "histogram", "box-whisker plot".
[[nodiscard]] std::string KindOf(const GraphDocument& graph);

}  // namespace quillara
