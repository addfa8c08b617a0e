#include "workbench/hosting/BoundCommons.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "workbench/hosting/LongTexts.h"
#include "workbench/hosting/TableInUse.h"

namespace quillara {
namespace {

/// Copies a text into a field of fixed width, which is not terminated when it is full.
template <std::size_t Width>
void FillField(char (&field)[Width], const std::string& text) {
    const std::string cut = WithoutBrokenTail(text.substr(0, Width));
    std::fill(std::copy(cut.begin(), cut.end(), field), field + Width, '\0');
}

}  // namespace

void BoundCommons::Fill(const TableInUse& table) const {
    if (Table != nullptr) {
        Table->Variables = static_cast<std::int16_t>(table.Table().Variables.size());
        Table->Cases = table.Table().Cases;
        FillField(Table->HeaderText, table.Table().Header);
    }
    if (Names != nullptr) {
        Names->CaseNameWidth = static_cast<std::int16_t>(table.Table().CaseNameWidth());
    }
    if (Weight != nullptr) {
        Weight->Active = table.IsWeighted ? 1 : 0;
        Weight->Variable = static_cast<std::int16_t>(table.WeightVariable ? *table.WeightVariable + 1 : 0);
    }
}

}  // namespace quillara
