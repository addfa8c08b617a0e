#include "workbench/formats/TitleRecords.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/WrittenValue.h"
#include "workbench/formats/PartRecords.h"
#include "workbench/formats/RecordScanner.h"

namespace quillara {
namespace {

constexpr std::size_t BeginningBytes = 64 << 10;
constexpr std::size_t MostRecords = 1000;
constexpr std::size_t MostTitles = 30;

/// What a record of the beginning looks like.
struct RecordLook {
    std::size_t Fields = 0;  // 0: it is empty
    bool HasGap = false;  // behind its first field
    bool HasValue = false;  // a number or a day
};

bool AreEmpty(const std::vector<std::string_view>& fields) {
    return std::ranges::all_of(fields, &std::string_view::empty);
}

RecordLook LookOf(const std::vector<std::string_view>& fields) {
    return {
        .Fields = fields.size(),
        .HasGap = std::any_of(fields.begin() + 1, fields.end(), [](std::string_view field) { return field.empty(); }),
        .HasValue =
            std::ranges::any_of(fields, [](std::string_view field) { return ReadWrittenValue(field).has_value(); })};
}

std::vector<RecordLook> LooksOf(const std::string& sample, std::optional<char> separator) {
    RecordScanner scanner(sample, {.Separator = separator});
    std::vector<RecordLook> looks;
    for (std::vector<std::string_view> fields; looks.size() < MostRecords && scanner.Next(fields);) {
        looks.push_back(scanner.IsEmpty() ? RecordLook() : LookOf(fields));
    }
    // The end of the sample may cut one in two.
    if (scanner.BytesRead() == BeginningBytes) {
        looks.pop_back();
    }
    return looks;
}

/// The fields that most records have, more than one; 0 where not even two have as many.
std::size_t UsualFields(const std::vector<RecordLook>& looks) {
    std::map<std::size_t, std::size_t> records;
    for (const RecordLook& look : looks) {
        ++records[look.Fields];
    }
    records.erase(0);
    records.erase(1);
    const auto most =
        std::ranges::max_element(records, {}, [](const auto& fieldsAndRecords) { return fieldsAndRecords.second; });
    return most == records.end() || most->second < 2 ? 0 : most->first;
}

struct FoundNames {
    std::size_t Above = 0;
    std::size_t Wide = 0;  // records from the names on with as many fields
    std::size_t Others = 0;

    [[nodiscard]] bool AreTable() const { return Wide > 1 && Wide >= 3 * Others; }
};

FoundNames FromRecord(const std::vector<RecordLook>& looks, std::size_t above, std::size_t fields) {
    FoundNames found{.Above = above};
    for (std::size_t record = above; record < looks.size(); ++record) {
        found.Wide += looks[record].Fields == fields ? 1 : 0;
        found.Others += looks[record].Fields != fields && looks[record].Fields > 0 ? 1 : 0;
    }
    return found;
}

/// Of two places where a table may begin, whether the second is plainly the better one.
bool IsBetter(const FoundNames& found, const FoundNames& best) {
    return found.Wide + 2 * best.Others > best.Wide + 2 * found.Others;
}

/// The first record if it is as wide as most; else of those that are the one that has most of them and fewest others
/// behind it.
FoundNames BeginOfWide(const std::vector<RecordLook>& looks, std::size_t fields) {
    const auto first = std::ranges::find_if(looks, [](const RecordLook& look) { return look.Fields > 0; });
    FoundNames best = FromRecord(looks, static_cast<std::size_t>(first - looks.begin()), fields);
    for (std::size_t above = 1; first->Fields != fields && above < std::min(looks.size(), MostTitles); ++above) {
        const FoundNames found = FromRecord(looks, above, fields);
        best = looks[above].Fields == fields && IsBetter(found, best) ? found : best;
    }
    return best;
}

FoundNames NamesIn(const std::vector<RecordLook>& looks) {
    const std::size_t fields = UsualFields(looks);
    FoundNames found = fields == 0 ? FoundNames() : BeginOfWide(looks, fields);
    if (!found.AreTable()) {
        return {};
    }
    if (looks[found.Above].Fields == fields && looks[found.Above].HasGap) {
        const auto end = looks.begin() + static_cast<std::ptrdiff_t>(std::min(looks.size(), found.Above + MostTitles));
        const auto whole = std::find_if(
            looks.begin() + static_cast<std::ptrdiff_t>(found.Above), end,
            [&](const RecordLook& look) { return look.Fields == fields && !look.HasGap && !look.HasValue; });
        found.Above = whole == end ? found.Above : static_cast<std::size_t>(whole - looks.begin());
    }
    const auto names = looks.begin() + static_cast<std::ptrdiff_t>(found.Above);
    const bool hasTitles = std::any_of(looks.begin(), names, [](const RecordLook& look) { return look.Fields > 0; });
    found.Above = hasTitles ? found.Above : 0;
    return found;
}

}  // namespace

void PassOverTitles(const TextSource& source, std::size_t count, TextLayout& layout) {
    std::string window;
    PartRecords records(source, {layout.Begin, source.Size()}, {.Separator = layout.Separator, .IsUtf8 = layout.IsUtf8},
                        window);
    std::vector<std::string_view> fields;
    for (layout.Titles = 0; count > 0 && records.Next(fields); ++layout.Titles) {
        if (records.EndsInQuotes()) {
            layout.FirstFault = {.Place = records.Begin()};
        }
        if (layout.Titles >= count && !AreEmpty(fields)) {
            break;
        }
        layout.Begin = records.End();
    }
    if (count > 0) {
        records.CheckRead();
    }
}

std::size_t RecordsAboveNames(const TextSource& source, const TextLayout& layout) {
    const std::string sample = source.Piece(layout.Begin, BeginningBytes);
    const bool isGiven = layout.Separator && !layout.SeparatorIsFound;
    const std::string separators = isGiven ? std::string(1, *layout.Separator) : ",;\t|";
    FoundNames best;
    for (const char separator : separators) {
        const FoundNames found = NamesIn(LooksOf(sample, separator));
        best = IsBetter(found, best) ? found : best;
    }
    return best.Above == 0 ? 0 : layout.Titles + best.Above;
}

}  // namespace quillara
