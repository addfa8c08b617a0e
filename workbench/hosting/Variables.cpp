#include <cstring>

#include "host/AnalysisSupport.h"
#include "host/TextFunctions.h"
#include "workbench/data/Calendar.h"
#include "workbench/hosting/LongTexts.h"
#include "workbench/hosting/TableInUse.h"

using quillara::ValueKind;
using quillara::Variable;

namespace {

constexpr std::size_t LongNameWidth = 127;
constexpr std::size_t SpecialTextWidth = 8;  // of YYYYMMDD and of HH:MM:SS alike

std::string SpecialText(const Variable& variable, double value) {
    return variable.Kind == ValueKind::Date ? quillara::TextFromDays(value, "") : quillara::TextFromSeconds(value);
}

bool HasSpecialFormat(const Variable* variable) {
    return variable != nullptr && (variable->Kind == ValueKind::Date || variable->Kind == ValueKind::TimeOfDay);
}

void WriteText(char* buffer, const std::string& text) {
    std::memcpy(buffer, text.c_str(), text.size() + 1);
}

}  // namespace

void CAnalysisSupport::getvn5(int variable, char* name) {
    const Variable* known = quillara::TableOf(Document).Find(variable);
    WriteText(name, known == nullptr ? "" : quillara::LongTextKey(known->Name));
}

void CAnalysisSupport::WriteVarLongName(char* text, int variable) {
    const Variable* known = quillara::TableOf(Document).Find(variable);
    const std::string name = known == nullptr ? "" : known->LongName;
    WriteText(text, name.size() > LongNameWidth ? quillara::WithoutBrokenTail(name.substr(0, LongNameWidth)) : name);
}

void CAnalysisSupport::getmd5(int variable, double* code) {
    const Variable* known = quillara::TableOf(Document).Find(variable);
    *code = known == nullptr ? Variable().MissingCode : known->MissingCode;
}

int CAnalysisSupport::vvlcod(int /*mode*/, int variable, char* text, const float* value) {
    quillara::TableInUse& table = quillara::TableOf(Document);
    const Variable* known = table.Find(variable);
    const std::string* label = known == nullptr ? nullptr : table.Labels.Of(*known).Find(*value);
    if (label == nullptr) {
        return 1;
    }
    std::string field = quillara::LongTextKey(*label);
    field.resize(quillara::LongTextKeyWidth, ' ');
    std::memcpy(text, field.data(), field.size());
    return 0;
}

int CAnalysisSupport::IsSpecialFormatVariable(int variable) {
    return HasSpecialFormat(quillara::TableOf(Document).Find(variable)) ? 1 : 0;
}

void CAnalysisSupport::WriteSpecialFormatVariable(int variable, double value, char* text, int width) {
    const Variable* known = quillara::TableOf(Document).Find(variable);
    const std::string special = HasSpecialFormat(known) && ValueIsValid(&value) != 0 ? SpecialText(*known, value) : "";
    // A value that is no date of four-digit years, or no time of two-digit hours, is better shown by its number.
    if (special.size() == SpecialTextWidth && width >= static_cast<int>(SpecialTextWidth)) {
        WriteText(text, special);
    } else {
        RealToText(value, NumberFieldText, static_cast<short>(width), 0, text, static_cast<short>(width + 1));
    }
}

int CAnalysisSupport::RetrieveLongTextLabelAsHashedString(char* text, int variableIndex, double value) {
    const Variable* known = quillara::TableOf(Document).Find(variableIndex + 1);
    const std::string* description = known == nullptr ? nullptr : known->DescriptionOf(value);
    if (description == nullptr || description->empty()) {
        return 0;
    }
    WriteText(text, quillara::LongTextKey(*description));
    return 1;
}

void CAnalysisSupport::Get8CharHash(std::string& text) {
    text = quillara::LongTextKey(text);
}

void CAnalysisSupport::ExpandPossible8CharHash(std::string& text) {
    text = quillara::LongTextOf(text);
}

void CAnalysisSupport::StripFormatting(std::string& /*text*/) {}
