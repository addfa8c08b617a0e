#include "workbench/formats/OdbcReader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/DelimitedTable.h"
#include "workbench/formats/FieldRows.h"
#include "workbench/formats/OdbcLibrary.h"

namespace quillara {
namespace {

// What ODBC calls kinds of handles, attributes and types.
enum OdbcHandleKind : short { EnvironmentHandle = 1, ConnectionHandle = 2, StatementHandle = 3 };
constexpr int VersionAttribute = 200;
constexpr int AccessAttribute = 101;
constexpr int AutocommitAttribute = 102;
constexpr short ToTheNull = -3;
constexpr short NoMoreRows = 100;
constexpr short SucceededWithInformation = 1;
constexpr long IsNull = -1;
constexpr short TypeOfChars = 1;
constexpr short TypeOfDoubles = 8;
constexpr std::array<short, 3> FloatingTypes = {6, 7, 8};
constexpr std::array<short, 3> ByteTypes = {-2, -3, -4};
constexpr short TimestampType = 93;

bool Succeeded(short status) {
    return status == 0 || status == SucceededWithInformation;
}

OdbcLibrary::Text TextFor(std::string& text) {
    return reinterpret_cast<OdbcLibrary::Text>(text.data());
}

/// A handle of ODBC and what it belongs to.
class OdbcHandle {
  public:
    OdbcHandle(OdbcHandleKind kind, OdbcLibrary::Handle from) : Kind(kind) {
        if (!Succeeded(OdbcLibrary::Get().AllocHandle(kind, from, &Made))) {
            throw DataError("ODBC can't be used: it gives no handle.");
        }
    }
    OdbcHandle(const OdbcHandle&) = delete;
    OdbcHandle& operator=(const OdbcHandle&) = delete;
    ~OdbcHandle() { OdbcLibrary::Get().FreeHandle(Kind, Made); }

    [[nodiscard]] OdbcLibrary::Handle Get() const { return Made; }

    /// Throws DataError with what ODBC says of the last call of the handle, in one line.
    void Require(bool hasSucceeded, const std::string& name) const {
        if (hasSucceeded) {
            return;
        }
        std::array<unsigned char, 6> state{};
        std::string text(512, '\0');
        int native = 0;
        short length = 0;
        OdbcLibrary::Get().GetDiagRec(Kind, Made, 1, state.data(), &native, TextFor(text),
                                      static_cast<short>(text.size()), &length);
        text.resize(std::min(text.size(), text.find('\0')));
        std::ranges::replace_if(
            text, [](char character) { return static_cast<unsigned char>(character) < ' '; }, ' ');
        text.erase(text.find_last_not_of(" .") + 1);
        throw DataError("\"" + name + "\" can't be read: " + text + ".");
    }

  private:
    OdbcHandleKind Kind;
    OdbcLibrary::Handle Made = nullptr;
};

class OdbcConnection {
  public:
    explicit OdbcConnection(const DatabaseSource& source)
        : Name(source.Name), Environment(EnvironmentHandle, nullptr), Link(ConnectionHandle, VersionSet(Environment)) {
        const OdbcLibrary& odbc = OdbcLibrary::Get();
        constexpr std::uintptr_t readOnly = 1;
        odbc.SetConnectAttr(Link.Get(), AccessAttribute, reinterpret_cast<void*>(readOnly), 0);
        odbc.SetConnectAttr(Link.Get(), AutocommitAttribute, nullptr, 0);
        const bool isConnection = source.Place.find('=') != std::string::npos;
        std::string place = isConnection ? source.Place : "DSN=" + source.Place;
        Link.Require(
            Succeeded(odbc.DriverConnect(Link.Get(), nullptr, TextFor(place), ToTheNull, nullptr, 0, nullptr, 0)),
            Name);
    }
    OdbcConnection(const OdbcConnection&) = delete;
    OdbcConnection& operator=(const OdbcConnection&) = delete;
    ~OdbcConnection() {
        constexpr short takeBack = 1;
        OdbcLibrary::Get().EndTran(ConnectionHandle, Link.Get(), takeBack);
        OdbcLibrary::Get().Disconnect(Link.Get());
    }

    [[nodiscard]] const OdbcHandle& Handle() const { return Link; }

    [[nodiscard]] std::string Quote(std::string_view name) const {
        constexpr unsigned short quotationMark = 29;
        std::array<char, 8> mark{};
        OdbcLibrary::Get().GetInfo(Link.Get(), quotationMark, mark.data(), mark.size(), nullptr);
        const std::string quote = mark[0] == ' ' ? "" : std::string(1, mark[0] == '\0' ? '"' : mark[0]);
        std::string quoted = quote;
        for (const char character : name) {
            quoted += (quote == std::string(1, character) ? quote : "") + character;
        }
        return quoted + quote;
    }

  private:
    static OdbcLibrary::Handle VersionSet(const OdbcHandle& environment) {
        constexpr std::uintptr_t version = 3;
        OdbcLibrary::Get().SetEnvAttr(environment.Get(), VersionAttribute, reinterpret_cast<void*>(version), 0);
        return environment.Get();
    }

    const std::string& Name;
    OdbcHandle Environment;
    OdbcHandle Link;
};

/// A query under way.
class OdbcRows {
  public:
    OdbcRows(const OdbcConnection& connection, const std::string& name)
        : Name(name), Statement(StatementHandle, connection.Handle().Get()) {}

    void Ask(std::string query) {
        Require(OdbcLibrary::Get().ExecDirect(Statement.Get(), TextFor(query), ToTheNull));
        DescribeColumns();
        if (Columns.empty()) {
            throw DataError("\"" + Name + "\" is only read: the query must be one SELECT.");
        }
    }

    void AskForTables() {
        std::string kinds = "TABLE,VIEW";
        Require(
            OdbcLibrary::Get().Tables(Statement.Get(), nullptr, 0, nullptr, 0, nullptr, 0, TextFor(kinds), ToTheNull));
        DescribeColumns();
    }

    [[nodiscard]] bool Next() {
        const short status = OdbcLibrary::Get().Fetch(Statement.Get());
        if (status != NoMoreRows) {
            Require(status);
        }
        return status != NoMoreRows;
    }

    void AddNames(FieldRows& rows) const {
        for (const Column& column : Columns) {
            rows.Add(column.Name);
        }
        rows.EndRow();
    }

    void AddRow(FieldRows& rows) {
        for (std::size_t column = 0; column < Columns.size(); ++column) {
            const short type = Columns[column].Type;
            if (std::ranges::find(FloatingTypes, type) != FloatingTypes.end()) {
                AddNumber(column, rows);
            } else if (std::ranges::find(ByteTypes, type) != ByteTypes.end()) {
                throw DataError("\"" + Name + "\" can't be read: the column " + Quoted(Columns[column].Name) +
                                " holds bytes; name the others in a query.");
            } else {
                rows.Add(WithoutMidnight(Text(column), type));
            }
        }
        rows.EndRow();
    }

    /// Empty for NULL.
    [[nodiscard]] std::string Text(std::size_t column) {
        std::string text;
        std::array<char, 4096> room{};
        while (true) {
            long length = 0;
            const short status = OdbcLibrary::Get().GetData(Statement.Get(), static_cast<unsigned short>(column + 1),
                                                            TypeOfChars, room.data(), room.size(), &length);
            if (status == NoMoreRows || length == IsNull) {
                return text;
            }
            Require(status);
            const bool isWhole = length >= 0 && static_cast<std::size_t>(length) < room.size();
            text.append(room.data(), isWhole ? static_cast<std::size_t>(length) : room.size() - 1);
            if (isWhole) {
                return text;
            }
        }
    }

  private:
    struct Column {
        std::string Name;
        short Type = 0;
    };

    void Require(short status) const { Statement.Require(Succeeded(status), Name); }

    void DescribeColumns() {
        const OdbcLibrary& odbc = OdbcLibrary::Get();
        short count = 0;
        Require(odbc.NumResultCols(Statement.Get(), &count));
        for (unsigned short column = 1; column <= count; ++column) {
            std::string name(1024, '\0');
            Column described;
            unsigned long size = 0;
            short length = 0;
            short decimals = 0;
            short nullable = 0;
            Require(odbc.DescribeCol(Statement.Get(), column, TextFor(name), static_cast<short>(name.size()), &length,
                                     &described.Type, &size, &decimals, &nullable));
            described.Name = name.substr(0, name.find('\0'));
            Columns.push_back(described);
        }
    }

    void AddNumber(std::size_t column, FieldRows& rows) {
        double number = 0;
        long length = 0;
        Require(OdbcLibrary::Get().GetData(Statement.Get(), static_cast<unsigned short>(column + 1), TypeOfDoubles,
                                           &number, sizeof number, &length));
        if (length == IsNull) {
            rows.Add({});
        } else {
            rows.AddNumber(number);
        }
    }

    /// A day of a column of moments.
    static std::string WithoutMidnight(std::string text, short type) {
        constexpr std::size_t day = 10;  // YYYY-MM-DD
        if (type == TimestampType && text.size() > day && text.find_first_not_of(" 0:.", day) == std::string::npos) {
            text.resize(day);
        }
        return text;
    }

    const std::string& Name;
    OdbcHandle Statement;
    std::vector<Column> Columns;
};

std::string OnlyTable(const OdbcConnection& connection, const DatabaseSource& source) {
    OdbcRows rows(connection, source.Name);
    rows.AskForTables();
    std::vector<std::string> tables;
    constexpr std::size_t placeOfName = 2;
    while (rows.Next()) {
        tables.push_back(rows.Text(placeOfName));
    }
    std::ranges::sort(tables);
    if (tables.size() != 1) {
        RefuseTables(source.Name, "odbc:...", tables);
    }
    return tables.front();
}

std::string TextOfOdbc(const DatabaseSource& source, WorkMonitor& monitor) {
    const OdbcConnection connection(source);
    std::string query = source.Query.value_or("");
    if (!source.Query) {
        query = "SELECT * FROM " + connection.Quote(source.Table ? *source.Table : OnlyTable(connection, source));
    }
    OdbcRows result(connection, source.Name);
    result.Ask(std::move(query));
    FieldRows rows(source.Name, monitor);
    result.AddNames(rows);
    while (result.Next()) {
        result.AddRow(rows);
    }
    return rows.Take();
}

}  // namespace

DataTable ReadOdbc(const DatabaseSource& source, const ReadOptions& options) {
    WorkMonitor monitor(options.Progress, options.Cancelled, MemoryLimit(options.MaxMemory));
    monitor.TellCountsTo(options.Received);
    DataTable table = TableOfDatabase(TextOfOdbc(source, monitor), source.Name, options, monitor);
    table.FileName = source.Name;
    return table;
}

}  // namespace quillara
