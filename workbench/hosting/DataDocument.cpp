#include "workbench/hosting/DataDocument.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "workbench/formats/DataFile.h"

namespace quillara {
namespace {

void Name(DataDocument& document, NamedCall& call) {
    call.Give(document.Table().FileName);
}

void Cases(DataDocument& document, NamedCall& call) {
    call.Give(document.Table().Cases);
}

void Variables(DataDocument& document, NamedCall& call) {
    call.Give(static_cast<std::int32_t>(document.Table().Variables.size()));
}

void VariableNames(DataDocument& document, NamedCall& call) {
    std::vector<std::string> names;
    std::ranges::transform(document.Table().Variables, std::back_inserter(names), &Variable::Name);
    call.Give(ListOf(names));
}

OwnedVariant ValueOf(const Variable& variable, double value) {
    if (variable.IsMissing(value)) {
        return {};
    }
    const std::string* text = variable.Kind == ValueKind::Text ? variable.LabelOf(value) : nullptr;
    return text == nullptr ? OwnedVariant::OfReal(value) : quillara::ValueOf(*text);
}

void ColumnValues(DataDocument& document, NamedCall& call) {
    const std::vector<Variable>& variables = document.Table().Variables;
    const bool isNamed = call.Value(0).Type == VariantType::Text;
    const Variable& variable =
        variables[isNamed ? document.Table().IndexOf(call.Text(0)) : call.Index(0, variables.size())];
    std::vector<OwnedVariant> values;
    for (const double value : variable.Values) {
        values.push_back(ValueOf(variable, value));
    }
    call.Give(ListOf(std::move(values)));
}

void Save(DataDocument& document, NamedCall& call) {
    call.Give(ListOf(WriteDataFile(document.Table(), call.Text(0))));
}

void Close(DataDocument& document, NamedCall& /*call*/) {
    document.Close();
}

template <auto Serve>
constexpr auto Of = RunFor<DataDocument, Serve>;

// clang-format off
constexpr std::array<MemberRow, 7> Members{{
    // Name            Number Uses                 Arguments Value                 Run                Help
    {u"Name",          0,     DispatchPropertyGet, 0, 0,     VariantType::Text,    Of<Name>,          "The name of the table"},
    {u"Cases",         1,     DispatchPropertyGet, 0, 0,     VariantType::Integer, Of<Cases>,         "The number of its cases"},
    {u"Variables",     2,     DispatchPropertyGet, 0, 0,     VariantType::Integer, Of<Variables>,     "The number of its variables"},
    {u"VariableNames", 3,     DispatchPropertyGet, 0, 0,     VariantType::Variant, Of<VariableNames>, "The names of its variables"},
    {u"Column",        4,     DispatchPropertyGet, 1, 1,     VariantType::Variant, Of<ColumnValues>,  "The values of a variable, by place from 1 or name; missing ones are empty"},
    {u"Save",          5,     DispatchMethod,      1, 1,     VariantType::Variant, Of<Save>,          "Writes the table to a data file, as the ending of the path says; gives what the file can't keep"},
    {u"Close",         6,     DispatchMethod,      0, 0,     VariantType::Empty,   Of<Close>,         "Lets the table go"},
}};
// clang-format on

constexpr ObjectKind Kind{u"DataDocument", "A data table that an analysis has saved", {}, Members};

}  // namespace

HRESULT DataDocument::QueryInterface(const GUID& id, void** object) {
    *object = id == IUnknown::Id || id == IDispatch::Id ? static_cast<IDispatch*>(this) : nullptr;
    return *object == nullptr ? E_NOINTERFACE : (AddRef(), S_OK);
}

const std::shared_ptr<const DataTable>& DataDocument::Share() const {
    if (Held == nullptr) {
        throw MemberRefusal{CO_E_OBJNOTCONNECTED};
    }
    return Held;
}

void DataDocument::Close() {
    if (Held != nullptr) {
        LetGo();
        Held.reset();
    }
}

const ObjectKind& DataDocument::MembersOf() const {
    return Kind;
}

}  // namespace quillara
