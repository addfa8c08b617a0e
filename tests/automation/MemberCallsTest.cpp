// How members reach the host: each by the property call of its control, directly and by name, with values of its type.

#include <gmock/gmock.h>

#include <set>

#include "resources/StartupControls.h"
#include "tests/automation/FaceBench.h"
#include "tests/automation/HostCalls.h"
#include "tests/workbench/Tables.h"

namespace dialogtest {
namespace {

constexpr const char* KindNames[] = {"", "integer", "real", "text", "object", "value"};

class MemberCallsTest : public testing::Test, public OutputsBench {
  protected:
    void SetUp() override { Open(quillara::TableOf({quillara::Numbers("x", {1, 2})})); }
    void TearDown() override { OnHostCall = nullptr; }

    /// The property call that something makes of the host; what that gives plays no part.
    template <typename Call>
    static std::string CallMade(const Call& make) {
        std::string made;
        OnHostCall = [&made](const std::string& call) {
            made += call;
            throw 7;
        };
        make();
        OnHostCall = nullptr;
        return made;
    }
};

TEST_F(MemberCallsTest, EachMemberGoesToItsControlByTheCallOfItsType) {
    for (const AutomationMember& member : StartupMembers) {
        for (const MemberFunction& function : member.Functions) {
            if (function.Call == nullptr || member.Control == 0) {
                continue;
            }
            const std::string kind = KindNames[static_cast<std::size_t>(function.Kind)];
            const std::string control = std::to_string(member.Control);
            const bool isPut = function.Use == DispatchPropertyPut;
            const std::string expected = function.Use == DispatchMethod ? "press " + control
                                         : isPut                        ? "put " + kind + " " + control + " 1"
                                                                        : "get " + kind + " " + control;
            VARIANT value;
            function.Kind == ValueKind::Real ? void(value.Real = 1) : void(value.Integer = 1);
            value.Type = VariantType::Integer;
            EXPECT_EQ(CallMade([&] { function.Call(FaceOf(Dialog()), value); }), expected) << member.Name;
            const std::vector<VARIANT> one(isPut ? 1 : 0, ValueOf("1").Get());
            EXPECT_EQ(CallMade([&] { CallByName(FaceOf(Dialog()), member.Name, function.Use, one); }), expected)
                << member.Name;
        }
    }
}

TEST_F(MemberCallsTest, ValuesAreConvertedToTheTypeOfTheMember) {
    // clang-format off
    const struct { const char* Member; const char* Value; const char* Call; } writes[] = {
        {"WeightedMoments", "2.5",   "put integer 204 2"},
        {"WeightedMoments", "true",  "put integer 204 -1"},
        {"WeightedMoments", "' 3 '", "put integer 204 3"},
        {"WeightedMoments", "",      "put integer 204 0"},
        {"ValueStepSize",   "3",     "put real 9072 3"},
        {"ValueStepSize",   "'2.5'", "put real 9072 2.5"},
        {"ValueStepSize",   "false", "put real 9072 0"},
        {"Variables",       "'a b'", "put value 9050 'a b'"},
        {"Variables",       "2.5",   "put value 9050 2.5"},
        {"variables",       "true",  "put value 9050 True"},
        {"WeightedMoments", "'x'",   ""},
    };
    // clang-format on
    for (const auto& [member, value, call] : writes) {
        EXPECT_EQ(CallMade([&, name = member, given = value] { PutByName(Dialog(), name, given); }), call)
            << member << value;
    }
    std::int32_t five = 5;
    VARIANT reference;
    reference.Type = VariantType::Integer | VariantType::ByReference;
    reference.IntegerReference = &five;
    for (const auto& [name, call] :
         {std::pair("WeightedMoments", "put integer 204 5"), {"Variables", "put value 9050 5"}}) {
        EXPECT_EQ(
            CallMade([&, member = name] { CallByName(FaceOf(Dialog()), member, DispatchPropertyPut, {reference}); }),
            call);
    }
}

TEST_F(MemberCallsTest, CallsThatDoNotFitAreRefusedBeforeTheHostHearsOfThem) {
    constexpr DISPID weighted = 0x60030006, down = 0x6003003f;
    DISPID put = PropertyPutArgument, first = 0;
    VARIANT values[2];
    std::uint32_t bad = 99;
    // clang-format off
    const struct { DISPID Member = 0; unsigned Uses = 0; DISPPARAMS Given; HRESULT Status = S_OK; const char* Call = ""; } calls[] = {
        {weighted, DispatchPropertyPut,                                 {values, &first, 1, 1},     DISP_E_PARAMNOTFOUND, ""},
        {weighted, DispatchPropertyPutReference,                        {values, &put, 1, 1},       DISP_E_MEMBERNOTFOUND, ""},
        {13,       DispatchPropertyGet,                                 {},                         DISP_E_MEMBERNOTFOUND, ""},
        {weighted, DispatchPropertyGet | DispatchMethod,                {},                         E_FAIL, "get integer 204"},
        {down,     DispatchPropertyGet | DispatchMethod,                {},                         E_FAIL, "press 9056"},
        {weighted, DispatchPropertyPut | DispatchPropertyPutReference,  {values, nullptr, 1, 0},    E_FAIL, "put integer 204 0"},
    };
    // clang-format on
    for (const auto& each : calls) {
        HRESULT status = S_OK;
        EXPECT_EQ(CallMade([&] {
                      status = FaceOf(Dialog()).Invoke(each.Member, GUID_NULL, NeutralLanguage,
                                                       static_cast<std::uint16_t>(each.Uses), each.Given, nullptr,
                                                       nullptr, &bad);
                  }),
                  each.Call);
        EXPECT_EQ(status, each.Status) << each.Member << " " << each.Uses;
    }
    EXPECT_EQ(bad, 99U);
}

TEST_F(MemberCallsTest, ReadingNeedsAPlace) {
    DDNStartup& face = FaceOf(Dialog());
    for (const HRESULT status :
         {face.get_Variables(nullptr), face.get_WeightedMoments(nullptr), face.get_ValueStepSize(nullptr),
          face.get_Summary(nullptr), face.get_DrillDownVariable(nullptr), face.get_Name(nullptr),
          face.get_Application(nullptr), face.get_Parent(nullptr), face.OK(nullptr)}) {
        EXPECT_EQ(status, E_POINTER);
    }
}

TEST_F(MemberCallsTest, AFailureFillsTheRecordAndLeavesTheErrorObject) {
    FailNext("get integer", [] { throw std::runtime_error("größer"); });
    EXCEPINFO record;
    EXPECT_EQ(FaceOf(Dialog()).Invoke(0x60030006, GUID_NULL, NeutralLanguage, DispatchPropertyGet, {}, nullptr, &record,
                                      nullptr),
              DISP_E_EXCEPTION);
    const OwnedText source(record.Source), description(record.Description);
    EXPECT_EQ(record.Status, E_FAIL);
    EXPECT_EQ(NarrowText(description.View()), "größer");
    // The error object of one call says nothing of the next, which fails by its status alone.
    EXPECT_EQ(FaceOf(Dialog()).Invoke(0x60030043, GUID_NULL, NeutralLanguage, DispatchPropertyGet, {}, nullptr, &record,
                                      nullptr),
              DISP_E_EXCEPTION);
    EXPECT_EQ(record.Status, E_FAIL);
    EXPECT_EQ(record.Description, nullptr);
    EXPECT_EQ(TakeError(), "");
}

/// "204 integer": a control and what its row says of it.
std::string RowText(const ControlRow& row) {
    const char* kind = row.IsProperty == 0         ? "method"
                       : row.Class != ValueControl ? (row.Mode == Acts ? "result" : "variables")
                       : row.Value == TextValue    ? "own"
                       : row.Value == RealValue    ? "real"
                                                   : "integer";
    EXPECT_EQ(row.Value == MethodValue, row.IsProperty == 0);
    EXPECT_TRUE(std::ranges::all_of(row.Reserved, [](int each) { return each == 0; }));
    return std::to_string(row.Control) + " " + kind;
}

TEST_F(MemberCallsTest, TheControlTableHasARowForEachMember) {
    std::set<std::string> rows, members{"9053 own", "9054 own", "9108 own", "9112 own", "9126 own"};
    std::vector<std::pair<int, int>> order;
    const ControlRow* row = StartupControls.data();
    for (; row->Control != 0; ++row) {
        rows.insert(RowText(*row));
        order.emplace_back(row->Control, row->RecordingId);
    }
    // clang-format off
    const std::vector<std::pair<int, int>> told{  // recorders take values in this order
        {9050, 41114}, {9053, 41115}, {9054, 41116}, {204, 41117},  {9058, 41118}, {9059, 41119}, {9060, 41120}, {9119, 41151},
        {9121, 41152}, {9061, 41121}, {9086, 41122}, {9064, 41123}, {9065, 41124}, {9070, 41125}, {9066, 41126}, {9071, 41127},
        {9067, 41128}, {9072, 41129}, {9073, 41130}, {9075, 41131}, {9068, 41132}, {9069, 41133}, {9080, 41134}, {9081, 41135},
        {9082, 41136}, {9084, 41137}, {9083, 41138}, {9100, 41139}, {9122, 41148}, {9124, 41149}, {9123, 41150}, {9112, 41145},
        {9126, 41144}, {9108, 41143}, {9106, 41140}, {9107, 41141}, {9128, 41142}, {9127, 41153}, {9114, 22939}, {9115, 22940},
        {9116, 22941}, {9117, 22942}, {9056, 41146}, {9057, 41147}};
    // clang-format on
    EXPECT_EQ(order, told);
    EXPECT_EQ(row - StartupControls.data(), std::ssize(StartupControls) - 1);
    EXPECT_EQ(row->IsProperty, 1);
    for (const AutomationMember& member : StartupMembers) {
        const MemberFunction& first = member.Functions[0];
        const std::string kind = KindNames[static_cast<std::size_t>(first.Kind)];
        if (member.Control != 0) {
            members.insert(std::to_string(member.Control) + " " +
                           (first.Use == DispatchMethod       ? "method"
                            : first.Kind == ValueKind::Object ? "result"
                            : first.Kind == ValueKind::Text   ? "variables"
                                                              : kind));
        }
    }
    EXPECT_EQ(rows, members);
    EXPECT_EQ(rows.size(), 44U);
}

}  // namespace
}  // namespace dialogtest
