#pragma once

#include "host/DialogAutomation.h"

/// What scripts can do with the startup dialog, over what they can do with every dialog. A property or method acts as
/// the user would: a result property presses its button and gives what the press made. The order of the slots and the
/// identifier never change. Values that are read are the caller's; values that are written stay the caller's.
struct DDNStartup : IComQuillaraDialog {
    static constexpr GUID Id = GuidOf("{C9E2C2DB-3D45-11D4-9FF4-00C04FA0D540}");

    virtual HRESULT get_Variables(BSTR* pVal) = 0;
    virtual HRESULT put_Variables(VARIANT value) = 0;
    virtual HRESULT get_DrillDownVariable(BSTR* pVal) = 0;
    virtual HRESULT put_DrillDownVariable(VARIANT value) = 0;
    virtual HRESULT get_DrillUpVariable(BSTR* pVal) = 0;
    virtual HRESULT put_DrillUpVariable(VARIANT value) = 0;
    virtual HRESULT get_WeightedMoments(int* pVal) = 0;
    virtual HRESULT put_WeightedMoments(int value) = 0;
    virtual HRESULT get_Summary(IDispatch** pVal) = 0;
    virtual HRESULT get_Descriptives(IDispatch** pVal) = 0;
    virtual HRESULT get_Frequencies(IDispatch** pVal) = 0;
    virtual HRESULT get_Histograms(IDispatch** pVal) = 0;
    virtual HRESULT get_PieCharts(IDispatch** pVal) = 0;
    virtual HRESULT get_StackedPlots(IDispatch** pVal) = 0;
    virtual HRESULT get_Save(IDispatch** pVal) = 0;
    virtual HRESULT get_AllDistinctValues(int* pVal) = 0;
    virtual HRESULT put_AllDistinctValues(int value) = 0;
    virtual HRESULT get_NoOfExactIntervals(int* pVal) = 0;
    virtual HRESULT put_NoOfExactIntervals(int value) = 0;
    virtual HRESULT get_ValueNoOfExactIntervals(int* pVal) = 0;
    virtual HRESULT put_ValueNoOfExactIntervals(int value) = 0;
    virtual HRESULT get_NeatIntervalsAppNo(int* pVal) = 0;
    virtual HRESULT put_NeatIntervalsAppNo(int value) = 0;
    virtual HRESULT get_ValueNeatIntervalsAppNo(int* pVal) = 0;
    virtual HRESULT put_ValueNeatIntervalsAppNo(int value) = 0;
    virtual HRESULT get_StepSize(int* pVal) = 0;
    virtual HRESULT put_StepSize(int value) = 0;
    virtual HRESULT get_ValueStepSize(double* pVal) = 0;
    virtual HRESULT put_ValueStepSize(double value) = 0;
    virtual HRESULT get_ValueStartingFrom(double* pVal) = 0;
    virtual HRESULT put_ValueStartingFrom(double value) = 0;
    virtual HRESULT get_StartingAtMinimum(int* pVal) = 0;
    virtual HRESULT put_StartingAtMinimum(int value) = 0;
    virtual HRESULT get_IntegerCategories(int* pVal) = 0;
    virtual HRESULT put_IntegerCategories(int value) = 0;
    virtual HRESULT get_UserSpecifiedCategories(int* pVal) = 0;
    virtual HRESULT put_UserSpecifiedCategories(int value) = 0;
    virtual HRESULT get_ReviewVariables(BSTR* pVal) = 0;
    virtual HRESULT put_ReviewVariables(VARIANT value) = 0;
    virtual HRESULT get_ReviewDescriptives(IDispatch** pVal) = 0;
    virtual HRESULT get_ReviewFrequencies(IDispatch** pVal) = 0;
    virtual HRESULT get_ReviewBoxWhisker(IDispatch** pVal) = 0;
    virtual HRESULT get_ReviewHistograms(IDispatch** pVal) = 0;
    virtual HRESULT get_ReviewScatterplot(IDispatch** pVal) = 0;
    virtual HRESULT get_ReviewPieCharts(IDispatch** pVal) = 0;
    virtual HRESULT get_ReviewStackedPlots(IDispatch** pVal) = 0;
    virtual HRESULT get_Review3DHistograms(IDispatch** pVal) = 0;
    virtual HRESULT get_StandAloneResults(int* pVal) = 0;
    virtual HRESULT put_StandAloneResults(int value) = 0;
    virtual HRESULT get_RVCasewiseDeletionOfMD(int* pVal) = 0;
    virtual HRESULT put_RVCasewiseDeletionOfMD(int value) = 0;
    virtual HRESULT get_CasewiseDeletionOfMD(int* pVal) = 0;
    virtual HRESULT put_CasewiseDeletionOfMD(int value) = 0;
    virtual HRESULT get_CountMD(int* pVal) = 0;
    virtual HRESULT put_CountMD(int value) = 0;
    virtual HRESULT get_PlotMedianQuartileRange(int* pVal) = 0;
    virtual HRESULT put_PlotMedianQuartileRange(int value) = 0;
    virtual HRESULT get_PlotMeanSEAndSD(int* pVal) = 0;
    virtual HRESULT put_PlotMeanSEAndSD(int value) = 0;
    virtual HRESULT get_PlotMeanSD196TimesSD(int* pVal) = 0;
    virtual HRESULT put_PlotMeanSD196TimesSD(int value) = 0;
    virtual HRESULT get_PlotMeanSE196TimesSE(int* pVal) = 0;
    virtual HRESULT put_PlotMeanSE196TimesSE(int value) = 0;
    virtual HRESULT DrillDown() = 0;
    virtual HRESULT DrillUp() = 0;
    virtual HRESULT get_CategorySelections(BSTR* pVal) = 0;
    virtual HRESULT put_CategorySelections(VARIANT value) = 0;
    virtual HRESULT get_DrillDownCategory(BSTR* pVal) = 0;
    virtual HRESULT put_DrillDownCategory(VARIANT value) = 0;
    virtual HRESULT get_UserDefinedBoundaries(BSTR* pVal) = 0;
    virtual HRESULT put_UserDefinedBoundaries(VARIANT value) = 0;

  protected:
    ~DDNStartup() = default;
};
