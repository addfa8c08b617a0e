// What the startup dialog offers to a recorder of steps.

#include <gtest/gtest.h>

#include <string>

#include "host/ControlTable.h"
#include "resources/ControlIds.h"
#include "tests/automation/ScriptBench.h"
#include "tests/workbench/Tables.h"
#include "workbench/hosting/StepRecorder.h"

namespace dialogtest {
namespace {

/// Writes down what it is offered: of a step the values of the controls that are asked for.
class Notes : public quillara::StepRecorder {
  public:
    void RecordStep(CAnalysisDoc&, const std::vector<quillara::RecordedValue>& values, int control) override {
        for (const quillara::RecordedValue& value : values) {
            for (const int asked : {9050, 9053, 9064, 9070, 9107, 9108, 9112, 9126}) {
                Text += value.Row->Control == asked ? std::to_string(asked) + "=" + value.Text + "; " : "";
            }
        }
        Text += "step " + std::to_string(control) + "; ";
    }
    void RecordMethod(CAnalysisDoc&, int control) override { Text += "method " + std::to_string(control) + "; "; }
    void RecordOutput(CAnalysisDoc&, int control) override { Text += "output " + std::to_string(control) + "; "; }

    [[nodiscard]] std::string Take() { return std::exchange(Text, {}); }

  private:
    std::string Text;
};

TEST(Recording, StepsAndResultsAreOfferedWithTheValuesOfBefore) {
    ScriptBench bench;
    Notes notes;
    bench.Open(quillara::TableOf({quillara::Texts("sex", {"f", "m", "m"}), quillara::Numbers("age", {1, 2, 3})}));
    bench.Host().Services.Recorder = &notes;
    EXPECT_EQ(bench.Write(DrillVariablesButton, u"sex | age"), "ok");
    bench.ClickText(DrillDownListControl, "sex");
    bench.Click(DownButton);  // nobody answers: no step
    EXPECT_EQ(notes.Take(), "");
    bench.Expect([](quillara::Window& window) {
        window.ClickRow(CategoryListControl, 1);
        window.Click(1);
    });
    bench.Click(DownButton);
    EXPECT_EQ(notes.Take(),
              "9050=sex | age; 9053=sex; 9064=1; 9070=10; 9126=0 f | 1 m; 9108=m; 9107=0; "
              "step 9056; method 9056; ");
    bench.Click(SummaryButton);
    bench.Click(SaveDataButton);
    bench.ClickText(DrillUpListControl, "sex (m)");
    bench.Click(UpButton);
    EXPECT_EQ(notes.Take(),
              "output 9058; output 9086; 9050=sex | age; 9053=age; 9064=0; 9070=10; 9107=0; "
              "step 9057; method 9057; ");
}

}  // namespace
}  // namespace dialogtest
