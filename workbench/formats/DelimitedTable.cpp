#include "workbench/formats/DelimitedTable.h"

#include <malloc.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <mutex>
#include <numeric>
#include <optional>
#include <stdexcept>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/Suggestion.h"
#include "workbench/formats/ColumnAssembly.h"
#include "workbench/formats/DatesInTexts.h"
#include "workbench/formats/Encoding.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/LeadingZeros.h"
#include "workbench/formats/LikelyMissing.h"
#include "workbench/formats/NumbersInTexts.h"
#include "workbench/formats/OddCases.h"
#include "workbench/formats/PointsOfNumbers.h"
#include "workbench/formats/RecordReader.h"
#include "workbench/formats/TableGathering.h"
#include "workbench/formats/TableShape.h"
#include "workbench/formats/TextFaults.h"
#include "workbench/formats/TextLayout.h"
#include "workbench/formats/TextOfFile.h"
#include "workbench/formats/TimeZones.h"
#include "workbench/formats/TitleRecords.h"
#include "workbench/formats/VariableNames.h"

namespace quillara {
namespace {

// How much of reading a table is done when what its fields are is told, and when they are read and read anew.
constexpr double ShareOfGathering = 0.8;
constexpr double ShareOfGatheringAnew = 0.9;

RecordOptions RecordsOf(const ReadOptions& options) {
    RecordOptions records{
        .Separator = options.Separator, .Encoding = options.Encoding, .SeparatorOption = "--separator"};
    if (options.Decimal == ',') {
        records.Separators = ";\t|,";
    }
    return records;
}

ZonesMet ZonesOf(const GatheredColumn& column) {
    ZonesMet zones;
    for (const ColumnGatherer& worker : column.Workers) {
        zones.Add(worker.Zones());
    }
    return zones;
}

/// Reads one text as a table.
class TableReading {
  public:
    /// Where a text comes from.
    enum class Origin { File, Sheet, Database };

    /// The text begins at `begin` of the source.
    TableReading(const TextSource& source, std::size_t begin, const std::string& path, const ReadOptions& options,
                 WorkMonitor& monitor)
        : Source(source),
          Path(path),
          Options(options),
          Monitor(monitor),
          Crew(options.Threads, monitor),
          Rules(options),
          Faults(source, path, RecordsOf(options), Crew),
          Begin(begin) {}

    /// Throws FileChanged where the text does.
    [[nodiscard]] DataTable Read(double firstShare, Origin origin = Origin::File) {
        Comes = origin;
        while (true) {
            try {
                DataTable table = ReadAsLaidOut(firstShare);
                LookAt(table);
                return table;
            } catch (const UnexpectedBytes& unexpected) {
                TakeBack(unexpected.What);
            }
        }
    }

  private:
    /// What was supposed of the text turned out to be wrong.
    void TakeBack(UnexpectedBytes::Kind what) {
        switch (what) {
            case UnexpectedBytes::Kind::Null:
                Faults.FailForNull();
            case UnexpectedBytes::Kind::NotUtf8:
                Layout.IsUtf8 = false;
                Rules.TakeForWindows1252();
                break;
            case UnexpectedBytes::Kind::NotAtRecord:
                if (!std::exchange(Layout.StatesAreGuessed, false)) {
                    throw FileChanged();
                }
        }
    }

    [[nodiscard]] DataTable ReadAsLaidOut(double firstShare) {
        LayOut();
        Monitor.Enter(firstShare, ShareOfGathering, Source.Size());
        TableGathering gathering(Source, Layout, Rules, Crew);
        Gather(gathering);
        Source.RequireUnchanged();
        DataTable table = Assembled(gathering);
        Numbers = {.Separator = Layout.Separator.value_or('\0'),
                   .Decimal = Options.Decimal,
                   .TakesDecimal = Comes == Origin::File,
                   .Kept = Kept};
        if (Comes == Origin::File && !Options.KeepsTexts && !Options.Decimal) {
            const PointsOfNumbers points(Source, Layout, Rules, Crew, gathering.GuessPoints());
            Numbers.HasDecimalPoints = points.HaveDecimals(table);
            OnPoints = points.Read(table, Numbers);
        }
        Monitor.Finish();
        return table;
    }

    void LayOut() {
        Layout.Begin = Begin;
        Layout.SeparatorIsFound = !Options.Separator;
        const RecordOptions records = RecordsOf(Options);
        Layout.Separator =
            records.Separator ? records.Separator : SeparatorOf(Source, Layout.Begin, records.Separators);
        if (Layout.Separator && !CanSeparate(*Layout.Separator)) {
            Faults.RequireNoNull();
            RefuseSeparator();
        }
        PassOverTitles(Source, Options.TitleRecords, Layout);
        if (Layout.Titles > 0 && !records.Separator) {
            Layout.Separator = SeparatorOf(Source, Layout.Begin, records.Separators);
        }
        ReadFirstRecord(Source, Layout);
        if (Layout.FirstFault) {
            Faults.Fail(*Layout.FirstFault, Layout);
        }
        if (Layout.FirstFields.empty()) {
            throw DataError("\"" + Path + (Layout.Titles > 0 ? "\" holds nothing below the titles." : "\" is empty."));
        }
        CheckCounts(0);
        NameVariables();
        // An empty row above all others of a sheet is no case, not even of a single variable.
        const std::size_t noNames = Comes == Origin::Sheet ? Layout.BeginOfFirst : Layout.Begin;
        const std::size_t begin = Options.HasHeader ? Layout.BehindFirst : noNames;
        const std::size_t suitable = BytesOfPart(Source, begin, Layout.Separator, Crew.Workers());
        CutIntoParts(Source, begin, Options.BytesOfPart == 0 ? suitable : Options.BytesOfPart, Layout);
    }

    void NameVariables() {
        std::vector<std::string> names(Layout.FirstFields.size());
        for (std::size_t i = 0; Options.HasHeader && i < names.size(); ++i) {
            names[i] = Rules.TextOf(Layout.FirstFields[i]);
        }
        NamesInFile = Options.HasHeader ? names : std::vector<std::string>();
        Names = VariableNames(std::move(names));
        Kept = Options.Texts;
        for (const std::vector<std::string>& named : {Options.Texts, Options.Numbers}) {
            for (const std::string& name : named) {
                if (std::ranges::find(Names, name) == Names.end()) {
                    throw DataError("The data have no variable named " + Quoted(name) + EndWithSuggestion(name, Names));
                }
            }
        }
    }

    void CheckCounts(std::size_t cases) const {
        try {
            CheckSize(Layout.FirstFields.size(), cases);
        } catch (const DataError&) {
            Faults.RequireNoNull();
            throw;
        }
    }

    void Gather(TableGathering& gathering) {
        std::vector<FieldKind> kinds = gathering.GuessKinds();
        Zeros.clear();
        for (std::size_t variable = 0; variable < kinds.size(); ++variable) {
            kinds[variable] = IsNamed(Options.Texts, variable) ? FieldKind::Text : kinds[variable];
        }
        std::vector<std::size_t> variables(kinds.size());
        std::iota(variables.begin(), variables.end(), std::size_t{0});
        while (!variables.empty()) {
            gathering.Gather(variables, kinds);
            if (const std::optional<RecordFault> fault = gathering.FirstFault()) {
                Faults.Fail(*fault, Layout);
            }
            CheckCounts(gathering.Cases());
            std::erase_if(variables, [&](std::size_t variable) {
                const std::optional<FieldKind> kind = KindAfter(gathering.Columns()[variable], variable);
                kinds[variable] = kind.value_or(kinds[variable]);
                return !kind;
            });
            Monitor.Enter(ShareOfGathering, ShareOfGatheringAnew, Source.Size());
        }
        for (std::size_t variable = 0; variable < kinds.size(); ++variable) {
            if (const auto tooLarge = FirstTooLarge(gathering.Columns()[variable])) {
                Faults.FailForTooLarge(*tooLarge, variable, Layout);
            }
        }
    }

    [[nodiscard]] bool IsNamed(const std::vector<std::string>& names, std::size_t variable) const {
        return std::ranges::find(names, Names[variable]) != names.end();
    }

    /// The kind that a variable is to be gathered as in place of another; what has leading zeros once as texts.
    std::optional<FieldKind> KindAfter(const GatheredColumn& column, std::size_t variable) {
        if (IsNamed(Options.Texts, variable)) {
            return std::nullopt;
        }
        const std::optional<FieldKind> kind = KindInPlaceOf(column, Rules);
        if (IsNamed(Options.Numbers, variable)) {
            return kind;
        }
        const bool isKnown = std::ranges::find(Zeros, Names[variable], &VariableWithZeros::Name) != Zeros.end();
        if (!kind && column.Kind == FieldKind::Number && !isKnown &&
            std::ranges::any_of(column.Workers, &ColumnGatherer::HasLeadingZeros)) {
            return FieldKind::Text;
        }
        if (column.IsOfKind && kind == FieldKind::Number) {
            if (const std::optional<LeadingZeros> zeros = FindLeadingZeros(column, Rules)) {
                Zeros.push_back({Names[variable], *zeros});
                Kept.insert(Kept.end(), zeros->AreIdentifiers ? 1 : 0, Names[variable]);
                return zeros->AreIdentifiers ? std::nullopt : kind;
            }
        }
        return kind;
    }

    [[nodiscard]] DataTable Assembled(TableGathering& gathering) {
        DataTable table;
        table.FileName = NameOfFile(Path);
        table.Cases = static_cast<std::int32_t>(gathering.Cases());
        table.Variables.resize(Names.size());
        Zones.clear();
        std::ranges::transform(gathering.Columns(), std::back_inserter(Zones), ZonesOf);
        Monitor.Enter(ShareOfGatheringAnew, 1, Names.size() * gathering.Cases());
        std::mutex trimming;
        Crew.Do(Names.size(), gathering.Cases(), [&](std::size_t variable, std::size_t /*worker*/) {
            table.Variables[variable].Name = Names[variable];
            Assemble(std::move(gathering.Columns()[variable]), Rules, table.Variables[variable]);
            // What was gathered lies in many small pieces: the allocator would keep them for others of their kind. One
            // thread at a time: where a sanitizer stands in for the allocator, this call is the first that begins it.
            const std::lock_guard lock(trimming);
            malloc_trim(0);
        });
        return table;
    }

    /// Reads the numbers that are no plain ones, and tells what is odd.
    void LookAt(DataTable& table) const {
        const bool hasLines = Options.HasHeader && Comes != Origin::Database;
        const std::size_t aboveNames = hasLines ? RecordsAboveNames(Source, Layout) : 0;
        std::vector<Remark> remarks = RemarksOnShape(
            table, {.Names = NamesInFile, .IsDelimited = Comes == Origin::File, .AboveNames = aboveNames});
        const auto add = [&remarks](const std::vector<Remark>& more) {
            remarks.insert(remarks.end(), more.begin(), more.end());
        };
        if (!Options.KeepsTexts) {
            add(ReadNumbersInTexts(table, Numbers));
            add(OnPoints);
            add(ReadDatesInTexts(table, Options.Dates, Kept));
        }
        if (!Options.KeepsTexts && aboveNames == 0) {
            std::vector<std::string> told = SpoiledByFirstCase(table);
            add(RemarksOnSecondNames(table, told, hasLines ? Layout.Titles + Layout.RecordsToFirst : 0));
            told.insert(told.end(), Kept.begin(), Kept.end());
            add(RemarksOnNearNumbers(table, told));
        }
        add(RemarksOnOddCases(table, NamesInFile));
        add(RemarksOnZeros(Zeros));
        RequireNumbers(table);
        add(RemarksOnLikelyMissing(table, Options.MissingValues));
        for (std::size_t i = 0; i < table.Variables.size(); ++i) {
            if (std::optional<Remark> remark = RemarkOnZones(table.Variables[i].Name, Zones[i])) {
                remarks.push_back(std::move(*remark));
            }
        }
        if (Options.Noticed) {
            std::ranges::for_each(remarks, Options.Noticed);
        }
    }

    /// What --numbers names must be so.
    void RequireNumbers(const DataTable& table) const {
        for (const Variable& variable : table.Variables) {
            if (variable.Kind == ValueKind::Text &&
                std::ranges::find(Options.Numbers, variable.Name) != Options.Numbers.end()) {
                throw DataError("The variable " + Quoted(variable.Name) +
                                " can't be read as numbers: some of its texts are none.");
            }
        }
    }

    const TextSource& Source;
    const std::string& Path;
    const ReadOptions& Options;
    Origin Comes = Origin::File;
    WorkMonitor& Monitor;
    WorkCrew Crew;
    FieldRules Rules;
    TextFaults Faults;
    std::size_t Begin;
    TextLayout Layout;
    std::vector<std::string> NamesInFile;
    std::vector<std::string> Names;
    std::vector<std::string> Kept;  // names of variables that stay texts
    std::vector<VariableWithZeros> Zeros;
    NumberSurroundings Numbers;
    std::vector<Remark> OnPoints;
    std::vector<ZonesMet> Zones;  // by variable
};

/// Whether a file can be read part by part: a pipe can't, nor can what must be brought into UTF-8 as a whole.
bool CanBeReadInParts(const std::string& path, const ReadOptions& options, WorkMonitor& monitor) {
    if (!EncodingOfFile(path, options.Encoding, monitor).empty()) {
        return false;
    }
    std::error_code error;
    const bool isAscii = !options.Separator || static_cast<unsigned char>(*options.Separator) < 0x80;
    return isAscii && std::filesystem::is_regular_file(path, error) && std::filesystem::file_size(path, error) > 0;
}

DataTable ReadInParts(const std::string& path, const ReadOptions& options, WorkMonitor& monitor) {
    const TextSource source = TextSource::OfFile(path);
    monitor.RequireMemory(0);
    CheckIsText(path, source.Piece(0, BeginningLength));
    return TableReading(source, BytesOfMark(source.Piece(0, LongestMark)), path, options, monitor).Read(0);
}

DataTable ReadAsWhole(const std::string& path, const ReadOptions& options, WorkMonitor& monitor) {
    const TextSource source(TextOfFile(path, EncodingOfFile(path, options.Encoding, monitor), monitor));
    return TableReading(source, 0, path, options, monitor).Read(ShareOfText);
}

/// Options for fields that are cut already.
ReadOptions OfCells(const ReadOptions& options) {
    ReadOptions reading = options;
    reading.Separator = ',';
    reading.Decimal.reset();
    reading.Encoding.clear();
    return reading;
}

}  // namespace

DataTable ReadDelimitedTable(const std::string& path, const ReadOptions& options) {
    WorkMonitor monitor(options.Progress, options.Cancelled, MemoryLimit(options.MaxMemory));
    monitor.TellCountsTo(options.Received);
    if (CanBeReadInParts(path, options, monitor) && !IsPackedFile(path, monitor)) {
        try {
            return ReadInParts(path, options, monitor);
        } catch (const FileChanged&) {
            // As a whole it is read in one moment, or nearly so.
        }
    }
    return ReadAsWhole(path, options, monitor);
}

DataTable TableOfDelimitedText(std::string bytes, const ReadOptions& options) {
    WorkMonitor monitor(options.Progress, options.Cancelled, MemoryLimit(options.MaxMemory));
    const std::string nowhere;
    const TextSource source(DecodedText(nowhere, std::move(bytes), options.Encoding, monitor));
    return TableReading(source, 0, nowhere, options, monitor).Read(ShareOfText);
}

DataTable TableOfSheet(std::string text, const std::string& path, const ReadOptions& options, WorkMonitor& monitor) {
    const ReadOptions reading = OfCells(options);
    const TextSource source(std::move(text));
    return TableReading(source, 0, path, reading, monitor).Read(ShareOfText, TableReading::Origin::Sheet);
}

DataTable TableOfDatabase(std::string text, const std::string& path, const ReadOptions& options, WorkMonitor& monitor) {
    ReadOptions reading = OfCells(options);
    reading.HasHeader = true;
    reading.TitleRecords = 0;
    const TextSource source(std::move(text));
    return TableReading(source, 0, path, reading, monitor).Read(ShareOfText, TableReading::Origin::Database);
}

}  // namespace quillara
