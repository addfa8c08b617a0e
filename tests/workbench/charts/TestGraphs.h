#pragma once

#include <string>
#include <vector>

#include "workbench/documents/GraphDocument.h"

namespace quillara {

using Names = std::vector<std::string>;
using Values = std::vector<double>;

/// `count` names: "Name 1", "Name 2", ...
Names Numbered(int count, const std::string& name);

// Graphs as the analysis and the host hand them over.
/// The last category may be "Missing", for missing data.
GraphDocument Bars(const Names& categories, const Values& counts, double top);
GraphDocument Pie(const Names& categories, const Values& counts);
/// Columns of shares in percent, from the bottom up.
GraphDocument Stacked(const Names& variables, const std::vector<Values>& shares);
GraphDocument Boxes(int count, BoxType type);
GraphDocument Matrix(int variables, const std::string& name);
GraphDocument Bars3D(const Names& columns, const Names& rows);

/// A mosaic of any counts, some of which are 0.
GraphDocument Mosaic(const Names& columns, const Names& layers);
/// A box for each category; the last has no case.
GraphDocument BoxesBy(const Names& categories);

GraphDocument Titled(GraphDocument document, const std::vector<std::string>& title);

}  // namespace quillara
