// The smallest host: it opens the module, binds a table of twelve people, drills down on one variable and prints the
// frequency tables of the others. What isn't here the defaults of the contract answer; docs/host.md tells the rest.
//
//   minimal-host libqladrilldown.so

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/AnalysisDialog.h"
#include "host/AnalysisDoc.h"
#include "host/AnalysisSupport.h"
#include "host/ListControls.h"
#include "host/WindowServices.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"

// The table

namespace {

constexpr std::array<const char*, 3> Names{"sex", "smokes", "region"};
constexpr double MissingCode = -9999.0;
constexpr std::size_t Cases = 12;

constexpr double Table[Cases][Names.size()] = {
    {1, 2, 1}, {2, 2, 1}, {2, 1, 2}, {1, 1, 3},           {2, 2, 3}, {2, 2, 2},
    {1, 2, 1}, {1, 2, 2}, {2, 1, 1}, {2, 2, MissingCode}, {1, 1, 2}, {2, 2, 1},
};

constexpr struct {
    int Variable;
    float Value;
    const char* Text;  // 8 bytes, as the analysis wants it
} Labels[]{{1, 1, "Male    "}, {1, 2, "Female  "}, {2, 1, "Yes     "}, {2, 2, "No      "}};

}  // namespace

void CAnalysisSupport::InitCommons(OrvTag* table, Orv88Tag* /*names*/, b1_com* /*line*/, Wght_com* /*weight*/,
                                   _AddMenu* /*menu*/) {
    table->Variables = Names.size();
    table->Cases = Cases;
}
void CAnalysisSupport::getvn5(int variable, char* name) {
    std::strcpy(name, Names.at(static_cast<std::size_t>(variable) - 1));
}
void CAnalysisSupport::getmd5(int /*variable*/, double* code) {
    *code = MissingCode;
}
int CAnalysisSupport::vvlcod(int /*mode*/, int variable, char* text, const float* value) {
    for (const auto& label : Labels) {
        if (label.Variable == variable && label.Value == *value) {
            std::copy_n(label.Text, 8, text);
            return 0;
        }
    }
    return 1;
}
int CAnalysisSupport::cstrtw(int caseNumber, double* values, int* weighted, double* weight, int* tag) {
    std::ranges::copy(Table[caseNumber - 1], values + 1);
    *weighted = *tag = 0;
    *weight = 1.0;
    return 0;
}

// Choices and results

int CAnalysisSupport::DoubleVarListDialog(HWND, unsigned short, const char*, short*, int, int, int, int, int,
                                          short* list1, short* count1, short*, short* count2, const char*, const char*,
                                          unsigned short, int*, int, int) {
    *count1 = Names.size();  // all, as categorical variables
    *count2 = 0;
    for (short i = 0; i < *count1; ++i) {
        list1[i] = static_cast<short>(i + 1);
    }
    return 1;
}
short CAnalysisSupport::looka4(const double* data, const char* /*text*/, const signed char* /*columnFormats*/,
                               const char* columnNames, const char* /*columnLongNames*/, const char* rowNames,
                               const char* title, int rows, int columns, int, int, int, int, int, int, int titleWidth,
                               int, int, int rowNameWidth, int columnNameWidth, int, int, int, void*, void*, void*,
                               short*, short*, short*) {
    const auto field = [this](const char* fields, int number, int width) {
        const char* begin = fields + static_cast<std::ptrdiff_t>(number) * width;
        std::string text(begin, strnlen(begin, static_cast<std::size_t>(width)));
        ExpandPossible8CharHash(text);
        return text;
    };
    std::printf("\n%s\n%s\n%-10s", field(title, 0, titleWidth).c_str(), field(title, 1, titleWidth).c_str(), "");
    for (int column = 0; column < columns; ++column) {
        std::string name = field(columnNames, column, columnNameWidth);
        std::ranges::replace(name, '\n', ' ');
        std::printf("  %s", name.c_str());
    }
    for (int row = 0; row < rows; ++row) {
        std::printf("\n%-10s", field(rowNames, row, rowNameWidth).c_str());
        for (int column = 0; column < columns; ++column) {
            std::printf(" %10.2f", data[column * rows + row]);
        }
    }
    std::printf("\n");
    return 1;
}

// Windows: a tree of what the module writes into controls and asks back

struct WindowHandleTag {
    std::map<int, WindowHandleTag> Controls;
    int SelectedRow = -1;
    bool IsChecked = false;
};

struct DialogHost {
    WindowHandleTag Window;
    int Result = -1;

    static DialogHost& Of(CAnalysisDialog& dialog) { return *dialog.Side; }
    static void Send(CAnalysisDialog& dialog, unsigned message, int id) {
        dialog.EventHandler(&Of(dialog).Window, message, static_cast<std::uint64_t>(id), 0);
    }
};

HWND GetDlgItem(HWND dialog, int id) {
    return &dialog->Controls[id];
}
void InitStaticListBox(HWND listBox, const char* const* /*texts*/) {
    listBox->SelectedRow = -1;
}
int GetListSelection(HWND listBox) {
    return listBox->SelectedRow;
}
void SetListSelection(HWND listBox, int row) {
    listBox->SelectedRow = row;
}

CAnalysisDialog::CAnalysisDialog(CAnalysisSupport& analysis, int /*resource*/, HWND /*parent*/)
    : Owner(analysis), Side(std::make_unique<DialogHost>()) {}
CAnalysisDialog::~CAnalysisDialog() = default;
void CAnalysisDialog::ExitDialog(int result, int /*reserved1*/, int /*reserved2*/) {
    Side->Result = result;
}
void CAnalysisDialog::CheckDlgButton(HWND window, int id, bool check) {
    window->Controls[id].IsChecked = check;
}
bool CAnalysisDialog::IsDlgButtonChecked(HWND window, int id) {
    return window->Controls[id].IsChecked;
}

/// Takes the first row of the list.
int CAnalysisModalDialog::DoModal(const ModuleInstance* /*scope*/) {
    DialogHost& host = DialogHost::Of(*this);
    DialogHost::Send(*this, WindowMessage::InitDialog, 0);
    const ListNotification first{GetDlgItem(&host.Window, CategoryListControl), CategoryListControl,
                                 ListEvent::ItemChanged, 0};
    EventHandler(&host.Window, WindowMessage::Notify, 0, reinterpret_cast<std::int64_t>(&first));
    DialogHost::Send(*this, WindowMessage::Command, OkCommand);
    return host.Result;
}

namespace {

CAnalysisModelessDialog* Startup = nullptr;
std::vector<CReorderListBox*> ReorderBoxes;  // each destroys itself when it is told that its window ends

}  // namespace

int CAnalysisModelessDialog::CreateAnalysisDialog() {
    Startup = this;
    DialogHost::Send(*this, WindowMessage::InitDialog, 0);
    return 1;
}
void CReorderListBox::Attach(HWND /*listBox*/) {
    ReorderBoxes.push_back(this);
}

// A session

struct Document final : CAnalysisDoc {
    void RemoveFromAnalysisList(IDispatch* /*document*/) override {}
};

struct AnalysisBinding {
    static void Run(CAnalysisSupport& analysis, CAnalysisDoc& document) {
        analysis.Document = &document;
        for (int row = 0; row < analysis.SequenceRows; ++row) {
            (analysis.*analysis.Sequence[row].Function)();
        }
    }
};

int main(int argc, char** argv) {
    void* library = argc == 2 ? dlopen(argv[1], RTLD_LAZY) : nullptr;
    void* entry = library == nullptr ? nullptr : dlsym(library, "Orv6NewAnalysis");
    if (entry == nullptr) {
        std::fprintf(stderr, "minimal-host: %s\n", argc == 2 ? dlerror() : "name the module's library");
        return 1;
    }
    Document document;
    const std::unique_ptr<CAnalysisSupport> analysis(reinterpret_cast<CAnalysisSupport* (*)()>(entry)());
    AnalysisBinding::Run(*analysis, document);

    const auto press = [](int control) { DialogHost::Send(*Startup, WindowMessage::Command, control); };
    press(DrillVariablesButton);
    SetListSelection(GetDlgItem(&DialogHost::Of(*Startup).Window, DrillDownListControl), 0);  // sex
    press(DrillDownListControl);
    press(DownButton);  // asks for the category by the modal dialog
    press(FrequenciesButton);
    press(CancelCommand);

    analysis->BeforeClose();
    Startup->ReleaseDialogReference();
    std::ranges::for_each(ReorderBoxes, &CReorderListBox::EndOfWindow);
    return 0;
}
