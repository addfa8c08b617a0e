#pragma once

#include <string>

#include "automation/FailureReports.h"
#include "automation/OwnMembers.h"
#include "automation/StartupInterface.h"
#include "automation/StartupMembers.h"
#include "host/ComQuillaraDialog.h"

class CDefineTask;

namespace drilldown {

/// How the members that every dialog has go to the host: the log names them by the host's template.
struct StartupForwarding {
    static constexpr char Scope[] =
        "IQuillaraDialog2Impl<struct DDNStartup,&struct _GUID const IID_DDNStartup,&struct _GUID const "
        "LIBID_QLADrillDown,1,0,class ATL::CComTypeInfoHolder>::";

    template <typename Call>
    static HRESULT Run(const CAnalysisModelessDialog& dialog, const char* use, const char* member, const Call& call) {
        return ForwardToHost(dialog, {Scope, use, member}, call);
    }
};

}  // namespace drilldown

/// The face that the startup dialog shows to scripts, a part of it. Members with a control are the host's property
/// calls on it; the others are those of OwnMembers.h. While a face lives the module stays loaded.
class CComDefineTask : public CComQuillaraDialog<DDNStartup, drilldown::StartupForwarding> {
  public:
    /// The face of `task`, whose part this is; `analysis` is that of the task.
    CComDefineTask(CDefineTask& task, CAnalysisSupport& analysis);
    ~CComDefineTask();

    // By name

    HRESULT GetTypeInfoCount(std::uint32_t* count) override;
    HRESULT GetTypeInfo(std::uint32_t index, LCID language, ITypeInfo** information) override;
    HRESULT GetIDsOfNames(const GUID& reserved, const char16_t* const* names, std::uint32_t count, LCID language,
                          DISPID* ids) override;
    HRESULT Invoke(DISPID member, const GUID& reserved, LCID language, std::uint16_t flags,
                   const DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                   std::uint32_t* badArgument) override;

    // Directly, in the order of the slots

    HRESULT get_Variables(BSTR* pVal) override { return Read(drilldown::Row("Variables"), pVal); }
    HRESULT put_Variables(VARIANT value) override { return Write(drilldown::Row("Variables"), value); }
    HRESULT get_DrillDownVariable(BSTR* pVal) override { return ReadOwn(drilldown::ReadDrillDownVariable, pVal); }
    HRESULT put_DrillDownVariable(VARIANT value) override { return WriteOwn(drilldown::WriteDrillDownVariable, value); }
    HRESULT get_DrillUpVariable(BSTR* pVal) override { return ReadOwn(drilldown::ReadDrillUpVariable, pVal); }
    HRESULT put_DrillUpVariable(VARIANT value) override { return WriteOwn(drilldown::WriteDrillUpVariable, value); }
    HRESULT get_WeightedMoments(int* pVal) override { return Read(drilldown::Row("WeightedMoments"), pVal); }
    HRESULT put_WeightedMoments(int value) override { return Write(drilldown::Row("WeightedMoments"), value); }
    HRESULT get_Summary(IDispatch** pVal) override { return Read(drilldown::Row("Summary"), pVal); }
    HRESULT get_Descriptives(IDispatch** pVal) override { return Read(drilldown::Row("Descriptives"), pVal); }
    HRESULT get_Frequencies(IDispatch** pVal) override { return Read(drilldown::Row("Frequencies"), pVal); }
    HRESULT get_Histograms(IDispatch** pVal) override { return Read(drilldown::Row("Histograms"), pVal); }
    HRESULT get_PieCharts(IDispatch** pVal) override { return Read(drilldown::Row("PieCharts"), pVal); }
    HRESULT get_StackedPlots(IDispatch** pVal) override { return Read(drilldown::Row("StackedPlots"), pVal); }
    HRESULT get_Save(IDispatch** pVal) override { return Read(drilldown::Row("Save"), pVal); }
    HRESULT get_AllDistinctValues(int* pVal) override { return Read(drilldown::Row("AllDistinctValues"), pVal); }
    HRESULT put_AllDistinctValues(int value) override { return Write(drilldown::Row("AllDistinctValues"), value); }
    HRESULT get_NoOfExactIntervals(int* pVal) override { return Read(drilldown::Row("NoOfExactIntervals"), pVal); }
    HRESULT put_NoOfExactIntervals(int value) override { return Write(drilldown::Row("NoOfExactIntervals"), value); }
    HRESULT get_ValueNoOfExactIntervals(int* pVal) override {
        return Read(drilldown::Row("ValueNoOfExactIntervals"), pVal);
    }
    HRESULT put_ValueNoOfExactIntervals(int value) override {
        return Write(drilldown::Row("ValueNoOfExactIntervals"), value);
    }
    HRESULT get_NeatIntervalsAppNo(int* pVal) override { return Read(drilldown::Row("NeatIntervalsAppNo"), pVal); }
    HRESULT put_NeatIntervalsAppNo(int value) override { return Write(drilldown::Row("NeatIntervalsAppNo"), value); }
    HRESULT get_ValueNeatIntervalsAppNo(int* pVal) override {
        return Read(drilldown::Row("ValueNeatIntervalsAppNo"), pVal);
    }
    HRESULT put_ValueNeatIntervalsAppNo(int value) override {
        return Write(drilldown::Row("ValueNeatIntervalsAppNo"), value);
    }
    HRESULT get_StepSize(int* pVal) override { return Read(drilldown::Row("StepSize"), pVal); }
    HRESULT put_StepSize(int value) override { return Write(drilldown::Row("StepSize"), value); }
    HRESULT get_ValueStepSize(double* pVal) override { return Read(drilldown::Row("ValueStepSize"), pVal); }
    HRESULT put_ValueStepSize(double value) override { return Write(drilldown::Row("ValueStepSize"), value); }
    HRESULT get_ValueStartingFrom(double* pVal) override { return Read(drilldown::Row("ValueStartingFrom"), pVal); }
    HRESULT put_ValueStartingFrom(double value) override { return Write(drilldown::Row("ValueStartingFrom"), value); }
    HRESULT get_StartingAtMinimum(int* pVal) override { return Read(drilldown::Row("StartingAtMinimum"), pVal); }
    HRESULT put_StartingAtMinimum(int value) override { return Write(drilldown::Row("StartingAtMinimum"), value); }
    HRESULT get_IntegerCategories(int* pVal) override { return Read(drilldown::Row("IntegerCategories"), pVal); }
    HRESULT put_IntegerCategories(int value) override { return Write(drilldown::Row("IntegerCategories"), value); }
    HRESULT get_UserSpecifiedCategories(int* pVal) override {
        return Read(drilldown::Row("UserSpecifiedCategories"), pVal);
    }
    HRESULT put_UserSpecifiedCategories(int value) override {
        return Write(drilldown::Row("UserSpecifiedCategories"), value);
    }
    HRESULT get_ReviewVariables(BSTR* pVal) override { return Read(drilldown::Row("ReviewVariables"), pVal); }
    HRESULT put_ReviewVariables(VARIANT value) override { return Write(drilldown::Row("ReviewVariables"), value); }
    HRESULT get_ReviewDescriptives(IDispatch** pVal) override {
        return Read(drilldown::Row("ReviewDescriptives"), pVal);
    }
    HRESULT get_ReviewFrequencies(IDispatch** pVal) override { return Read(drilldown::Row("ReviewFrequencies"), pVal); }
    HRESULT get_ReviewBoxWhisker(IDispatch** pVal) override { return Read(drilldown::Row("ReviewBoxWhisker"), pVal); }
    HRESULT get_ReviewHistograms(IDispatch** pVal) override { return Read(drilldown::Row("ReviewHistograms"), pVal); }
    HRESULT get_ReviewScatterplot(IDispatch** pVal) override { return Read(drilldown::Row("ReviewScatterplot"), pVal); }
    HRESULT get_ReviewPieCharts(IDispatch** pVal) override { return Read(drilldown::Row("ReviewPieCharts"), pVal); }
    HRESULT get_ReviewStackedPlots(IDispatch** pVal) override {
        return Read(drilldown::Row("ReviewStackedPlots"), pVal);
    }
    HRESULT get_Review3DHistograms(IDispatch** pVal) override {
        return Read(drilldown::Row("Review3DHistograms"), pVal);
    }
    HRESULT get_StandAloneResults(int* pVal) override { return Read(drilldown::Row("StandAloneResults"), pVal); }
    HRESULT put_StandAloneResults(int value) override { return Write(drilldown::Row("StandAloneResults"), value); }
    HRESULT get_RVCasewiseDeletionOfMD(int* pVal) override {
        return Read(drilldown::Row("RVCasewiseDeletionOfMD"), pVal);
    }
    HRESULT put_RVCasewiseDeletionOfMD(int value) override {
        return Write(drilldown::Row("RVCasewiseDeletionOfMD"), value);
    }
    HRESULT get_CasewiseDeletionOfMD(int* pVal) override { return Read(drilldown::Row("CasewiseDeletionOfMD"), pVal); }
    HRESULT put_CasewiseDeletionOfMD(int value) override {
        return Write(drilldown::Row("CasewiseDeletionOfMD"), value);
    }
    HRESULT get_CountMD(int* pVal) override { return Read(drilldown::Row("CountMD"), pVal); }
    HRESULT put_CountMD(int value) override { return Write(drilldown::Row("CountMD"), value); }
    HRESULT get_PlotMedianQuartileRange(int* pVal) override {
        return Read(drilldown::Row("PlotMedianQuartileRange"), pVal);
    }
    HRESULT put_PlotMedianQuartileRange(int value) override {
        return Write(drilldown::Row("PlotMedianQuartileRange"), value);
    }
    HRESULT get_PlotMeanSEAndSD(int* pVal) override { return Read(drilldown::Row("PlotMeanSEAndSD"), pVal); }
    HRESULT put_PlotMeanSEAndSD(int value) override { return Write(drilldown::Row("PlotMeanSEAndSD"), value); }
    HRESULT get_PlotMeanSD196TimesSD(int* pVal) override { return Read(drilldown::Row("PlotMeanSD196TimesSD"), pVal); }
    HRESULT put_PlotMeanSD196TimesSD(int value) override {
        return Write(drilldown::Row("PlotMeanSD196TimesSD"), value);
    }
    HRESULT get_PlotMeanSE196TimesSE(int* pVal) override { return Read(drilldown::Row("PlotMeanSE196TimesSE"), pVal); }
    HRESULT put_PlotMeanSE196TimesSE(int value) override {
        return Write(drilldown::Row("PlotMeanSE196TimesSE"), value);
    }
    HRESULT DrillDown() override { return Press(drilldown::Row("DrillDown")); }
    HRESULT DrillUp() override { return Press(drilldown::Row("DrillUp")); }
    HRESULT get_CategorySelections(BSTR* pVal) override { return ReadOwn(drilldown::ReadCategorySelections, pVal); }
    HRESULT put_CategorySelections(VARIANT value) override {
        return WriteOwn(drilldown::WriteCategorySelections, value);
    }
    HRESULT get_DrillDownCategory(BSTR* pVal) override { return ReadOwn(drilldown::ReadDrillDownCategory, pVal); }
    HRESULT put_DrillDownCategory(VARIANT value) override { return WriteOwn(drilldown::WriteDrillDownCategory, value); }
    HRESULT get_UserDefinedBoundaries(BSTR* pVal) override {
        return ReadOwn(drilldown::ReadUserDefinedBoundaries, pVal);
    }
    HRESULT put_UserDefinedBoundaries(VARIANT value) override {
        return WriteOwn(drilldown::WriteUserDefinedBoundaries, value);
    }

  private:
    // The host's property calls on the control of a member; the type decides which.

    HRESULT Read(const drilldown::AutomationMember& member, BSTR* value);
    HRESULT Read(const drilldown::AutomationMember& member, int* value);
    HRESULT Read(const drilldown::AutomationMember& member, double* value);
    HRESULT Read(const drilldown::AutomationMember& member, IDispatch** value);
    HRESULT Write(const drilldown::AutomationMember& member, int value);
    HRESULT Write(const drilldown::AutomationMember& member, double value);
    HRESULT Write(const drilldown::AutomationMember& member, const VARIANT& value);
    HRESULT Press(const drilldown::AutomationMember& member);

    HRESULT ReadOwn(HRESULT (*read)(CDefineTask& task, std::string& text), BSTR* text);
    HRESULT WriteOwn(HRESULT (*write)(CDefineTask& task, const VARIANT& value), const VARIANT& value);

    CDefineTask& Task;
};
