// The smallest host: it opens the module, binds a table of twelve people, drills down on one variable and prints the
// frequency tables of the others. Only what the module calls on this way is here; docs/host.md tells the rest.
//
//   minimal-host libqladrilldown.so

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/AnalysisContext.h"
#include "host/AnalysisDialog.h"
#include "host/AnalysisDoc.h"
#include "host/AnalysisSupport.h"
#include "host/Exceptions.h"
#include "host/ListControls.h"
#include "host/TextFunctions.h"
#include "host/WindowServices.h"
#include "platform/ModuleInstance.h"
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

struct Label {
    int Variable;
    float Value;
    const char* Text;
};

constexpr std::array<Label, 4> Labels{{{1, 1, "Male"}, {1, 2, "Female"}, {2, 1, "Yes"}, {2, 2, "No"}}};

/// Writes a text into a field that is padded with one character.
void Fill(char* field, std::size_t width, std::string_view text, char padding) {
    std::fill_n(field, width, padding);
    text.copy(field, width);
}

}  // namespace

// The analysis and its document

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

CAnalysisSupport::CAnalysisSupport(CAnalysisDoc* document, const CAnalysisContext& context)
    : Document(document), Context(context) {}
CAnalysisSupport::~CAnalysisSupport() = default;
const ModuleInstance* CAnalysisSupport::GetLibInstance() {
    return Context.Instance();
}
const char* CAnalysisSupport::GetResourceString(int id) {
    const auto strings = GetLibInstance()->Strings;
    const auto row = std::ranges::find(strings, id, &StringResource::Id);
    return row == strings.end() ? "" : row->Text;
}
void CAnalysisSupport::dsplst(int /*length*/, const char* text) {
    std::printf("Message: %s\n", text);
}
void CAnalysisSupport::SetSequenceTable(const SequenceStep* table, int rows) {
    Sequence = table;
    SequenceRows = rows;
}
void CAnalysisSupport::InitCommons(OrvTag* table, Orv88Tag* /*names*/, b1_com* /*line*/, Wght_com* /*weight*/,
                                   _AddMenu* /*menu*/) {
    table->Variables = Names.size();
    table->Cases = Cases;
}
int CAnalysisSupport::AllocMem(void** address, unsigned long size) {
    *address = std::calloc(1, size);
    return *address == nullptr ? 1 : 0;
}
void CAnalysisSupport::FreeMem(void* address) {
    std::free(address);
}
CAnalysisDoc* CAnalysisSupport::GetDocument() {
    return Document;
}

// Variables and labels

void CAnalysisSupport::getvn5(int variable, char* name) {
    std::strcpy(name, Names.at(static_cast<std::size_t>(variable) - 1));
}
void CAnalysisSupport::WriteVarLongName(char* text, int /*variable*/) {
    *text = '\0';
}
void CAnalysisSupport::getmd5(int /*variable*/, double* code) {
    *code = MissingCode;
}
int CAnalysisSupport::vvlcod(int /*mode*/, int variable, char* text, const float* value) {
    const auto* row = std::ranges::find_if(
        Labels, [&](const Label& label) { return label.Variable == variable && label.Value == *value; });
    if (row == Labels.end()) {
        return 1;
    }
    Fill(text, 8, row->Text, ' ');
    return 0;
}

// Long texts travel through fields of 8 bytes as keys: ours are the byte 1 and their number.

namespace {

std::vector<std::string> LongTexts;

std::string WholeText(std::string_view field) {
    const std::string text(field.substr(0, field.find('\0')));
    return text.starts_with('\1') ? LongTexts.at(std::stoul(text.substr(1))) : text;
}

}  // namespace

void CAnalysisSupport::Get8CharHash(std::string& text) {
    if (text.size() > 8) {
        LongTexts.push_back(text);
        char key[16];
        std::snprintf(key, sizeof(key), "\1%07zu", LongTexts.size() - 1);
        text = key;
    }
}
void CAnalysisSupport::ExpandPossible8CharHash(std::string& text) {
    text = WholeText(text);
}

// Cases

int CAnalysisSupport::cstrtw(int caseNumber, double* values, int* weighted, double* weight, int* tag) {
    std::ranges::copy(Table[caseNumber - 1], values + 1);
    *weighted = 0;
    *weight = 1.0;
    *tag = 0;
    return 0;
}
void CAnalysisSupport::GetInitKeyword(int /*section*/, const char* /*key*/, const std::int32_t* /*reserved*/,
                                      std::int32_t* value) {
    *value = 0;
}

// Choices and results

int CAnalysisSupport::DoubleVarListDialog(HWND /*owner*/, unsigned short /*mode*/, const char* /*title*/,
                                          short* /*preset*/, int /*lowest1*/, int /*highest1*/, int /*lowest2*/,
                                          int /*highest2*/, int /*highestTotal*/, short* list1, short* count1,
                                          short* /*list2*/, short* count2, const char* /*label1*/,
                                          const char* /*label2*/, unsigned short /*typeCount*/, int* /*types*/,
                                          int /*reserved1*/, int /*reserved2*/) {
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
    const auto field = [](const char* fields, int number, int width) {
        return WholeText({fields + static_cast<std::ptrdiff_t>(number) * width, static_cast<std::size_t>(width)});
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
short RealToText(double value, unsigned char /*flags*/, short /*width*/, short /*decimals*/, char* text, short size) {
    return static_cast<short>(std::snprintf(text, static_cast<std::size_t>(size), "%g", value));
}
short IntToText(long value, unsigned char /*flags*/, short width, char* text) {
    return static_cast<short>(std::snprintf(text, static_cast<std::size_t>(width) + 1, "%ld", value));
}
int ValueIsValid(const double* value) {
    return std::isfinite(*value) ? 1 : 0;
}

// Windows: a tree of what the module writes into controls and asks back

struct WindowHandleTag {
    std::map<int, WindowHandleTag> Controls;
    std::vector<std::string> Rows;
    int SelectedRow = -1;
    double Number = 0.0;
    bool IsChecked = false;
};

struct DialogHost {
    const ModuleInstance* Module = nullptr;
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
void InitStaticListBox(HWND listBox, const char* const* texts) {
    listBox->Rows.clear();
    listBox->SelectedRow = -1;
    for (; *texts != nullptr; ++texts) {
        listBox->Rows.emplace_back(*texts);
    }
}
int GetListSelection(HWND listBox) {
    return listBox->SelectedRow;
}
void SetListSelection(HWND listBox, int row) {
    listBox->SelectedRow = row;
}

namespace {

std::vector<CReorderListBox*> ReorderBoxes;  // each destroys itself when it is told that its window ends

}  // namespace

void CReorderListBox::Attach(HWND /*listBox*/) {
    ReorderBoxes.push_back(this);
}

CAnalysisDialog::CAnalysisDialog(CAnalysisSupport& analysis, int /*resource*/, HWND /*parent*/)
    : Owner(analysis), Side(std::make_unique<DialogHost>()) {}
CAnalysisDialog::~CAnalysisDialog() = default;
void CAnalysisDialog::ExitDialog(int result, int /*reserved1*/, int /*reserved2*/) {
    Side->Result = result;
}
HWND CAnalysisDialog::GetDlgItem(HWND window, int id) {
    return &window->Controls[id];
}
void CAnalysisDialog::CheckDlgButton(HWND window, int id, bool check) {
    window->Controls[id].IsChecked = check;
}
bool CAnalysisDialog::IsDlgButtonChecked(HWND window, int id) {
    return window->Controls[id].IsChecked;
}
void CAnalysisDialog::InitStaticListBox(HWND listBox, const char* const* texts) {
    ::InitStaticListBox(listBox, texts);
}
void CAnalysisDialog::SetDlgItemInt(HWND window, int id, int value, int /*mode*/) {
    window->Controls[id].Number = value;
}
void CAnalysisDialog::SetDlgItemDouble(HWND window, int id, double value, int /*mode*/, int /*format*/) {
    window->Controls[id].Number = value;
}
int CAnalysisDialog::GetDlgItemInteger(HWND window, int id, std::int16_t* value) {
    *value = static_cast<std::int16_t>(window->Controls[id].Number);
    return 0;
}
int CAnalysisDialog::GetDlgItemDouble(HWND window, int id, double* value) {
    *value = window->Controls[id].Number;
    return 0;
}
std::string CAnalysisDialog::szLoadResString(const ModuleInstance* module, int id) {
    return std::ranges::find(module->Strings, id, &StringResource::Id)->Text;
}

int CAnalysisModalDialog::DoModal(const ModuleInstance* /*scope*/) {
    DialogHost& host = DialogHost::Of(*this);
    DialogHost::Send(*this, WindowMessage::InitDialog, 0);
    const ListNotification first{&host.Window.Controls[CategoryListControl], CategoryListControl,
                                 ListEvent::ItemChanged, 0};
    EventHandler(&host.Window, WindowMessage::Notify, 0, reinterpret_cast<std::int64_t>(&first));
    DialogHost::Send(*this, WindowMessage::Command, OkCommand);
    return host.Result;
}

namespace {

CAnalysisModelessDialog* Startup = nullptr;

}  // namespace

CAnalysisModelessDialog::CAnalysisModelessDialog(CAnalysisSupport& analysis, int resource, HWND parent)
    : CAnalysisDialog(analysis, resource, parent),
      CAnalysisDialogAutomationOptions(static_cast<CAnalysisDialog&>(*this)) {}
CAnalysisModelessDialog::~CAnalysisModelessDialog() = default;
std::uint32_t CAnalysisModelessDialog::ReleaseDialogReference() {
    delete this;
    return 0;
}
int CAnalysisModelessDialog::CreateAnalysisDialog() {
    Startup = this;
    DialogHost::Send(*this, WindowMessage::InitDialog, 0);
    return 1;
}

CException::~CException() = default;
COleException::~COleException() = default;
_com_error::~_com_error() = default;
win32_exception::~win32_exception() = default;

// A session

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
    DialogHost::Of(*Startup).Window.Controls[DrillDownListControl].SelectedRow = 0;  // sex
    press(DrillDownListControl);
    press(DownButton);  // asks for the category by the modal dialog
    press(FrequenciesButton);
    press(CancelCommand);

    analysis->BeforeClose();
    Startup->ReleaseDialogReference();
    std::ranges::for_each(ReorderBoxes, &CReorderListBox::EndOfWindow);
    return 0;
}
