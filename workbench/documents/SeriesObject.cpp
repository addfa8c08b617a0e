#include "workbench/documents/SeriesObject.h"

#include <array>

namespace quillara {
namespace {

void Name(SeriesObject& series, NamedCall& call) {
    call.Give(series.Numbers().Name);
}

void Labels(SeriesObject& series, NamedCall& call) {
    call.Give(ListOf(series.Numbers().Labels));
}

template <std::vector<double> NamedNumbers::*Row>
void Numbers(SeriesObject& series, NamedCall& call) {
    call.Give(ListOf(series.Numbers().*Row));
}

// clang-format off
constexpr std::array<MemberRow, 4> Members{{
    // Name     Number Uses                 Arguments Value                 Run                                              Help
    {u"Name",   0,     DispatchPropertyGet, 0, 0,     VariantType::Text,    RunFor<SeriesObject, Name>,                      "The name of the series"},
    {u"Labels", 1,     DispatchPropertyGet, 0, 0,     VariantType::Variant, RunFor<SeriesObject, Labels>,                    "The names of its points"},
    {u"X",      2,     DispatchPropertyGet, 0, 0,     VariantType::Variant, RunFor<SeriesObject, Numbers<&NamedNumbers::X>>, "Where its points stand"},
    {u"Y",      3,     DispatchPropertyGet, 0, 0,     VariantType::Variant, RunFor<SeriesObject, Numbers<&NamedNumbers::Y>>, "What they show"},
}};
// clang-format on

constexpr ObjectKind Kind{u"GraphSeries", "A series of a graph", {}, Members};

}  // namespace

HRESULT SeriesObject::QueryInterface(const GUID& id, void** object) {
    *object = id == IUnknown::Id || id == IDispatch::Id ? static_cast<IDispatch*>(this) : nullptr;
    return *object == nullptr ? E_NOINTERFACE : (AddRef(), S_OK);
}

const ObjectKind& SeriesObject::MembersOf() const {
    return Kind;
}

}  // namespace quillara
