#include "workbench/documents/NamedCall.h"

#include <new>
#include <utility>

#include "workbench/documents/WideText.h"

namespace quillara {
namespace {

/// A list of as many items as it is made of.
template <typename Items, typename Make>
OwnedVariant MakeList(Items&& items, Make make) {
    VARIANT list;
    list.Array = SafeArrayOfVariants(static_cast<std::uint32_t>(items.size()));
    if (list.Array == nullptr) {
        throw std::bad_alloc();
    }
    list.Type = VariantType::Array | VariantType::Variant;
    OwnedVariant owned(list);
    for (std::size_t i = 0; i < items.size(); ++i) {
        list.Array->Data[i] = make(items[i]).Detach();
    }
    return owned;
}

}  // namespace

std::string NamedCall::Text(std::size_t place) const {
    return NarrowText(ViewOf(Converted(place, VariantType::Text).Text));
}

std::size_t NamedCall::Index(std::size_t place, std::size_t count) const {
    const std::int32_t number = Integer(place);
    if (number < 1 || static_cast<std::size_t>(number) > count) {
        throw MemberRefusal{DISP_E_BADINDEX, IndexOf(place)};
    }
    return static_cast<std::size_t>(number) - 1;
}

void NamedCall::Give(const std::string& text) {
    Result = ValueOf(text);
}

const VARIANT& NamedCall::Converted(std::size_t place, VariantType type) const {
    const HRESULT status = VariantChangeType(*Room.Put(), Value(place), type);
    if (!Succeeded(status)) {
        throw MemberRefusal{status, IndexOf(place)};
    }
    return Room.Get();
}

OwnedVariant ValueOf(const std::string& text) {
    return OwnedVariant::OfText(WideText(text));
}

OwnedVariant ListOf(std::vector<OwnedVariant> items) {
    return MakeList(items, [](OwnedVariant& item) { return std::move(item); });
}

OwnedVariant ListOf(const std::vector<std::string>& texts) {
    return MakeList(texts, [](const std::string& text) { return ValueOf(text); });
}

OwnedVariant ListOf(const std::vector<double>& numbers) {
    return MakeList(numbers, [](double number) { return OwnedVariant::OfReal(number); });
}

}  // namespace quillara
