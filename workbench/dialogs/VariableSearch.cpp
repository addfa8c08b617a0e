#include "workbench/dialogs/VariableSearch.h"

#include <algorithm>
#include <string>

#include "workbench/data/LetterCase.h"

namespace quillara {

bool AnswersSearch(const ReportRow& row, std::string_view sought) {
    const std::wstring words = WithoutLetterCase(sought);
    std::wstring cells;
    for (const std::string& cell : row.Cells) {
        cells += WithoutLetterCase(cell) + L'\n';
    }
    for (std::size_t begin = words.find_first_not_of(L' '); begin != std::wstring::npos;) {
        const std::size_t end = std::min(words.find(L' ', begin), words.size());
        if (cells.find(words.substr(begin, end - begin)) == std::wstring::npos) {
            return false;
        }
        begin = words.find_first_not_of(L' ', end);
    }
    return true;
}

}  // namespace quillara
