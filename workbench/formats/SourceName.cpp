#include "workbench/formats/SourceName.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/FileBytes.h"

namespace quillara {
namespace {

constexpr std::array<std::pair<std::string_view, DatabaseKind>, 3> SchemesOfDatabases{{
    {"sqlite:", DatabaseKind::Sqlite},
    {"odbc:", DatabaseKind::Odbc},
    {"parquet:", DatabaseKind::Parquet},
}};

void TakePart(std::string_view part, DatabaseSource& source) {
    constexpr std::string_view table = "table=";
    constexpr std::string_view query = "query=";
    if (part.starts_with(table) && part.size() > table.size()) {
        source.Table = part.substr(table.size());
    } else if (part.starts_with(query) && part.size() > query.size()) {
        source.Query = part.substr(query.size());
    } else {
        throw UsageError("Behind the question mark of a database stands table=NAME or query=SQL, not \"" +
                         std::string(part) + "\".");
    }
}

std::string NameForPeople(const DatabaseSource& source) {
    std::string name = NameOfFile(source.Place);
    if (source.Kind == DatabaseKind::Odbc) {
        const bool isConnection = source.Place.find_first_of("=;") != std::string::npos;
        name = isConnection ? "odbc" : "odbc:" + source.Place;
    }
    return source.Table ? name + ", " + *source.Table : name;
}

}  // namespace

std::optional<DatabaseSource> DatabaseSourceOf(const std::string& path) {
    for (const auto& [scheme, kind] : SchemesOfDatabases) {
        if (!path.starts_with(scheme)) {
            continue;
        }
        const std::size_t question = kind == DatabaseKind::Parquet ? std::string::npos : path.find('?');
        const std::size_t end = std::min(question, path.size());
        DatabaseSource source{.Kind = kind, .Place = path.substr(scheme.size(), end - scheme.size())};
        if (source.Place.empty()) {
            throw UsageError("\"" + path + "\" names no database.");
        }
        if (question != std::string::npos) {
            TakePart(std::string_view(path).substr(question + 1), source);
        }
        source.Name = NameForPeople(source);
        return source;
    }
    return std::nullopt;
}

void RefuseTables(const std::string& name, const std::string& place, const std::vector<std::string>& tables) {
    if (tables.empty()) {
        throw DataError("\"" + name + "\" holds no table.");
    }
    std::string names;
    for (const std::string& table : tables) {
        names += (names.empty() ? "" : ", ") + Quoted(table);
    }
    throw DataError("\"" + name + "\" holds the tables " + names + "; choose one as \"" + place +
                    "?table=" + tables.front() + "\".");
}

}  // namespace quillara
