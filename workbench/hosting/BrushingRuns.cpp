// The brushing tool of the host: regions of a graph, and the run in which the user picks one.

#include <cstdint>

#include "host/Brushing.h"
#include "platform/CountedPointer.h"
#include "workbench/documents/GraphFaces.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/AnalysisServices.h"
#include "workbench/hosting/ModalWork.h"
#include "workbench/hosting/ObjectModel.h"

namespace {

bool HasPlace(const std::vector<BrushRegion>& regions, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < regions.size();
}

}  // namespace

void CGraphBrushRgnGraph::resize(int regions) {
    Table.resize(regions < 0 ? 0 : static_cast<std::size_t>(regions));
}

void CGraphBrushRgnGraph::set(int index, double bottom, double left, double top, double right, const char* tip,
                              int kind) {
    if (HasPlace(Table, index)) {
        Table[static_cast<std::size_t>(index)] = {bottom, left, top, right, tip, kind};
    }
}

void CGraphBrushRgnGraph::setSelected(int index) {
    Selected = index;
}

bool CGraphBrushRgnGraph::getSelected(int& index) const {
    index = Selected;
    return HasPlace(Table, Selected);
}

CGraphBrushRgnGraph* CGraphBrushingExt::addGraph(int /*index*/) {
    return Graphs.emplace_back(std::make_unique<CGraphBrushRgnGraph>()).get();
}

bool CGraphBrushingExt::DoBrushing(COutDocument* document, const char** options, int& choice, bool /*reserved1*/,
                                   bool /*reserved2*/, bool /*reserved3*/) {
    if (document == nullptr || Graphs.empty()) {
        return false;
    }
    CAnalysisDoc* owner = quillara::AnalysisOf(document->Document());
    if (owner == nullptr) {
        return false;
    }
    const auto alive = CountedPointer<quillara::ResultDocument>::Share(&document->Document());  // the user may close it
    quillara::BrushingRun run{document->Document(), *Graphs.back(), {}, choice};
    for (; *options != nullptr; ++options) {
        run.Options.emplace_back(*options);
    }
    const bool picked = quillara::RunBrushing(owner, run);
    choice = run.Choice;
    return picked;
}
