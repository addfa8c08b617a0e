#include "workbench/documents/GraphDocument.h"

#include <type_traits>

namespace quillara {
namespace {

template <typename Content>
const SeriesChart* SeriesIn(const Content& content) {
    if constexpr (std::is_base_of_v<SeriesChart, Content>) {
        return &content;
    } else {
        return nullptr;
    }
}

}  // namespace

const SeriesChart* SeriesOf(const GraphDocument& graph) {
    return std::visit([](const auto& content) { return SeriesIn(content); }, graph.Content);
}

}  // namespace quillara
