#include "workbench/data/LetterCase.h"

#include <algorithm>
#include <array>
#include <climits>
#include <clocale>
#include <cwchar>
#include <cwctype>

#include <locale.h>

namespace quillara {
namespace {

/// Makes UTF-8 the encoding of this thread for a while, whatever the user's locale is.
class Utf8Locale {
  public:
    Utf8Locale() : Used(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {
        if (Used != nullptr) {
            Before = uselocale(Used);
        }
    }
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;
    ~Utf8Locale() {
        if (Used != nullptr) {
            uselocale(Before);
            freelocale(Used);
        }
    }

  private:
    locale_t Used;
    locale_t Before = nullptr;
};

/// The text with `change` made of every character.
std::string Changed(std::string_view text, wint_t (*change)(wint_t character)) {
    const Utf8Locale locale;
    std::string changed;
    while (!text.empty()) {
        wchar_t character = 0;
        std::mbstate_t state{};
        std::size_t length = std::mbrtowc(&character, text.data(), text.size(), &state);
        const bool isRead = length > 0 && length <= text.size();
        length = isRead ? length : 1;
        std::array<char, MB_LEN_MAX> bytes{};
        state = {};
        const auto other = static_cast<wchar_t>(change(static_cast<wint_t>(character)));
        const std::size_t written = isRead ? std::wcrtomb(bytes.data(), other, &state) : bytes.size() + 1;
        const bool isWritten = written <= bytes.size();
        changed += isWritten ? std::string_view(bytes.data(), written) : text.substr(0, length);
        text.remove_prefix(length);
    }
    return changed;
}

}  // namespace

std::string InLowerCase(std::string_view text) {
    return Changed(text, std::towlower);
}

std::string InUpperCase(std::string_view text) {
    return Changed(text, std::towupper);
}

std::string InSmallLetters(std::string_view text) {
    std::string small(text);
    std::ranges::transform(small, small.begin(), SmallLetter);
    return small;
}

std::string InCapitals(std::string_view text) {
    std::string capital(text);
    std::ranges::transform(capital, capital.begin(), CapitalLetter);
    return capital;
}

bool EqualButForLetterCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, SmallLetter, SmallLetter);
}

std::wstring WithoutLetterCase(std::string_view text) {
    const Utf8Locale locale;
    std::wstring folded;
    while (!text.empty()) {
        wchar_t character = 0;
        std::mbstate_t state{};
        std::size_t length = std::mbrtowc(&character, text.data(), text.size(), &state);
        if (length == 0 || length > text.size()) {
            character = static_cast<unsigned char>(text.front());
            length = 1;
        }
        // By way of the capital letter, so that two small forms of one letter come out alike.
        folded += static_cast<wchar_t>(std::towlower(std::towupper(static_cast<wint_t>(character))));
        text.remove_prefix(length);
    }
    return folded;
}

}  // namespace quillara
