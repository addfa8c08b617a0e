// The objects of the application as scripts use them by name, over the real module's documents.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "host/GraphAutomation.h"
#include "platform/OwnedText.h"
#include "platform/TypeInformation.h"
#include "resources/ControlIds.h"
#include "tests/automation/FaceBench.h"
#include "tests/automation/ScriptBench.h"
#include "tests/workbench/Files.h"
#include "tests/workbench/Tables.h"
#include "workbench/dialogs/WeightDialog.h"
#include "workbench/documents/NamedCall.h"
#include "workbench/formats/DataFile.h"
#include "workbench/hosting/ScriptDesk.h"

namespace dialogtest {
namespace {

using quillara::ListOf;

OwnedVariant Call(std::u16string_view name, int id) {
    std::vector<OwnedVariant> items;
    items.push_back(OwnedVariant::OfText(name));
    items.push_back(OwnedVariant::OfInteger(id));
    return ListOf(std::move(items));
}

/// "f m | 1": a list of lists as text.
std::string TextOfList(const VARIANT& value) {
    if (!Has(value.Type, VariantType::Array)) {
        return TextOf(value);
    }
    std::string text = "[";
    for (std::uint32_t i = 0; i < value.Array->Bounds[0].Count; ++i) {
        text += (i == 0 ? "" : " ") + TextOfList(value.Array->Data[i]);
    }
    return text + "]";
}

class ObjectModel : public testing::Test, public ScriptBench {
  protected:
    ObjectModel() {
        Open(quillara::TableOf(
            {quillara::Texts("sex", {"f", "m", "m", std::nullopt}), quillara::Numbers("age", {1, 2, 3, 4})}));
        EXPECT_EQ(Write(DrillVariablesButton, u"sex | age"), "ok");
    }
    ~ObjectModel() override { quillara::TheScriptDesk().ForgetMessages(); }

    /// Reads a member, with arguments.
    static std::string Get(IDispatch* object, std::string_view name, std::vector<OwnedVariant> arguments = {}) {
        return TextOfList(Take(object, name, DispatchPropertyGet, std::move(arguments)).Get());
    }
    static CountedPointer<IDispatch> Object(IDispatch* object, std::string_view name,
                                            std::vector<OwnedVariant> arguments = {}) {
        const OwnedVariant value = Take(object, name, DispatchPropertyGet, std::move(arguments));
        return CountedPointer<IDispatch>::Share(value.Get().Type == VariantType::Dispatch ? value.Get().Dispatch
                                                                                          : nullptr);
    }
    static OwnedVariant Take(IDispatch* object, std::string_view name, DispatchFlag use,
                             std::vector<OwnedVariant> arguments = {}) {
        std::vector<VARIANT> given;
        std::ranges::transform(arguments, std::back_inserter(given), &OwnedVariant::Get);
        Answered answered = CallByName(*object, name, use, std::move(given));
        Status = answered.Status;
        Failure = std::move(answered.Failure);
        return std::move(answered.Value);
    }
    static std::vector<OwnedVariant> One(OwnedVariant value) {
        std::vector<OwnedVariant> one;
        one.push_back(std::move(value));
        return one;
    }
    static CountedPointer<IDispatch> Application() { return CountedPointer<IDispatch>::Adopt(OleAGetApplication()); }

    static inline HRESULT Status = S_OK;
    static inline std::string Failure;
};

TEST_F(ObjectModel, TablesTellTheirCells) {
    EXPECT_EQ(Result(FrequenciesButton), "2 documents");
    const auto first = Object(Made.Get(), "Item", One(OwnedVariant::OfInteger(1)));
    const auto named = Object(Made.Get(), "Item", One(OwnedVariant::OfText(WideText(Read(first.Get(), "Name")))));
    EXPECT_EQ(first.Get(), named.Get());
    EXPECT_EQ(Get(first.Get(), "RowNames"), "['f' 'm' 'Missing']");
    EXPECT_EQ(Get(first.Get(), "Rows") + " x " + Get(first.Get(), "Columns"), "3 x 4");
    EXPECT_EQ(Get(first.Get(), "Values"), "[[1 1 25 25] [2 3 50 75] [1 4 25 100]]");
    std::vector<OwnedVariant> place;
    place.push_back(OwnedVariant::OfInteger(2));
    place.push_back(OwnedVariant::OfInteger(1));
    EXPECT_EQ(Get(first.Get(), "cell", std::move(place)), "2");
    Object(Made.Get(), "Item", One(OwnedVariant::OfInteger(3)));
    EXPECT_EQ(Status, DISP_E_BADINDEX);
    Take(first.Get(), "Save", DispatchMethod, One(OwnedVariant::OfText(u"nowhere.csv")));
    EXPECT_EQ(Failure, "This program can't write documents to files.");
}

TEST_F(ObjectModel, GraphsTellTheirSeries) {
    EXPECT_EQ(Result(PieChartsButton), "2 documents");
    Made = Object(Made.Get(), "Item", One(OwnedVariant::OfInteger(1)));
    ASSERT_TRUE(Made);
    EXPECT_EQ(Get(Made.Get(), "Kind"), "'pie chart'");
    const auto series = Object(Made.Get(), "Series", One(OwnedVariant::OfInteger(1)));
    EXPECT_EQ(Get(series.Get(), "Labels") + Get(series.Get(), "Y"), "['f' 'm' 'Missing'][1 2 1]");
    Object(Made.Get(), "Series", One(OwnedVariant::OfInteger(9)));
    EXPECT_EQ(Status, DISP_E_BADINDEX);
}

TEST_F(ObjectModel, SavedDataIsWrittenAndLetGo) {
    EXPECT_EQ(Result(SaveDataButton), "?: subset");
    EXPECT_EQ(Get(Made.Get(), "VariableNames"), "['sex' 'age']");
    EXPECT_EQ(Get(Made.Get(), "Column", One(OwnedVariant::OfText(u"sex"))), "['f' 'm' 'm' ]");
    const TemporaryFolder folder;
    const std::string path = folder.Path("left.sav");
    Take(Made.Get(), "Save", DispatchMethod, One(OwnedVariant::OfText(WideText(path))));
    EXPECT_EQ(Status, S_OK);
    EXPECT_EQ(quillara::ReadDataFile(path).Cases, 4);
    Take(Made.Get(), "Save", DispatchMethod, One(OwnedVariant::OfText(u"left.unknown")));
    EXPECT_NE(Failure, "");
    Take(Made.Get(), "Close", DispatchMethod);
    Get(Made.Get(), "Cases");
    EXPECT_EQ(Status, CO_E_OBJNOTCONNECTED);
}

TEST_F(ObjectModel, TheApplicationTakesAnswersAndKeepsMessages) {
    using Dialog = quillara::WeightDialog;
    std::vector<OwnedVariant> select;
    select.push_back(OwnedVariant::OfText(u"select"));
    select.push_back(OwnedVariant::OfInteger(Dialog::VariableList));
    select.push_back(OwnedVariant::OfText(u"age"));
    std::vector<OwnedVariant> calls;
    calls.push_back(Call(u"click", Dialog::NoWeight));
    calls.push_back(ListOf(std::move(select)));
    calls.push_back(Call(u"click", 1));
    Take(Application().Get(), "Answer", DispatchMethod, One(ListOf(std::move(calls))));
    EXPECT_EQ(Status, S_OK);
    EXPECT_EQ(Press(WeightButton), "ok");
    EXPECT_EQ(Analysis().CaseWeight.Variable, 2);
    Take(Application().Get(), "Answer", DispatchMethod, One(OwnedVariant::OfInteger(1)));
    EXPECT_EQ(Status, E_INVALIDARG);

    std::vector<OwnedVariant> wrong;
    wrong.push_back(Call(u"click", 99));
    Take(Application().Get(), "Answer", DispatchMethod, One(ListOf(std::move(wrong))));
    EXPECT_EQ(Press(WeightButton).substr(0, 10), "exception:");
    Analysis().dsplst(0, "told");
    EXPECT_EQ(Get(Application().Get(), "Messages"), "['told']");
    Take(Application().Get(), "ClearMessages", DispatchMethod);
    EXPECT_EQ(Get(Application().Get(), "Messages"), "[]");
    EXPECT_EQ(Application().Get(), Application().Get());
}

TEST_F(ObjectModel, AnalysesTellOfTheirDialogAndOutputs) {
    const auto analyses = Object(Application().Get(), "Analyses");
    const auto analysis = Object(analyses.Get(), "Item", One(OwnedVariant::OfText(u"Drill-Down Analysis")));
    ASSERT_TRUE(analysis);
    Result(FrequenciesButton);
    EXPECT_EQ(Read(Object(analysis.Get(), "Outputs").Get(), "Count"), "2");
    EXPECT_EQ(Get(Object(analysis.Get(), "Dialog").Get(), "Variables"), "'sex | age'");
    Take(analysis.Get(), "AutomationInteractive", DispatchPropertyPut, One(OwnedVariant::OfInteger(1)));
    EXPECT_EQ(Get(analysis.Get(), "AutomationInteractive"), "True");
    Analysis().dsplst(0, "to the person");
    EXPECT_THAT(TakeMessages(), testing::ElementsAre("to the person"));
}

TEST_F(ObjectModel, ObjectsTellOfTheirMembers) {
    ITypeInfo* information = nullptr;
    ASSERT_EQ(Application()->GetTypeInfo(0, NeutralLanguage, &information), S_OK);
    const auto held = CountedPointer<ITypeInfo>::Adopt(information);
    const TYPEATTR* attributes = nullptr;
    held->GetTypeAttr(&attributes);
    std::string members;
    for (std::uint32_t i = 0; i < attributes->FunctionCount; ++i) {
        const FUNCDESC* function = nullptr;
        OwnedText name;
        std::uint32_t count = 0;
        ASSERT_EQ(held->GetFuncDesc(i, &function), S_OK);
        ASSERT_EQ(held->GetNames(function->Member, name.Put(), 1, &count), S_OK);
        members += NarrowText(name.View()) + ' ' + std::to_string(function->Use) +
                   std::to_string(function->ParameterCount) + ", ";
    }
    EXPECT_EQ(members,
              "Name 20, Analyses 20, Graphs 20, ActiveItem 20, Messages 20, ClearMessages 10, Answer 11, "
              "ClearAnswers 10, ");
    OwnedText help;
    EXPECT_EQ(held->GetDocumentation(UnknownMember, nullptr, help.Put(), nullptr, nullptr), S_OK);
    EXPECT_EQ(NarrowText(help.View()), "The application");
    EXPECT_EQ(Application()->GetTypeInfo(1, NeutralLanguage, &information), DISP_E_BADINDEX);
}

}  // namespace
}  // namespace dialogtest
