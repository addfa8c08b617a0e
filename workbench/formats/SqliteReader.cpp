#include "workbench/formats/SqliteReader.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <vector>

#include "workbench/data/Errors.h"
#include "workbench/data/LetterCase.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/DelimitedTable.h"
#include "workbench/formats/FieldRows.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/FileSignature.h"

namespace quillara {
namespace {

struct ConnectionCloser {
    void operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
};
struct StatementCloser {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using SqliteStatement = std::unique_ptr<sqlite3_stmt, StatementCloser>;

/// A name as it stands in a query.
std::string QuotedName(std::string_view name) {
    std::string quoted = "\"";
    for (const char character : name) {
        quoted.append(character == '"' ? 2 : 1, character);
    }
    return quoted + '"';
}

class SqliteConnection {
  public:
    SqliteConnection(const std::string& path, const std::function<bool()>& cancelled)
        : Path(path), Cancelled(cancelled) {
        sqlite3* opened = nullptr;
        const int status = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
        Connection.reset(opened);
        if (status != SQLITE_OK) {
            Fail();
        }
        constexpr int stepsPerLook = 100000;
        sqlite3_progress_handler(opened, stepsPerLook, IsToEnd, this);
    }

    [[nodiscard]] SqliteStatement Prepare(const std::string& query) const {
        sqlite3_stmt* prepared = nullptr;
        const char* rest = nullptr;
        const int status =
            sqlite3_prepare_v2(Connection.get(), query.c_str(), static_cast<int>(query.size() + 1), &prepared, &rest);
        SqliteStatement statement(prepared);
        if (status != SQLITE_OK) {
            Fail();
        }
        const bool isOne = std::string_view(rest).find_first_not_of(" \t\r\n;") == std::string_view::npos;
        if (prepared == nullptr || !isOne || sqlite3_column_count(prepared) == 0 ||
            sqlite3_stmt_readonly(prepared) == 0) {
            throw DataError("\"" + Path + "\" is only read: the query must be one SELECT.");
        }
        return statement;
    }

    /// Whether there is a row.
    [[nodiscard]] bool Step(sqlite3_stmt* statement) const {
        const int status = sqlite3_step(statement);
        if (status != SQLITE_ROW && status != SQLITE_DONE) {
            Fail();
        }
        return status == SQLITE_ROW;
    }

    [[nodiscard]] std::vector<std::string> Tables() const {
        const SqliteStatement statement = Prepare(
            "SELECT name FROM sqlite_master WHERE type IN ('table', 'view') AND name NOT LIKE 'sqlite\\_%' "
            "ESCAPE '\\' ORDER BY name");
        std::vector<std::string> names;
        while (Step(statement.get())) {
            names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)));
        }
        return names;
    }

  private:
    static int IsToEnd(void* connection) noexcept {
        const auto& cancelled = static_cast<SqliteConnection*>(connection)->Cancelled;
        return cancelled && cancelled() ? 1 : 0;
    }

    [[noreturn]] void Fail() const {
        const int status = Connection == nullptr ? SQLITE_NOMEM : sqlite3_errcode(Connection.get());
        if (status == SQLITE_INTERRUPT) {
            throw Interrupted();
        }
        if (status == SQLITE_NOMEM) {
            throw std::bad_alloc();
        }
        throw DataError("\"" + Path + "\" can't be read: " + sqlite3_errmsg(Connection.get()) + ".");
    }

    const std::string& Path;
    const std::function<bool()>& Cancelled;
    std::unique_ptr<sqlite3, ConnectionCloser> Connection;
};

/// Refuses a table that the database lacks, with those that it has; it takes their letters in any case.
void CheckTable(const std::string& path, const std::string& name, const std::vector<std::string>& tables) {
    const auto isMeant = [&](const std::string& table) { return InSmallLetters(table) == InSmallLetters(name); };
    if (!InSmallLetters(name).starts_with("sqlite_") && std::ranges::none_of(tables, isMeant)) {
        throw DataError("\"" + path + "\" can't be read: no such table: " + name + "." +
                        (tables.empty() ? "" : " It holds " + QuotedList(tables) + "."));
    }
}

std::string QueryOf(const DatabaseSource& source, const SqliteConnection& connection) {
    if (source.Query) {
        return *source.Query;
    }
    const std::vector<std::string> tables = connection.Tables();
    if (source.Table) {
        CheckTable(source.Place, *source.Table, tables);
        return "SELECT * FROM " + QuotedName(*source.Table);
    }
    if (tables.size() != 1) {
        RefuseTables(source.Place, "sqlite:" + source.Place, tables);
    }
    return "SELECT * FROM " + QuotedName(tables.front());
}

void TakeField(sqlite3_stmt* row, int column, const std::string& path, FieldRows& rows) {
    switch (sqlite3_column_type(row, column)) {
        case SQLITE_NULL:
            rows.Add({});
            return;
        case SQLITE_FLOAT:
            rows.AddNumber(sqlite3_column_double(row, column));
            return;
        case SQLITE_BLOB:
            throw DataError("\"" + path + "\" can't be read: the column " + Quoted(sqlite3_column_name(row, column)) +
                            " holds bytes; name the others in a query.");
        default: {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
            if (text == nullptr) {
                throw std::bad_alloc();
            }
            rows.Add({text, static_cast<std::size_t>(sqlite3_column_bytes(row, column))});
        }
    }
}

std::string TextOfQuery(const SqliteConnection& connection, const std::string& query, const std::string& path,
                        WorkMonitor& monitor) {
    const SqliteStatement statement = connection.Prepare(query);
    const int columns = sqlite3_column_count(statement.get());
    FieldRows rows(path, monitor);
    for (int column = 0; column < columns; ++column) {
        rows.Add(sqlite3_column_name(statement.get(), column));
    }
    rows.EndRow();
    while (connection.Step(statement.get())) {
        for (int column = 0; column < columns; ++column) {
            TakeField(statement.get(), column, path, rows);
        }
        rows.EndRow();
    }
    return rows.Take();
}

std::uint64_t NumberIn(std::string_view header, std::size_t place, std::size_t bytes) {
    std::uint64_t number = 0;
    for (const char byte : header.substr(place, bytes)) {
        number = number << 8U | static_cast<unsigned char>(byte);
    }
    return number;
}

/// Where a file ends within its last page, SQLite reads zeros in place of what is gone.
bool IsCutShort(const std::string& path, std::string_view header) {
    constexpr std::size_t lengthOfHeader = 100;
    const bool knowsPages = header.size() >= lengthOfHeader && NumberIn(header, 24, 4) == NumberIn(header, 92, 4);
    const std::uint64_t bytesOfPage = header.size() < lengthOfHeader ? 0 : NumberIn(header, 16, 2);
    std::error_code error;
    const std::uint64_t size = std::filesystem::file_size(path, error);
    return !error && knowsPages && size < NumberIn(header, 28, 4) * (bytesOfPage == 1 ? 65536 : bytesOfPage);
}

}  // namespace

DataTable ReadSqlite(const DatabaseSource& source, const ReadOptions& options) {
    WorkMonitor monitor(options.Progress, options.Cancelled, MemoryLimit(options.MaxMemory));
    monitor.TellCountsTo(options.Received);
    // SQLite would take an empty or foreign file for a new database, and says less of one that isn't there.
    const std::string beginning = ReadBytes(source.Place, monitor, SignatureLength);
    if (FileContentOf(beginning, "").Extension != "sqlite") {
        throw DataError("\"" + source.Place + "\" is no SQLite database.");
    }
    if (IsCutShort(source.Place, beginning)) {
        throw DataError("\"" + source.Place + "\" can't be read; it is damaged or cut short.");
    }
    const SqliteConnection connection(source.Place, options.Cancelled);
    std::string text = TextOfQuery(connection, QueryOf(source, connection), source.Place, monitor);
    DataTable table = TableOfDatabase(std::move(text), source.Place, options, monitor);
    table.FileName = source.Name;
    return table;
}

}  // namespace quillara
