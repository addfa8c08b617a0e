#include "workbench/hosting/LongTextRegister.h"

#include <algorithm>
#include <mutex>
#include <tuple>

#include "workbench/hosting/LongTexts.h"

namespace quillara {

namespace {

constexpr std::string_view Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
constexpr int BitsPerCharacter = 6;
constexpr int MostLevels = 16;
constexpr std::size_t LongestExpansion = std::size_t{1} << 24;

/// FNV-1a, with its upper bits folded in because a key takes only the lower ones.
std::uint64_t HashOf(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325ULL;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3ULL;
    }
    return hash ^ (hash >> 42);
}

std::string KeyFrom(std::uint64_t number) {
    std::string key(LongTextKeyWidth, LongTextKeyMark);
    for (std::size_t i = 1; i < key.size(); ++i) {
        key[i] = Alphabet[number % Alphabet.size()];
        number >>= BitsPerCharacter;
    }
    return key;
}

}  // namespace

LongTextRegister::LongTextRegister() : LongTextRegister(HashOf) {}

LongTextRegister::LongTextRegister(Hash hash) : FirstKey(hash) {}

std::string LongTextRegister::KeyOf(std::string_view text) {
    if (text.size() <= LongTextKeyWidth) {
        return std::string(text);
    }
    {
        const std::shared_lock lock(Guard);
        if (const auto known = Keys.find(text); known != Keys.end()) {
            return std::string(known->second);
        }
    }
    const std::unique_lock lock(Guard);
    if (const auto known = Keys.find(text); known != Keys.end()) {
        return std::string(known->second);
    }
    std::uint64_t number = FirstKey(text);
    auto [entry, added] = Texts.try_emplace(KeyFrom(number), text);
    while (!added) {
        std::tie(entry, added) = Texts.try_emplace(KeyFrom(++number), text);
    }
    try {
        Keys.emplace(entry->second, entry->first);
    } catch (...) {
        Texts.erase(entry);
        throw;
    }
    return entry->first;
}

const std::string* LongTextRegister::Find(std::string_view key) const {
    if (key.size() != LongTextKeyWidth || key.front() != LongTextKeyMark) {
        return nullptr;
    }
    const std::shared_lock lock(Guard);
    const auto entry = Texts.find(std::string(key));
    return entry == Texts.end() ? nullptr : &entry->second;
}

std::string LongTextRegister::Expand(std::string_view text) const {
    std::string result;
    ExpandInto(result, text, 0);
    return result;
}

void LongTextRegister::ExpandInto(std::string& result, std::string_view text, int depth) const {
    while (!text.empty()) {
        const std::size_t mark = std::min(text.find(LongTextKeyMark), text.size());
        result += text.substr(0, mark);
        text.remove_prefix(mark);
        const std::string_view key = text.substr(0, LongTextKeyWidth);
        const std::string* longText = depth < MostLevels && result.size() < LongestExpansion ? Find(key) : nullptr;
        if (longText != nullptr) {
            ExpandInto(result, *longText, depth + 1);
            text.remove_prefix(LongTextKeyWidth);
        } else {
            result += text.substr(0, 1);
            text.remove_prefix(std::min<std::size_t>(text.size(), 1));
        }
    }
}

}  // namespace quillara
