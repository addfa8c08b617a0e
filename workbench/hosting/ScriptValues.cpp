#include "host/ScriptValues.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "platform/OwnedVariant.h"
#include "workbench/documents/WideText.h"

namespace {

/// What stands between the items of a list, and between the lists of a list of lists.
constexpr const char* Joints[] = {" | ", " "};

/// A text that is one item of a list: in double quotes unless it is a plain word.
std::string AsItem(const std::string& text) {
    const auto isPlain = [](unsigned char sign) { return std::isalpha(sign) != 0 || sign == '_' || sign >= 0x80; };
    if (!text.empty() && std::ranges::all_of(text, isPlain)) {
        return text;
    }
    std::string quoted = "\"";
    for (const char sign : text) {
        quoted += sign == '"' ? "\"\"" : std::string(1, sign);
    }
    return quoted + '"';
}

bool AppendValue(const VARIANT& value, std::size_t depth, std::string& text);

bool AppendItems(const SAFEARRAY& array, std::size_t depth, std::string& text) {
    for (std::uint32_t i = 0; i < array.Bounds[0].Count; ++i) {
        text += i == 0 ? "" : Joints[depth];
        if (!AppendValue(array.Data[i], depth + 1, text)) {
            return false;
        }
    }
    return true;
}

bool HoldsLists(const SAFEARRAY& array) {
    return array.Bounds[0].Count > 0 && Has(array.Data[0].Type, VariantType::Array);
}

bool AppendValue(const VARIANT& value, std::size_t depth, std::string& text) {
    OwnedVariant copy;
    if (!Succeeded(VariantCopyInd(*copy.Put(), value))) {
        return false;
    }
    if (Has(copy.Get().Type, VariantType::Array)) {
        const SAFEARRAY* array = copy.Get().Array;
        if (array == nullptr || depth >= std::size(Joints)) {
            return array == nullptr;
        }
        return AppendItems(*array, HoldsLists(*array) ? depth : std::size(Joints) - 1, text);
    }
    OwnedVariant asText;
    if (!Succeeded(VariantChangeType(*asText.Put(), copy.Get(), VariantType::Text))) {
        return false;
    }
    const std::string narrow = quillara::NarrowText(ViewOf(asText.Get().Text));
    text += depth > 0 && copy.Get().Type == VariantType::Text ? AsItem(narrow) : narrow;
    return true;
}

}  // namespace

bool VariantToTextList(const VARIANT& value, std::string& text) {
    text.clear();
    if (AppendValue(value, 0, text)) {
        return true;
    }
    text.clear();
    return false;
}

void StripFormatting(std::string& /*text*/, int /*mode*/) {
    // The workbench keeps no formatting marks in texts.
}
