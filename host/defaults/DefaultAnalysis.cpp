// What a host answers to an analysis unless it says otherwise.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "host/AnalysisContext.h"
#include "host/AnalysisSupport.h"
#include "host/Application.h"
#include "host/Exceptions.h"
#include "host/TextFunctions.h"
#include "platform/ModuleInstance.h"

// Start, memory and resources

CAnalysisSupport::CAnalysisSupport(CAnalysisDoc* document, const CAnalysisContext& context)
    : Document(document), Context(context) {}
CAnalysisSupport::~CAnalysisSupport() = default;

[[gnu::weak]] void CAnalysisSupport::SetSequenceTable(const SequenceStep* table, int rows) {
    Sequence = table;
    SequenceRows = rows;
}
[[gnu::weak]] int CAnalysisSupport::AllocMem(void** address, unsigned long size) {
    *address = std::calloc(1, size == 0 ? 1 : size);
    return *address == nullptr ? 1 : 0;
}
[[gnu::weak]] void CAnalysisSupport::FreeMem(void* address) {
    std::free(address);
}
[[gnu::weak]] const ModuleInstance* CAnalysisSupport::GetLibInstance() {
    return Context.Instance();
}
[[gnu::weak]] const char* CAnalysisSupport::GetResourceString(int id) {
    const auto strings = GetLibInstance()->Strings;
    const auto row = std::ranges::find(strings, id, &StringResource::Id);
    return row == strings.end() ? "" : row->Text;
}
[[gnu::weak]] void CAnalysisSupport::dsplst(int /*length*/, const char* text) {
    std::fprintf(stderr, "Message: %s\n", text);
}

// Long texts: their keys are the byte 1 and a number.

namespace {

std::vector<std::string>& LongTexts() {
    static std::vector<std::string> texts;
    return texts;
}

}  // namespace

[[gnu::weak]] void CAnalysisSupport::Get8CharHash(std::string& text) {
    if (text.size() > 8) {
        LongTexts().push_back(text);
        char key[24];
        std::snprintf(key, sizeof(key), "\1%07zu", LongTexts().size() - 1);
        text = key;
    }
}
[[gnu::weak]] void CAnalysisSupport::ExpandPossible8CharHash(std::string& text) {
    if (text.starts_with('\1')) {
        text = std::string(LongTexts().at(std::stoul(text.substr(1))));
    }
}

// Numbers

[[gnu::weak]] short RealToText(double value, unsigned char, short, short, char* text, short size) {
    return static_cast<short>(std::snprintf(text, static_cast<std::size_t>(size), "%g", value));
}
[[gnu::weak]] short IntToText(long value, unsigned char, short width, char* text) {
    return static_cast<short>(std::snprintf(text, static_cast<std::size_t>(width) + 1, "%ld", value));
}
[[gnu::weak]] int ValueIsValid(const double* value) {
    return std::isfinite(*value) ? 1 : 0;
}

// Nothing more

// clang-format off
[[gnu::weak]] CAnalysisDoc* CAnalysisSupport::GetDocument() { return Document; }
[[gnu::weak]] int CAnalysisSupport::InitializeAfterFileChanged() { return 1; }
[[gnu::weak]] void CAnalysisSupport::Initialize() {}
[[gnu::weak]] bool CAnalysisSupport::ForwardSequence(int, int) const { return true; }
[[gnu::weak]] int CAnalysisSupport::GetAnalysisID() { return 0; }
[[gnu::weak]] std::string CAnalysisSupport::GetAnalysisName() const { return {}; }
[[gnu::weak]] bool CAnalysisSupport::BeforeRouteOutput(IDispatch*) { return false; }
[[gnu::weak]] void CAnalysisSupport::BeforeClose() {}
[[gnu::weak]] int CAnalysisSupport::IsOleAutomation() const { return 0; }
[[gnu::weak]] HWND CAnalysisSupport::GetStartupWindow() { return nullptr; }
[[gnu::weak]] void CAnalysisSupport::WriteVarLongName(char* text, int) { *text = '\0'; }
[[gnu::weak]] int CAnalysisSupport::IsSpecialFormatVariable(int) { return 0; }
[[gnu::weak]] int CAnalysisSupport::RetrieveLongTextLabelAsHashedString(char*, int, double) { return 0; }
[[gnu::weak]] void CAnalysisSupport::StripFormatting(std::string&) {}
[[gnu::weak]] CaseBlocks* CAnalysisSupport::GetCaseBlocks() { return nullptr; }
[[gnu::weak]] TableColumns* CAnalysisSupport::GetTableColumns() { return nullptr; }
[[gnu::weak]] CaseConditions* CAnalysisSupport::GetCaseConditions() { return nullptr; }
[[gnu::weak]] ParallelRuns* CAnalysisSupport::GetParallelRuns() { return nullptr; }
[[gnu::weak]] std::uint64_t CAnalysisSupport::GetCaseRevision() { return 0; }
[[gnu::weak]] int CAnalysisSupport::lookbr() { return 0; }
[[gnu::weak]] void CAnalysisSupport::d_pbar(const char*) {}
[[gnu::weak]] void CAnalysisSupport::dstart(unsigned long) {}
[[gnu::weak]] void CAnalysisSupport::dstop() {}
[[gnu::weak]] void CAnalysisSupport::GetInitKeyword(int, const char*, const std::int32_t*, std::int32_t* value) { *value = 0; }
[[gnu::weak]] void CAnalysisSupport::PutInitKeyword(int, const char*, const std::int32_t*, const std::int32_t*) {}
[[gnu::weak]] void CAnalysisSupport::SetResultSubject(ResultSubject) {}
[[gnu::weak]] void CAnalysisSupport::SetPlotConditions(const std::vector<CaseCondition>*) {}
[[gnu::weak]] void BeginWaitCursor() {}
[[gnu::weak]] void RestoreWaitCursor() {}
[[gnu::weak]] void EndWaitCursor() {}
[[gnu::weak]] void OrvOleRegisterTypeLib(const char*) {}
// clang-format on
