// Columns of result tables are as wide as what they hold.

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QTableView>
#include <algorithm>

#include "resources/ControlIds.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/results/TableResultView.h"
#include "workbench/desktop/window/Workspace.h"

namespace quillara {
namespace {

TEST(ColumnWidths, NoNumberIsCutAfterAStepEither) {
    ShownSurvey survey;
    Click(survey.Dialog(), AutoUpdateBox);
    Click(survey.Dialog(), FrequenciesButton);
    Click(survey.Dialog(), DescriptivesButton);
    survey.Main.Model().Do([](Exploration& now) { now.Down("sex", "Female"); });
    const auto views = survey.Main.Results().findChildren<TableResultView*>();
    ASSERT_GE(views.size(), 5);
    for (TableResultView* view : views) {
        QTableView& cells = view->Cells();
        for (int column = 0; column < cells.model()->columnCount(); ++column) {
            int widest = cells.horizontalHeader()->sectionSizeHint(column);
            for (int row = 0; row < cells.model()->rowCount(); ++row) {
                const QString text = cells.model()->index(row, column).data().toString();
                widest = std::max(widest, cells.fontMetrics().horizontalAdvance(text));
            }
            EXPECT_GE(cells.columnWidth(column), widest) << view->accessibleName().toStdString() << ' ' << column;
        }
    }
}

}  // namespace
}  // namespace quillara
