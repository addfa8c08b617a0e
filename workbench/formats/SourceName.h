#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillara {

enum class DatabaseKind { Sqlite, Odbc, Parquet };

/// A database and what is read of it.
struct DatabaseSource {
    DatabaseKind Kind = DatabaseKind::Sqlite;
    std::string Place{};  ///< a file; of Odbc the name of a data source, or a connection string
    std::optional<std::string> Table{};
    std::optional<std::string> Query{};  ///< neither: the one table that there is
    std::string Name{};  ///< for people: without the connection string, which may hold a password
};

/// What stands for a database in place of a data file: sqlite:FILE, odbc:NAME or odbc:CONNECTION, with ?table=NAME or
/// ?query=SQL behind it, all up to the end; parquet:FILE, a file that is one table. Nothing for any other text. Throws
/// UsageError when no place is named, or something else behind the question mark.
[[nodiscard]] std::optional<DatabaseSource> DatabaseSourceOf(const std::string& path);

/// The error of a database that hasn't exactly one table where none was named; `place` is what a table is named behind.
[[noreturn]] void RefuseTables(const std::string& name, const std::string& place,
                               const std::vector<std::string>& tables);

}  // namespace quillara
