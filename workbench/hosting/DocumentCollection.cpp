#include "workbench/hosting/DocumentCollection.h"

#include <algorithm>
#include <array>
#include <new>

namespace quillara {
namespace {

void Count(DocumentCollection& items, NamedCall& call) {
    std::int32_t count = 0;
    items.GetCount(&count);
    call.Give(count);
}

void Item(DocumentCollection& items, NamedCall& call) {
    IDispatch* item = nullptr;
    if (const HRESULT status = items.GetItem(call.Value(0), &item); !Succeeded(status)) {
        throw MemberRefusal{status, 0};
    }
    call.Give(CountedPointer<IDispatch>::Adopt(item).Get());
}

// clang-format off
constexpr std::array<MemberRow, 2> Members{{
    // Name    Number Uses                 Arguments Value                  Run                                Help
    {u"Item",  0,     DispatchPropertyGet, 1, 1,     VariantType::Dispatch, RunFor<DocumentCollection, Item>,  "The object at a place from 1, or of a name"},
    {u"Count", 1,     DispatchPropertyGet, 0, 0,     VariantType::Integer,  RunFor<DocumentCollection, Count>, "How many there are"},
}};
// clang-format on

constexpr ObjectKind Kind{u"DocumentCollection", "Objects of the application in their order", {}, Members};

/// The name of an object: its default member; empty without one.
std::u16string NameOf(IDispatch& object) {
    OwnedVariant name;
    const bool hasName = Succeeded(object.Invoke(DefaultMember, GUID_NULL, NeutralLanguage, DispatchPropertyGet, {},
                                                 name.Put(), nullptr, nullptr));
    return hasName && name.Get().Type == VariantType::Text ? std::u16string(ViewOf(name.Get().Text)) : u"";
}

}  // namespace

HRESULT DocumentCollection::QueryInterface(const GUID& id, void** object) {
    *object = id == IUnknown::Id || id == IDispatch::Id ? static_cast<IDispatch*>(this) : nullptr;
    return *object == nullptr ? E_NOINTERFACE : (AddRef(), S_OK);
}

HRESULT DocumentCollection::GetCount(std::int32_t* count) {
    *count = static_cast<std::int32_t>(Held.size());
    return S_OK;
}

HRESULT DocumentCollection::GetItem(const VARIANT& index, IDispatch** item) try {
    *item = nullptr;
    *item = Find(index).Detach();
    return *item == nullptr ? DISP_E_BADINDEX : S_OK;
} catch (const MemberRefusal& refusal) {
    return refusal.Status;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

CountedPointer<IDispatch> DocumentCollection::Find(const VARIANT& index) const {
    if (index.Type == VariantType::Text) {
        const auto found = std::ranges::find_if(Held, [&index](const CountedPointer<IDispatch>& item) {
            return item && NameOf(*item) == ViewOf(index.Text);
        });
        return found == Held.end() ? CountedPointer<IDispatch>() : *found;
    }
    VARIANT number = index;  // borrowed
    const DISPPARAMS only{&number, nullptr, 1, 0};
    return Held[NamedCall(only, false).Index(0, Held.size())];
}

const ObjectKind& DocumentCollection::MembersOf() const {
    return Kind;
}

CountedPointer<IDispatch> CollectionOf(Items items) {
    return CountedPointer<IDispatch>::Adopt(new DocumentCollection(std::move(items)));
}

}  // namespace quillara
