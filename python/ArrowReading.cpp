#include "python/ArrowReading.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <span>
#include <unordered_map>
#include <utility>

#include "python/ArrowValues.h"
#include "python/StandingNumbers.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"

using namespace quillara;

namespace {

constexpr double NoEntry = std::numeric_limits<double>::quiet_NaN();

std::string NameOf(const ArrowSchema& schema) {
    return schema.Name == nullptr ? "" : schema.Name;
}

ArrowKind KindOf(const ArrowSchema& schema, const std::string& column) {
    const std::string format = schema.Format;
    if (const auto kind = ArrowKindOf(format)) {
        return *kind;
    }
    const bool hasZone = format.starts_with("ts");
    throw DataError("The column " + Quoted(column) +
                    (hasZone ? " has a time zone, for which a table has no room."
                             : " has values of a kind that a table has no room for (Arrow's " + Quoted(format) + ")."));
}

/// The places of a dictionary's entries among the labels of the whole column: chunks have dictionaries of their own.
class Labels {
  public:
    double Place(const std::string& label) {
        const auto [entry, isNew] = Places.emplace(label, static_cast<double>(Places.size() + 1));
        if (isNew) {
            InOrder.push_back(label);
        }
        return entry->second;
    }

    [[nodiscard]] const std::vector<std::string>& All() const { return InOrder; }

  private:
    std::unordered_map<std::string, double> Places;
    std::vector<std::string> InOrder;
};

/// Columns may be used where they stand in it.
using Chunk = std::shared_ptr<ArrowHeld<ArrowArray>>;

/// One column, chunk by chunk.
class ColumnReader {
  public:
    explicit ColumnReader(const ArrowSchema& schema)
        : Name(NameOf(schema)),
          Own(KindOf(schema, Name)),
          HasDictionary(schema.Dictionary != nullptr),
          IsOfDoubles(!HasDictionary && std::string_view("g") == schema.Format) {
        if (HasDictionary) {
            OfDictionary = KindOf(*schema.Dictionary, Name);
        }
    }

    void Add(const ArrowArray& array, std::int64_t begin, std::int64_t count, const Chunk& chunk) {
        if (!HasBegun && IsOfDoubles && array.NullCount == 0) {
            const auto* values = static_cast<const double*>(array.Buffers[1]);
            Standing = {{values + begin, static_cast<std::size_t>(count)}, chunk};
        } else {
            Gather(array, begin, count);
        }
        HasBegun = true;
    }

    [[nodiscard]] bool IsRounded() const { return Read.AreRounded; }

    Variable Take() {
        Variable variable = Named();
        if (variable.Kind == ValueKind::Text) {
            EncodeTexts(variable, Read.Texts);
        } else if (Standing.Owner) {
            UseNumbers(variable, Standing.Values, Standing.Owner);
        } else {
            MakeDatesOfMidnights(variable);
            EncodeNumbers(variable, std::move(Read.Numbers));
        }
        return variable;
    }

  private:
    /// Doubles of the first chunk, which stay there if no other follows.
    struct StandingValues {
        std::span<const double> Values;
        Chunk Owner;
    };

    /// Points in time that are all midnight are dates.
    void MakeDatesOfMidnights(Variable& variable) {
        const auto isMidnight = [](double seconds) {
            return std::isnan(seconds) || std::fmod(seconds, SecondsOfDay) == 0.0;
        };
        if (variable.Kind == ValueKind::DateTime && std::ranges::all_of(Read.Numbers, isMidnight)) {
            variable.Kind = ValueKind::Date;
            std::ranges::for_each(Read.Numbers, [](double& seconds) { seconds /= SecondsOfDay; });
        }
    }

    void Copy() {
        Read.Numbers.insert(Read.Numbers.end(), Standing.Values.begin(), Standing.Values.end());
        Standing = {};
    }

    void Gather(const ArrowArray& array, std::int64_t begin, std::int64_t count) {
        Copy();
        if (!HasDictionary) {
            Own.Add(Read, array, Own, begin, count);
        } else if (array.Dictionary == nullptr) {
            throw DataError("The column " + Quoted(Name) + " lacks its dictionary.");
        } else {
            AddEntries(array, begin, count);
        }
    }

    /// Without values yet; a dictionary of texts gives labels.
    Variable Named() const {
        const ArrowKind& kind = HasDictionary ? OfDictionary : Own;
        Variable variable;
        variable.Name = Name;
        variable.Kind = kind.Kind;
        if (kind.Kind == ValueKind::Text && HasDictionary) {
            variable.Kind = ValueKind::Number;
            NameValues(variable, Known.All(), 1);
        } else if (kind.IsTruth) {
            NameValues(variable, {"False", "True"}, 0);
        }
        return variable;
    }

    static void NameValues(Variable& variable, const std::vector<std::string>& labels, double first) {
        for (std::size_t i = 0; i < labels.size(); ++i) {
            variable.Labels[first + static_cast<double>(i)].Label = labels[i];
        }
    }

    /// What each entry of a dictionary stands for in our column.
    std::vector<double> NumbersOfEntries(const ArrowArray& dictionary) {
        ArrowValues entries;
        OfDictionary.Add(entries, dictionary, OfDictionary, dictionary.Offset, dictionary.Length);
        Read.AreRounded = Read.AreRounded || entries.AreRounded;
        for (const auto& text : entries.Texts) {
            entries.Numbers.push_back(text ? Known.Place(*text) : NoEntry);
        }
        return std::move(entries.Numbers);
    }

    void AddEntries(const ArrowArray& array, std::int64_t begin, std::int64_t count) {
        const std::vector<double> entries = NumbersOfEntries(*array.Dictionary);
        ArrowValues places;
        Own.Add(places, array, Own, begin, count);
        for (const double place : places.Numbers) {
            if (place < 0 || place >= static_cast<double>(entries.size())) {
                throw DataError("The column " + Quoted(Name) + " points behind the end of its dictionary.");
            }
            Read.Numbers.push_back(std::isnan(place) ? NoEntry : entries[static_cast<std::size_t>(place)]);
        }
    }

    std::string Name;
    ArrowKind Own;
    bool HasDictionary;
    bool IsOfDoubles;
    bool HasBegun = false;
    StandingValues Standing{};
    ArrowKind OfDictionary{};
    Labels Known;
    ArrowValues Read;
};

/// Throws what a call of the stream failed with.
void Require(int failure, ArrowHeld<ArrowArrayStream>& stream) {
    if (failure == 0) {
        return;
    }
    const char* text = stream->GetLastError(stream.Put());
    throw DataError("The columns can't be read: " + std::string(text == nullptr ? std::strerror(failure) : text));
}

std::vector<ColumnReader> ReadersOf(const ArrowSchema& schema) {
    if (std::string_view("+s") != schema.Format) {
        throw DataError("This is one column. A table is made of a frame, with a name for each column.");
    }
    std::vector<ColumnReader> readers;
    for (std::int64_t i = 0; i < schema.ChildCount; ++i) {
        readers.emplace_back(*schema.Children[i]);
    }
    return readers;
}

/// A chunk may be a part of longer columns.
void AddChunk(std::vector<ColumnReader>& readers, const Chunk& held) {
    const ArrowArray& chunk = held->Get();
    if (chunk.ChildCount != static_cast<std::int64_t>(readers.size())) {
        throw DataError("The columns can't be read: a chunk has another number of them.");
    }
    for (std::size_t i = 0; i < readers.size(); ++i) {
        const ArrowArray& column = *chunk.Children[i];
        readers[i].Add(column, column.Offset + chunk.Offset, chunk.Length, held);
    }
}

ArrowTable TakeTable(std::vector<ColumnReader>& readers, std::int64_t cases) {
    CheckSize(readers.size(), static_cast<std::size_t>(cases));
    ArrowTable made;
    made.Table.Cases = readers.empty() ? 0 : static_cast<std::int32_t>(cases);
    for (ColumnReader& reader : readers) {
        made.Table.Variables.push_back(reader.Take());
        if (reader.IsRounded()) {
            made.Rounded.push_back(made.Table.Variables.back().Name);
        }
    }
    return made;
}

}  // namespace

ArrowTable ReadArrow(ArrowHeld<ArrowArrayStream>& stream, bool (*cancelled)()) {
    ArrowHeld<ArrowSchema> schema;
    Require(stream->GetSchema(stream.Put(), schema.Put()), stream);
    std::vector<ColumnReader> readers = ReadersOf(schema.Get());
    std::int64_t cases = 0;
    while (true) {
        const auto chunk = std::make_shared<ArrowHeld<ArrowArray>>();
        Require(stream->GetNext(stream.Put(), chunk->Put()), stream);
        if (!*chunk) {
            return TakeTable(readers, cases);
        }
        AddChunk(readers, chunk);
        cases += chunk->Get().Length;
        if (cancelled()) {
            throw Interrupted();
        }
    }
}
