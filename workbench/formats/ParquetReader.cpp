#include "workbench/formats/ParquetReader.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/DelimitedTable.h"
#include "workbench/formats/DuckDbLibrary.h"
#include "workbench/formats/FieldRows.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/FileSignature.h"
#include "workbench/formats/ParquetMoments.h"

namespace quillara {
namespace {

using Duck = DuckDbLibrary;

/// The first line of what the library says, without its end.
std::string FirstLineOf(const char* message) {
    std::string line = message == nullptr ? "it is damaged" : message;
    line.resize(std::min(line.find_first_of("\r\n"), line.size()));
    line.erase(line.find_last_not_of(" .:") + 1);
    return line;
}

/// A text as it stands in a query.
std::string TextInQuery(std::string_view text) {
    std::string quoted = "'";
    for (const char character : text) {
        quoted.append(character == '\'' ? 2 : 1, character);
    }
    return quoted + '\'';
}

/// A handle of the library, let go by one of its functions.
class DuckHandle {
  public:
    explicit DuckHandle(void (*letGo)(Duck::Handle*)) : LetGo(letGo) {}
    DuckHandle(const DuckHandle&) = delete;
    DuckHandle& operator=(const DuckHandle&) = delete;
    ~DuckHandle() {
        if (Held != nullptr) {
            LetGo(&Held);
        }
    }

    [[nodiscard]] Duck::Handle Get() const { return Held; }
    [[nodiscard]] Duck::Handle* Room() { return &Held; }

  private:
    void (*LetGo)(Duck::Handle*);
    Duck::Handle Held = nullptr;
};

/// What a query has given.
class DuckResult {
  public:
    explicit DuckResult(const Duck& library) : Library(library) {}
    DuckResult(const DuckResult&) = delete;
    DuckResult& operator=(const DuckResult&) = delete;
    ~DuckResult() { Library.DestroyResult(&Held); }

    [[nodiscard]] Duck::Result& Get() { return Held; }

  private:
    const Duck& Library;
    Duck::Result Held{};
};

/// Where the values of one row lie; an empty pointer is NULL.
using DuckRow = std::vector<const std::byte*>;
using RowTaker = std::function<void(const DuckRow& row)>;

std::string_view TextIn(const std::byte* place) {
    constexpr std::uint32_t mostInPlace = 12;
    const auto& text = *reinterpret_cast<const Duck::Text*>(place);
    return {text.Length <= mostInPlace ? text.Front : text.Whole, text.Length};
}

/// A database in memory that reads a file.
class DuckSession {
  public:
    DuckSession(std::string path, const ReadOptions& options, WorkMonitor& monitor)
        : Path(std::move(path)),
          Monitor(monitor),
          Library(Duck::Get("\"" + Path + "\" is a Parquet file, which is read")),
          Database(Library.Close),
          Connection(Library.Disconnect) {
        DuckHandle config(Library.DestroyConfig);
        Require(Library.CreateConfig(config.Room()), nullptr);
        const auto set = [&](const char* name, const std::string& value) {
            Require(Library.SetConfig(config.Get(), name, value.c_str()), nullptr);
        };
        set("autoinstall_known_extensions", "false");  // nothing is fetched
        set("autoload_known_extensions", "false");
        set("temp_directory", "");  // no files beside the data
        if (options.Threads > 0) {
            set("threads", std::to_string(options.Threads));
        }
        char* error = nullptr;
        const Duck::State state = Library.OpenExtended(nullptr, Database.Room(), config.Get(), &error);
        const std::string told = FirstLineOf(error);
        Library.Free(error);
        Require(state, told.c_str());
        Require(Library.Connect(Database.Get(), Connection.Room()), nullptr);
    }

    /// Gives the rows of a query whose columns have values of so many bytes.
    void Ask(const std::string& query, const std::vector<std::size_t>& widths, const RowTaker& take) {
        DuckHandle statement(Library.DestroyPrepare);
        const Duck::State state = Library.Prepare(Connection.Get(), query.c_str(), statement.Room());
        Require(state, Library.PrepareError(statement.Get()));
        DuckResult result(Library);
        Run(statement.Get(), result);
        while (true) {
            DuckHandle chunk(Library.DestroyChunk);
            *chunk.Room() = Library.FetchChunk(result.Get());
            if (chunk.Get() == nullptr) {
                return;
            }
            TakeChunk(chunk.Get(), widths, take);
        }
    }

  private:
    void Require(Duck::State state, const char* message) const {
        if (state != Duck::Done) {
            throw DataError("\"" + Path + "\" can't be read: " + FirstLineOf(message) + ".");
        }
    }

    void Run(Duck::Handle statement, DuckResult& result) {
        DuckHandle pending(Library.DestroyPending);
        const Duck::State state = Library.PendingPrepared(statement, pending.Room());
        Require(state, Library.PendingError(pending.Get()));
        constexpr int tasksPerLook = 16;
        Duck::Pending progress = Duck::NotReady;
        for (int task = 0; progress == Duck::NotReady || progress == Duck::NoTask; ++task) {
            progress = Library.PendingExecuteTask(pending.Get());
            if (progress == Duck::NoTask) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
            if (task % tasksPerLook == 0) {
                Monitor.RequireMemory(0);
            }
            Monitor.Check();
        }
        Require(progress == Duck::Ready ? Duck::Done : Duck::Failed, Library.PendingError(pending.Get()));
        const Duck::State done = Library.ExecutePending(pending.Get(), &result.Get());
        Require(done, Library.ResultError(&result.Get()));
    }

    void TakeChunk(Duck::Handle chunk, const std::vector<std::size_t>& widths, const RowTaker& take) const {
        struct ValueVector {
            const std::byte* Values;
            const std::uint64_t* Validity;  // a bit each; null: all are valid
        };
        std::vector<ValueVector> vectors;
        for (std::size_t column = 0; column < widths.size(); ++column) {
            const Duck::Handle vector = Library.ChunkVector(chunk, column);
            vectors.push_back(
                {static_cast<const std::byte*>(Library.VectorData(vector)), Library.VectorValidity(vector)});
        }
        DuckRow row(widths.size());
        const Duck::Index rows = Library.ChunkSize(chunk);
        for (Duck::Index i = 0; i < rows; ++i) {
            for (std::size_t column = 0; column < row.size(); ++column) {
                const auto& [values, validity] = vectors[column];
                const bool isValid = validity == nullptr || (validity[i / 64] >> i % 64 & 1U) != 0;
                row[column] = isValid ? values + i * widths[column] : nullptr;
            }
            take(row);
        }
    }

    std::string Path;
    WorkMonitor& Monitor;
    const Duck& Library;
    DuckHandle Database;
    DuckHandle Connection;
};

struct ParquetColumn {
    std::string Name;
    std::string Type;  // as SQL calls it
    const MomentType* Moments = nullptr;  // how they lie in memory; null: its values are read as texts

    [[nodiscard]] bool HoldsBytes() const { return Type == "BLOB"; }
    [[nodiscard]] bool IsFloating() const { return Type == "DOUBLE" || Type == "FLOAT"; }
};

std::string SourceInQuery(const std::string& path) {
    return "read_parquet(" + TextInQuery(path) + ")";
}

std::vector<ParquetColumn> ColumnsOf(DuckSession& session, const std::string& path) {
    std::vector<ParquetColumn> columns;
    session.Ask("SELECT column_name, column_type FROM (DESCRIBE SELECT * FROM " + SourceInQuery(path) + ")",
                {sizeof(Duck::Text), sizeof(Duck::Text)}, [&](const DuckRow& row) {
                    columns.push_back({std::string(TextIn(row[0])), std::string(TextIn(row[1]))});
                });
    return columns;
}

/// The text of a column in a query that calls it `name`.
std::string TextOfColumn(const ParquetColumn& column, const std::string& name) {
    std::string text = "CAST(" + name + " AS VARCHAR)";
    if (column.Type == "BOOLEAN") {
        return "upper(" + text + ")";
    }
    if (column.IsFloating()) {
        return "CASE WHEN isnan(" + name + ") THEN NULL ELSE " + text + " END";
    }
    if (column.Type.starts_with("TIMESTAMP")) {
        const std::string withoutMidnight = "regexp_replace(" + text + ", ' 00:00:00$', '')";
        return "regexp_replace(replace(" + withoutMidnight + ", ' ', 'T'), '(T.*[+-][0-9]{2})$', '\\1:00')";
    }
    return text;
}

/// The query for the values of all columns but those of bytes; by their places, whatever their names are.
std::string QueryFor(const std::vector<ParquetColumn>& columns, const std::string& path) {
    std::string values;
    std::string names;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string name = "c" + std::to_string(i);
        names += (i == 0 ? "" : ", ") + name;
        if (!columns[i].HoldsBytes()) {
            values += (values.empty() ? "" : ", ") + (columns[i].Moments ? name : TextOfColumn(columns[i], name));
        }
    }
    return "SELECT " + values + " FROM " + SourceInQuery(path) + " AS t(" + names + ")";
}

std::vector<ParquetColumn> WithoutBytes(const std::vector<ParquetColumn>& columns, const std::string& path,
                                        const ReadOptions& options) {
    std::vector<ParquetColumn> kept;
    std::vector<std::string> leftOut;
    for (const ParquetColumn& column : columns) {
        column.HoldsBytes() ? leftOut.push_back(column.Name) : kept.push_back(column);
    }
    if (kept.empty()) {
        throw DataError("\"" + path + "\" can't be read: its columns hold nothing but bytes.");
    }
    if (!leftOut.empty() && options.Noticed) {
        options.Noticed({"bytes-left-out", "Columns of " + Quoted(NameOfFile(path)) +
                                               " that hold bytes are left out: " + QuotedList(leftOut) + "."});
    }
    return kept;
}

/// What the columns hold: the texts of all, as FieldRows has them, with 1 in place of each moment; and the moments.
struct ParquetContent {
    std::string Text;
    std::vector<std::optional<MomentColumn>> Moments;  // by column
};

class ParquetReading {
  public:
    ParquetReading(const std::string& path, const ReadOptions& options, WorkMonitor& monitor)
        : Path(path),
          Options(options),
          Monitor(monitor),
          Session(path, options, monitor),
          All(ColumnsOf(Session, path)) {
        for (ParquetColumn& column : All) {
            const bool isText = std::ranges::find(Options.Texts, column.Name) != Options.Texts.end();
            column.Moments = isText ? nullptr : FindMomentType(column.Type);
        }
    }

    [[nodiscard]] DataTable Read() {
        Columns = WithoutBytes(All, Path, Options);
        ParquetContent content = ReadContent();
        DataTable table = TableOfDatabase(std::move(content.Text), Path, Options, Monitor);
        for (std::size_t i = 0; i < Columns.size(); ++i) {
            if (content.Moments[i]) {
                const std::optional<Remark> remark = content.Moments[i]->RemarkOn(table.Variables[i].Name);
                content.Moments[i]->Take(table.Variables[i]);
                if (remark && Options.Noticed) {
                    Options.Noticed(*remark);
                }
            }
        }
        return table;
    }

  private:
    /// A column with a moment that none of our kinds can tell is read again as texts.
    [[nodiscard]] ParquetContent ReadContent() {
        while (true) {
            std::vector<bool> isOdd(Columns.size());
            ParquetContent content = TryContent(isOdd);
            if (std::ranges::find(isOdd, true) == isOdd.end()) {
                return content;
            }
            for (std::size_t i = 0; i < Columns.size(); ++i) {
                Columns[i].Moments = isOdd[i] ? nullptr : Columns[i].Moments;
                std::ranges::find(All, Columns[i].Name, &ParquetColumn::Name)->Moments = Columns[i].Moments;
            }
        }
    }

    [[nodiscard]] ParquetContent TryContent(std::vector<bool>& isOdd) {
        ParquetContent content;
        FieldRows rows(Path, Monitor);
        std::vector<std::size_t> widths;
        for (const ParquetColumn& column : Columns) {
            rows.Add(column.Name);
            content.Moments.emplace_back(column.Moments ? std::optional(MomentColumn(*column.Moments)) : std::nullopt);
            widths.push_back(column.Moments ? column.Moments->Bytes : sizeof(Duck::Text));
        }
        rows.EndRow();
        Session.Ask(QueryFor(All, Path), widths, [&](const DuckRow& row) {
            for (std::size_t i = 0; i < row.size(); ++i) {
                if (!content.Moments[i]) {
                    AddText(rows, Columns[i], row[i]);
                    continue;
                }
                isOdd[i] = !content.Moments[i]->Append(row[i]) || isOdd[i];
                rows.Add(row[i] == nullptr ? "" : "1");
            }
            rows.EndRow();
        });
        content.Text = rows.Take();
        return content;
    }

    static void AddText(FieldRows& rows, const ParquetColumn& column, const std::byte* place) {
        const std::string_view text = place == nullptr ? std::string_view() : TextIn(place);
        if (column.IsFloating() && text.ends_with("inf")) {
            rows.AddNumber(std::numeric_limits<double>::infinity());
        } else {
            rows.Add(text);
        }
    }

    const std::string& Path;
    const ReadOptions& Options;
    WorkMonitor& Monitor;
    DuckSession Session;
    std::vector<ParquetColumn> All;
    std::vector<ParquetColumn> Columns;  // without those of bytes
};

}  // namespace

DataTable ReadParquet(const std::string& path, const ReadOptions& options) {
    WorkMonitor monitor(options.Progress, options.Cancelled, MemoryLimit(options.MaxMemory));
    monitor.TellCountsTo(options.Received);
    if (FileContentOf(ReadBytes(path, monitor, SignatureLength), "").Extension != "parquet") {
        throw DataError("\"" + path + "\" is no Parquet file.");
    }
    DataTable table = ParquetReading(path, options, monitor).Read();
    table.FileName = NameOfFile(path);
    return table;
}

}  // namespace quillara
