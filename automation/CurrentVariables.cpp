// The members for the variable of the next step: twins, of the variables to drill down on and of those drilled on.

#include <algorithm>
#include <iterator>

#include "automation/OwnMembers.h"
#include "dialogs/DefineTask.h"
#include "host/LittleParser.h"
#include "host/ScriptValues.h"
#include "host/WindowServices.h"
#include "resources/ControlIds.h"

namespace drilldown {
namespace {

constexpr int FirstVariable = 1;
constexpr int LastVariable = 32767;

/// What sets the two members apart.
struct CurrentVariable {
    CDrillDown::DrillSet* CDrillDown::*Records;
    std::int16_t CDrillDown::*Current;
    std::string (CDrillDown::*Name)() const;
    int List;
    bool NameSelectsRow;  ///< a variable chosen by its name is selected in the list too
    HRESULT OtherText;  ///< the status of a text that begins with neither number nor text
};

// Intended: a name leaves the selection of the drill-down list, unlike a number, and unlike a name of a variable
// drilled on; a step goes by CurrentDown and not by the list.
constexpr CurrentVariable Down{&CDrillDown::DrillDowns,
                               &CDrillDown::CurrentDown,
                               &CDrillDown::GetCurrentVariableName,
                               DrillDownListControl,
                               false,
                               E_FAIL};

// Intended: a text that is neither number nor name succeeds and changes nothing, unlike for the variable to drill down
// on; scripts that write a stray mark go on.
constexpr CurrentVariable Up{
    &CDrillDown::DrillUps, &CDrillDown::CurrentUp, &CDrillDown::GetCurrentDrillUpName, DrillUpListControl, true, S_OK};

HRESULT ReadName(CDefineTask& task, const CurrentVariable& which, std::string& text) {
    CDrillDown& analysis = *task.Analysis;
    if ((analysis.*which.Records)->empty()) {
        return E_FAIL;
    }
    text = (analysis.*which.Name)();
    analysis.Replace8CharGrow(text, true);
    analysis.StripFormatting(text);
    return S_OK;
}

void SelectRow(CDefineTask& task, const CurrentVariable& which, CDrillDown::DrillSet::const_iterator record) {
    const auto row = std::distance((task.Analysis->*which.Records)->cbegin(), record);
    SetListSelection(task.GetDlgItem(task.Window, which.List), static_cast<int>(row));
}

/// Intended: a variable that isn't in the set becomes the current one all the same, unlike a name that isn't; a script
/// may choose ahead, and a step then finds no record and isn't taken.
HRESULT ChooseByNumber(CDefineTask& task, const CurrentVariable& which, int number) {
    if (number < FirstVariable || number > LastVariable) {
        return E_FAIL;
    }
    CDrillDown& analysis = *task.Analysis;
    const auto variable = static_cast<std::int16_t>(number);
    analysis.*which.Current = variable;
    const CDrillDown::DrillSet& records = *(analysis.*which.Records);
    if (const auto record = analysis.LookFor(variable, &records); record != records.end()) {
        SelectRow(task, which, record);
        task.UpdateControls();
    }
    return S_OK;
}

HRESULT ChooseByName(CDefineTask& task, const CurrentVariable& which, const std::string& beginning) {
    const CDrillDown::DrillSet& records = *(task.Analysis->*which.Records);
    const auto record = std::ranges::find_if(
        records, [&](const Drill& each) { return EqualButForCase(each.Name.substr(0, beginning.size()), beginning); });
    if (record == records.end()) {
        return E_FAIL;
    }
    task.Analysis->*which.Current = record->VarNo;
    if (which.NameSelectsRow) {
        SelectRow(task, which, record);
    }
    task.UpdateControls();
    return S_OK;
}

HRESULT Choose(CDefineTask& task, const CurrentVariable& which, const VARIANT& value) {
    std::string text;
    if (!VariantToTextList(value, text) || text.empty()) {
        return E_FAIL;
    }
    CleanText(task, text);
    CLittleParser parser(1, text.c_str(), nullptr, 0);
    switch (parser.GetSymbol()) {
        case CLittleParser::Number:
            return ChooseByNumber(task, which, parser.GetLastNumber());
        case CLittleParser::BareText:
        case CLittleParser::QuotedText:
            return ChooseByName(task, which, parser.GetLastTextVal());
        default:
            return which.OtherText;
    }
}

}  // namespace

HRESULT ReadDrillDownVariable(CDefineTask& task, std::string& text) {
    return ReadName(task, Down, text);
}

HRESULT ReadDrillUpVariable(CDefineTask& task, std::string& text) {
    return ReadName(task, Up, text);
}

HRESULT WriteDrillDownVariable(CDefineTask& task, const VARIANT& value) {
    return Choose(task, Down, value);
}

HRESULT WriteDrillUpVariable(CDefineTask& task, const VARIANT& value) {
    return Choose(task, Up, value);
}

}  // namespace drilldown
