#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "workbench/documents/GraphDocument.h"

namespace quillara {

/// The bars of a histogram and the layers of a stacked plot by what they stand for, so that they are found again when
/// the numbers are others and bars have come or gone.
class ShownBars {
  public:
    /// A series and a point of it.
    using Place = std::pair<int, int>;

    ShownBars() = default;
    /// None of a graph of another kind.
    explicit ShownBars(const GraphDocument& graph);

    /// Where the bar stands here that stands at a place among others; nothing: it isn't there.
    [[nodiscard]] std::optional<Place> Find(const ShownBars& others, Place place) const;

  private:
    void Add(const std::string& variable, const GraphPoint& point, Place place);

    std::map<std::string, Place> Places;
    std::map<Place, std::string> Names;
};

}  // namespace quillara
