#include "workbench/recording/RecordedMembers.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/ControlTable.h"
#include "workbench/hosting/ControlRows.h"

namespace quillara {
namespace {

struct MemberName {
    int RecordingId;
    const char* Name;
};

// clang-format off
constexpr std::array<MemberName, 44> Names{{
    {22939, "PlotMedianQuartileRange"},
    {22940, "PlotMeanSEAndSD"},
    {22941, "PlotMeanSD196TimesSD"},
    {22942, "PlotMeanSE196TimesSE"},
    {41114, "Variables"},
    {41115, "DrillDownVariable"},
    {41116, "DrillUpVariable"},
    {41117, "WeightedMoments"},
    {41118, "Summary"},
    {41119, "Descriptives"},
    {41120, "Frequencies"},
    {41121, "Histograms"},
    {41122, "Save"},
    {41123, "AllDistinctValues"},
    {41124, "NoOfExactIntervals"},
    {41125, "ValueNoOfExactIntervals"},
    {41126, "NeatIntervalsAppNo"},
    {41127, "ValueNeatIntervalsAppNo"},
    {41128, "StepSize"},
    {41129, "ValueStepSize"},
    {41130, "ValueStartingFrom"},
    {41131, "StartingAtMinimum"},
    {41132, "IntegerCategories"},
    {41133, "UserSpecifiedCategories"},
    {41134, "ReviewVariables"},
    {41135, "ReviewDescriptives"},
    {41136, "ReviewFrequencies"},
    {41137, "ReviewBoxWhisker"},
    {41138, "ReviewHistograms"},
    {41139, "ReviewScatterplot"},
    {41140, "StandAloneResults"},
    {41141, "RVCasewiseDeletionOfMD"},
    {41142, "CasewiseDeletionOfMD"},
    {41143, "DrillDownCategory"},
    {41144, "CategorySelections"},
    {41145, "UserDefinedBoundaries"},
    {41146, "DrillDown"},
    {41147, "DrillUp"},
    {41148, "ReviewPieCharts"},
    {41149, "ReviewStackedPlots"},
    {41150, "Review3DHistograms"},
    {41151, "PieCharts"},
    {41152, "StackedPlots"},
    {41153, "CountMD"},
}};
// clang-format on

static_assert(std::ranges::is_sorted(Names, {}, &MemberName::RecordingId));

bool IsSmall(char letter) {
    return letter >= 'a' && letter <= 'z';
}

bool IsCapital(char letter) {
    return letter >= 'A' && letter <= 'Z';
}

bool BeginsWord(std::string_view name, std::size_t at) {
    if (at == 0 || IsSmall(name[at])) {
        return false;
    }
    const bool isBeforeSmall = at + 1 < name.size() && IsSmall(name[at + 1]);
    return IsSmall(name[at - 1]) || (IsCapital(name[at]) && isBeforeSmall);
}

}  // namespace

std::string MemberOf(const CAnalysisDialog& dialog, int control) {
    const ControlRow* row = RowOf(&dialog, control);
    const auto* name =
        row == nullptr ? Names.end() : std::ranges::find(Names, row->RecordingId, &MemberName::RecordingId);
    return name == Names.end() ? "" : name->Name;
}

std::string ResultNameOf(const std::string& member) {
    std::string name;
    for (std::size_t i = 0; i < member.size(); ++i) {
        name += BeginsWord(member, i) ? "_" : "";
        name += static_cast<char>(IsCapital(member[i]) ? member[i] - 'A' + 'a' : member[i]);
    }
    return name == "save" ? "cases" : name;
}

}  // namespace quillara
