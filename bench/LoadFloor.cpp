#include "bench/LoadFloor.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <thread>

namespace {

constexpr std::array<double, 20> Powers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                                           1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

/// Each takes the field at `place` and leaves the place of the separator behind it.
double TakeNumber(const char*& place) {
    const bool isNegative = *place == '-';
    place += isNegative ? 1 : 0;
    const char* const begin = place;
    std::uint64_t digits = 0;
    std::size_t behindPoint = 0;
    for (; *place >= '0'; ++place) {
        digits = 10 * digits + static_cast<std::uint64_t>(*place - '0');
    }
    if (*place == '.') {
        const char* const point = place;
        for (++place; *place >= '0'; ++place) {
            digits = 10 * digits + static_cast<std::uint64_t>(*place - '0');
        }
        behindPoint = static_cast<std::size_t>(place - point - 1);
    }
    const double number = static_cast<double>(digits) / Powers[behindPoint];
    return place == begin ? std::numeric_limits<double>::quiet_NaN() : isNegative ? -number : number;
}

std::int32_t TakeDate(const char*& place) {
    if (*place == ',' || *place == '\n') {
        return std::numeric_limits<std::int32_t>::min();
    }
    const auto digit = [&](std::size_t at) { return place[at] - '0'; };
    const int year = digit(0) * 1000 + digit(1) * 100 + digit(2) * 10 + digit(3);
    const int month = digit(5) * 10 + digit(6);
    const int day = digit(8) * 10 + digit(9);
    place += 10;
    const int months = 12 * year + month + 9;  // years that begin with March
    const int years = months / 12 - 1;
    return 365 * years + years / 4 - years / 100 + years / 400 + (153 * (months % 12) + 2) / 5 + day - 719469;
}

/// Codes of texts by a table of twice as many places as texts.
class FloorCodes {
  public:
    std::uint32_t CodeOf(std::string_view text, std::uint32_t hash) {
        const std::size_t mask = Slots.size() - 1;
        std::size_t place = hash & mask;
        while (Slots[place] != 0 && Texts[Slots[place] - 1] != text) {
            place = (place + 1) & mask;
        }
        if (Slots[place] == 0) {
            Texts.push_back(text);
            Slots[place] = static_cast<std::uint32_t>(Texts.size());
        }
        return Slots[place];
    }

  private:
    std::vector<std::uint32_t> Slots = std::vector<std::uint32_t>(1 << 16);
    std::vector<std::string_view> Texts;
};

std::uint32_t TakeText(const char*& place, FloorCodes& codes) {
    const char* const begin = place;
    std::uint32_t hash = 0;
    for (; *place != ',' && *place != '\n'; ++place) {
        hash = (hash ^ static_cast<unsigned char>(*place)) * 16777619U;
    }
    return codes.CodeOf({begin, static_cast<std::size_t>(place - begin)}, hash);
}

std::uint32_t TakeQuoted(const char*& place, FloorCodes& codes) {
    if (*place != '"') {
        return TakeText(place, codes);
    }
    const char* const begin = ++place;
    std::uint32_t hash = 0;
    for (; *place != '"' || *++place == '"'; ++place) {
        hash = (hash ^ static_cast<unsigned char>(*place)) * 16777619U;
    }
    return codes.CodeOf({begin, static_cast<std::size_t>(place - begin - 1)}, hash);
}

template <typename Value, typename Take>
std::size_t TakeRecords(const char* begin, const char* end, std::size_t columns, Take take) {
    std::vector<std::vector<Value>> values(columns);
    for (auto& column : values) {
        column.reserve(static_cast<std::size_t>(end - begin) / columns / 2);
    }
    for (const char* place = begin; place < end;) {
        for (std::size_t i = 0; i < columns; ++i, ++place) {
            values[i].push_back(take(place, i));
        }
    }
    return values[0].size();
}

std::size_t TakePart(const char* begin, const char* end, LoadKind kind, std::size_t columns) {
    std::vector<FloorCodes> codes(kind == LoadKind::Texts || kind == LoadKind::QuotedTexts ? columns : 0);
    switch (kind) {
        case LoadKind::Numbers:
            return TakeRecords<double>(begin, end, columns,
                                       [](const char*& at, std::size_t) { return TakeNumber(at); });
        case LoadKind::Dates:
            return TakeRecords<std::int32_t>(begin, end, columns,
                                             [](const char*& at, std::size_t) { return TakeDate(at); });
        case LoadKind::Texts:
            return TakeRecords<std::uint32_t>(begin, end, columns,
                                              [&](const char*& at, std::size_t i) { return TakeText(at, codes[i]); });
        case LoadKind::QuotedTexts:
            break;
    }
    return TakeRecords<std::uint32_t>(begin, end, columns,
                                      [&](const char*& at, std::size_t i) { return TakeQuoted(at, codes[i]); });
}

}  // namespace

std::size_t RunLoadFloor(const std::string& path, LoadKind kind, std::size_t columns) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    fstat(file, &status);
    const auto bytes = static_cast<std::size_t>(status.st_size);
    void* const mapped = mmap(nullptr, bytes, PROT_READ, MAP_PRIVATE, file, 0);
    close(file);
    const auto* const text = static_cast<const char*>(mapped);
    const char* const end = text + bytes;
    const auto behindLine = [&](const char* place) {
        return static_cast<const char*>(std::memchr(place, '\n', static_cast<std::size_t>(end - place))) + 1;
    };
    const char* const begin = behindLine(text);
    const char* const middle = behindLine(text + bytes / 2);
    std::size_t records = 0;
    std::thread other([&] { records = TakePart(middle, end, kind, columns); });
    const std::size_t own = TakePart(begin, middle, kind, columns);
    other.join();
    munmap(mapped, bytes);
    return own + records;
}
