#include "workbench/formats/OdbcLibrary.h"

#include <dlfcn.h>

#include "workbench/data/Errors.h"
#include "workbench/formats/LibraryFunctions.h"

namespace quillara {
namespace {

OdbcLibrary Opened() {
    void* const library = dlopen("libodbc.so.2", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        throw DataError("Databases are read by ODBC, whose library libodbc.so.2 isn't installed; install unixodbc.");
    }
    const LibraryFunctions functions(library, "ODBC");
    OdbcLibrary loaded{};
    functions.Load("SQLAllocHandle", loaded.AllocHandle);
    functions.Load("SQLFreeHandle", loaded.FreeHandle);
    functions.Load("SQLSetEnvAttr", loaded.SetEnvAttr);
    functions.Load("SQLSetConnectAttr", loaded.SetConnectAttr);
    functions.Load("SQLDriverConnect", loaded.DriverConnect);
    functions.Load("SQLDisconnect", loaded.Disconnect);
    functions.Load("SQLEndTran", loaded.EndTran);
    functions.Load("SQLGetInfo", loaded.GetInfo);
    functions.Load("SQLTables", loaded.Tables);
    functions.Load("SQLExecDirect", loaded.ExecDirect);
    functions.Load("SQLNumResultCols", loaded.NumResultCols);
    functions.Load("SQLDescribeCol", loaded.DescribeCol);
    functions.Load("SQLFetch", loaded.Fetch);
    functions.Load("SQLGetData", loaded.GetData);
    functions.Load("SQLGetDiagRec", loaded.GetDiagRec);
    return loaded;
}

}  // namespace

const OdbcLibrary& OdbcLibrary::Get() {
    static const OdbcLibrary library = Opened();
    return library;
}

}  // namespace quillara
