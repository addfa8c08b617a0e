#include "tests/dialogs/DialogBench.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <stdexcept>

#include "host/AnalysisDialog.h"
#include "platform/WindowMessages.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/dialogs/WeightDialog.h"

using quillara::Control;
using quillara::Window;

namespace dialogtest {

Answer Press(int id) {
    return [id](Window& window) { window.Click(id); };
}

Answer Category(std::string name) {
    return [name = std::move(name)](Window& window) {
        window.ClickText(CategoryListControl, name);
        window.Click(OkCommand);
    };
}

Answer Boundaries(std::string text) {
    return [text = std::move(text)](Window& window) {
        window.Type(BoundariesEdit, text);
        window.Click(OkCommand);
    };
}

namespace {

std::string TextOf(const std::optional<RowRange>& range) {
    std::ostringstream text;
    if (range && range->Lower == range->Upper) {
        text << " =" << range->Upper;
    } else if (range) {
        text << (range->HasLower ? " [" : " (") << range->Lower << ", " << range->Upper
             << (range->HasUpper ? "]" : ")");
    }
    return text.str();
}

}  // namespace

std::string CategoriesIn(Window& window) {
    const Control& list = window.At(CategoryListControl);
    EXPECT_EQ(list.ExtendedStyle, 33U);
    EXPECT_EQ(list.Colour, 0xff0000U);
    EXPECT_TRUE(window.At(CategoryVariableCaption).Colour.has_value());
    std::string text = window.At(CategoryVariableCaption).Text + ':';
    for (const quillara::ReportColumn& column : list.Columns) {
        text += ' ' + column.Heading + ' ' + std::to_string(column.Width);
    }
    for (std::size_t row = 0; row < list.ReportRows.size(); ++row) {
        text += list.Selected == static_cast<int>(row) ? "; >" : ";";
        for (const std::string& cell : list.ReportRows[row].Cells) {
            text += ' ' + cell;
        }
        text += TextOf(list.ReportRows[row].Range);
    }
    return text;
}

DialogBench::~DialogBench() {
    Document.reset();
    EXPECT_TRUE(Answers.empty()) << Answers.size() << " answers left: no such window has opened";
}

void DialogBench::Open(quillara::DataTable table) {
    Document.reset();
    Data = std::move(table);
    Document = std::make_unique<quillara::AnalysisDocument>(Data);
    Document->Services.ShowMessage = [this](std::string_view text) { Messages.emplace_back(text); };
    Document->Services.Trace = [this](std::string_view call) {
        Calls.emplace_back(call);
        if (OnCall) {
            OnCall(call);
        }
    };
    Document->Services.WorkIn = [this](Window& window) { return WorkIn(window); };
    Document->Adopt(std::unique_ptr<CAnalysisSupport>(Orv6NewAnalysis()));
    ASSERT_TRUE(Document->RunSequence());
    ASSERT_NE(Document->StartupWindow(), nullptr);
    Calls.clear();
}

bool DialogBench::WorkIn(Window& window) {
    if (Answers.empty()) {
        return false;
    }
    const Answer answer = std::move(Answers.front());
    Answers.pop_front();
    answer(window);
    return true;
}

void DialogBench::Click(int id) {
    Startup().Click(id);
    Document->RunMessages();
}

void DialogBench::Click(int id, std::vector<Answer> answers) {
    std::move(answers.begin(), answers.end(), std::back_inserter(Answers));
    Click(id);
}

void DialogBench::Pick(std::string_view variable) {
    Startup().ClickText(DrillDownListControl, variable);
    Document->RunMessages();
}

void DialogBench::PickUp(std::string_view row) {
    Startup().ClickText(DrillUpListControl, row);
    Document->RunMessages();
}

void DialogBench::TypeNumber(int id, double number) {
    Startup().TypeNumber(id, number);
}

std::vector<short> DialogBench::Numbers(const Names& names) const {
    std::vector<short> numbers;
    std::ranges::transform(names, std::back_inserter(numbers),
                           [this](const std::string& name) { return Number(name); });
    return numbers;
}

Answer DialogBench::Variables(const Names& categorical, const Names& continuous) {
    return [first = Numbers(categorical), second = Numbers(continuous)](Window& window) {
        quillara::ChooseVariables(window, first, second);
    };
}

void DialogBench::Weigh(const std::string& name) {
    using Dialog = quillara::WeightDialog;
    Click(WeightButton, {[name](Window& window) {
              if (window.At(Dialog::NoWeight).Checked) {
                  window.Click(Dialog::NoWeight);
              }
              window.ClickText(Dialog::VariableList, name);
              window.Click(OkCommand);
          }});
}

void DialogBench::Down(std::string_view variable, const std::string& category) {
    Pick(variable);
    Click(DownButton, {Category(category)});
}

void DialogBench::Up(std::string_view row) {
    PickUp(row);
    Click(UpButton);
}

void DialogBench::Focus(const std::string& variable) {
    Analysis().SetCurrentDown(Number(variable));
    Analysis().ReadAfterDrill(0);
    Analysis().ReadBeforeDrill(0);
    Analysis().SetSelected(-1);
}

std::int64_t DialogBench::Command(int id) {
    const std::int64_t result = Startup().SendCommand(id);
    Document->RunMessages();
    return result;
}

std::string DialogBench::Rows(int list) {
    const Control& control = Startup().At(list);
    std::string text;
    for (std::size_t row = 0; row < control.Rows.size(); ++row) {
        const bool selected = static_cast<int>(row) == control.Selected;
        text += (row == 0 ? "" : ", ") + (selected ? "[" + control.Rows[row] + "]" : control.Rows[row]);
    }
    return text;
}

std::string DialogBench::Lists() {
    return Rows(DrillDownListControl) + " | " + Rows(DrillUpListControl);
}

std::string DialogBench::Field(int id) {
    const Control& field = Startup().At(id);
    std::ostringstream text;
    text << field.Number;
    return field.Enabled ? "[" + text.str() + "]" : text.str();
}

std::string DialogBench::Page() {
    constexpr std::array<const char*, 6> methods{"all", "exact", "neat", "step", "integer", "user"};
    std::string chosen;
    int open = 0;
    for (std::size_t method = 0; method < methods.size(); ++method) {
        const Control& radio = Startup().At(DistinctValuesRadio + static_cast<int>(method));
        chosen += radio.Checked ? methods[method] : "";
        open += radio.Enabled ? 1 : 0;
    }
    std::ostringstream text;
    text << (chosen.empty() ? "none" : chosen) << " of " << open << " |";
    for (const int id : {ExactCountField, NeatCountField, StepSizeField, StepStartField}) {
        text << ' ' << Field(id);
    }
    const Control& atMinimum = Startup().At(StartAtMinimumBox);
    text << " | " << (!atMinimum.Enabled ? "-" : atMinimum.Checked ? "yes" : "no");
    text << (Startup().At(BoundariesButton).Enabled ? " boundaries" : "");
    return text.str();
}

namespace {

template <typename Predicate>
std::string IdsOf(Window& window, const std::vector<int>& ids, Predicate wanted) {
    std::string text;
    for (const int id : ids) {
        if (wanted(window.At(id))) {
            text += (text.empty() ? "" : " ") + std::to_string(id);
        }
    }
    return text;
}

}  // namespace

std::string DialogBench::Enabled(const std::vector<int>& ids) {
    return IdsOf(Startup(), ids, [](const Control& control) { return control.Enabled; });
}

std::string DialogBench::Checked(const std::vector<int>& ids) {
    return IdsOf(Startup(), ids, [](const Control& control) { return control.Checked; });
}

std::string DialogBench::TakeTrace() {
    std::string text;
    for (const std::string& call : std::exchange(Calls, {})) {
        text += (text.empty() ? "" : "; ") + call;
    }
    return text;
}

Window& DialogBench::Startup() {
    Window* window = Document->StartupWindow();
    if (window == nullptr) {
        throw std::runtime_error("the startup dialog isn't open");
    }
    return *window;
}

CDefineTask& DialogBench::Dialog() {
    return static_cast<CDefineTask&>(*Analysis().GetStartupDialog());
}

Drill& DialogBench::Record(const std::string& name) {
    const auto record = Analysis().LookFor(Number(name), Analysis().DrillDowns);
    if (record == Analysis().DrillDowns->end()) {
        throw std::runtime_error("no record of " + name);
    }
    return Editable(*record);
}

}  // namespace dialogtest
