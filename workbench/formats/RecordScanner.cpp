#include "workbench/formats/RecordScanner.h"

#include <algorithm>
#include <map>
#include <utility>

namespace quillara {
namespace {

constexpr std::string_view Blanks = " \t";
constexpr std::size_t RecordsToJudgeBy = 1000;

/// True of all blanks, but not only of them.
bool MayBeBlank(char character) {
    return static_cast<unsigned char>(character) <= ' ';
}

/// A record that no character cuts ends with the text.
std::array<char, 3> EndsOfFields(const RecordRules& rules) {
    const char lineFeed = rules.LineBreaksEndRecords ? '\n' : *rules.Separator;
    const char carriageReturn = rules.LineBreaksEndRecords ? '\r' : *rules.Separator;
    return {rules.Separator.value_or(lineFeed), lineFeed, carriageReturn};
}

struct Agreement {
    std::size_t Records = 0;
    std::size_t Agreeing = 0;  // records with the most frequent number of fields above one
    bool MeetsEnd = false;  // whether the text ends with the last of them, or before
};

Agreement AgreementOf(std::string_view text, char separator) {
    RecordScanner scanner(text, {.Separator = separator});
    std::vector<std::string_view> fields;
    std::map<std::size_t, std::size_t> recordsByFields;
    Agreement agreement;
    while (agreement.Records < RecordsToJudgeBy && scanner.Next(fields)) {
        if (scanner.IsEmpty()) {
            continue;
        }
        ++agreement.Records;
        if (fields.size() > 1) {
            agreement.Agreeing = std::max(agreement.Agreeing, ++recordsByFields[fields.size()]);
        }
    }
    agreement.MeetsEnd = scanner.BytesRead() == text.size();
    return agreement;
}

}  // namespace

RecordScanner::RecordScanner(std::string_view text, RecordRules rules)
    : Text(text), Rules(rules), Ends(text, EndsOfFields(rules)) {}

inline std::string_view RecordScanner::ReadUnquoted() {
    const std::size_t begin = std::exchange(Place, Ends.EndFrom(Place));
    return Text.substr(begin, Place - begin);
}

// The place stays in a register from field to field: through memory each would wait for the one before.
bool RecordScanner::Append(std::vector<std::string_view>& fields) {
    const std::string_view text = Text;
    if (Place >= text.size()) {
        return false;
    }
    RecordBegin = Place;
    const std::size_t fieldsBefore = fields.size();
    const bool quotesOnlyAtBegin = !Rules.BlanksBeforeQuotes;
    std::size_t place = Place;
    bool isBehindSeparator = true;
    while (isBehindSeparator) {
        std::string_view field;
        if (quotesOnlyAtBegin && place < text.size() && text[place] != Quote) {
            const std::size_t end = Ends.EndFrom(place);
            field = std::string_view(text.data() + place, end - place);
            place = end;
        } else {
            Place = place;
            field = ReadField();
            place = Place;
        }
        const bool mayHaveBlanks = !field.empty() && (MayBeBlank(field.front()) || MayBeBlank(field.back()));
        fields.push_back(mayHaveBlanks ? WithoutBlanks(field) : field);
        isBehindSeparator = place < text.size() && Rules.Separator == text[place];
        place += isBehindSeparator ? 1 : 0;
    }
    Place = place;
    PassLineBreak();
    RecordIsEmpty = fields.size() == fieldsBefore + 1 && fields.back().empty() && text[RecordBegin] != Quote;
    return true;
}

void RecordScanner::PassLineBreak() {
    const std::string_view next = Text.substr(Place, 2);
    Place += next == "\r\n" ? 2 : std::min<std::size_t>(next.size(), 1);
}

std::size_t RecordScanner::Line() {
    LineCounted += CountLineBreaks(Text.substr(LineCountedAt, RecordBegin - LineCountedAt));
    LineCountedAt = RecordBegin;
    return LineCounted;
}

std::string_view RecordScanner::ReadField() {
    if (Rules.BlanksBeforeQuotes) {
        const std::size_t next = std::min(Text.find_first_not_of(Blanks, Place), Text.size());
        Place = next < Text.size() && Text[next] == Quote ? next : Place;
    }
    const bool isQuoted = Place < Text.size() && Text[Place] == Quote;
    return isQuoted ? ReadQuoted() : ReadUnquoted();
}

std::string_view RecordScanner::ReadToQuote() {
    const std::size_t begin = std::exchange(Place, Ends.QuoteFrom(Place));
    QuoteIsOpen = Place == Text.size();
    const std::string_view piece = Text.substr(begin, Place - begin);
    Place += QuoteIsOpen ? 0 : 1;
    return piece;
}

std::string_view RecordScanner::ReadQuoted() {
    ++Place;
    const std::string_view first = ReadToQuote();
    if (Place == Text.size() || Ends.EndFrom(Place) == Place) {
        return first;
    }
    Joined = first;
    while (Place < Text.size() && Text[Place] == Quote) {
        ++Place;
        Joined += Quote;
        Joined += ReadToQuote();
    }
    Joined += ReadUnquoted();
    return Kept.Keep(Joined);
}

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(Blanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(Blanks) - begin + 1);
}

std::size_t CountLineBreaks(std::string_view text) {
    std::size_t breaks = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPair = text[i] == '\n' && i > 0 && text[i - 1] == '\r';
        breaks += IsLineBreak(text[i]) && !isPair ? 1 : 0;
    }
    return breaks;
}

FoundSeparator FindSeparator(std::string_view text, std::string_view candidates) {
    FoundSeparator found{.IsCertain = true};
    std::size_t mostAgreeing = 0;
    for (const char candidate : candidates) {
        const Agreement agreement = AgreementOf(text, candidate);
        found.IsCertain = found.IsCertain && !agreement.MeetsEnd;
        if (2 * agreement.Agreeing > agreement.Records && agreement.Agreeing > mostAgreeing) {
            found.Separator = candidate;
            mostAgreeing = agreement.Agreeing;
        }
    }
    return found;
}

}  // namespace quillara
