#pragma once

#include <string>

namespace quillara {

/// The driver manager of ODBC, opened when a database is read by it, so that nothing else needs it. Its C interface, as
/// far as reading needs it; the meaning of calls and numbers is that of ODBC 3.
struct OdbcLibrary {
    using Handle = void*;
    using Text = unsigned char*;

    short (*AllocHandle)(short kind, Handle from, Handle* made);
    short (*FreeHandle)(short kind, Handle handle);
    short (*SetEnvAttr)(Handle environment, int attribute, void* value, int length);
    short (*SetConnectAttr)(Handle connection, int attribute, void* value, int length);
    short (*DriverConnect)(Handle connection, void* window, Text given, short length, Text completed, short room,
                           short* completedLength, unsigned short completion);
    short (*Disconnect)(Handle connection);
    short (*EndTran)(short kind, Handle handle, short how);
    short (*GetInfo)(Handle connection, unsigned short what, void* value, short room, short* length);
    short (*Tables)(Handle statement, Text catalog, short, Text schema, short, Text name, short, Text kinds, short);
    short (*ExecDirect)(Handle statement, Text query, int length);
    short (*NumResultCols)(Handle statement, short* columns);
    short (*DescribeCol)(Handle statement, unsigned short column, Text name, short room, short* length, short* type,
                         unsigned long* size, short* decimals, short* nullable);
    short (*Fetch)(Handle statement);
    short (*GetData)(Handle statement, unsigned short column, short type, void* value, long room, long* length);
    short (*GetDiagRec)(short kind, Handle handle, short record, Text state, int* native, Text text, short room,
                        short* length);

    /// Throws DataError when it isn't installed.
    [[nodiscard]] static const OdbcLibrary& Get();
};

}  // namespace quillara
