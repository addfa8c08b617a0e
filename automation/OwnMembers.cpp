#include "automation/OwnMembers.h"

#include <algorithm>

#include "dialogs/DefineTask.h"
#include "engine/NumberTexts.h"
#include "host/ScriptValues.h"

namespace drilldown {
namespace {

constexpr char LowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

}  // namespace

void CleanText(CDefineTask& task, std::string& text) {
    text = TrimBlanks(text);
    task.Analysis->ExpandPossible8CharHash(text);
    StripFormatting(text, 1);
}

bool EqualButForCase(const std::string& left, const std::string& right) {
    return std::ranges::equal(left, right, {}, LowerCase, LowerCase);
}

}  // namespace drilldown
