#include "workbench/desktop/results/DocumentView.h"

#include "workbench/desktop/results/ChartResultView.h"
#include "workbench/desktop/results/TableResultView.h"

namespace quillara {

DocumentView* ViewOf(ResultDocument& document, QWidget* parent) {
    if (document.Graph() != nullptr) {
        return new ChartResultView(document, parent);
    }
    return new TableResultView(document, parent);
}

}  // namespace quillara
