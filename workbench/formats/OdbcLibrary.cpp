#include "workbench/formats/OdbcLibrary.h"

#include <dlfcn.h>

#include "workbench/data/Errors.h"

namespace quillara {
namespace {

template <typename Function>
void Load(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    if (function == nullptr) {
        throw DataError("The library of ODBC can't be used: it has no " + std::string(name) + ".");
    }
}

OdbcLibrary Opened() {
    void* const library = dlopen("libodbc.so.2", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        throw DataError("Databases are read by ODBC, whose library libodbc.so.2 isn't installed; install unixodbc.");
    }
    OdbcLibrary loaded{};
    Load(library, "SQLAllocHandle", loaded.AllocHandle);
    Load(library, "SQLFreeHandle", loaded.FreeHandle);
    Load(library, "SQLSetEnvAttr", loaded.SetEnvAttr);
    Load(library, "SQLSetConnectAttr", loaded.SetConnectAttr);
    Load(library, "SQLDriverConnect", loaded.DriverConnect);
    Load(library, "SQLDisconnect", loaded.Disconnect);
    Load(library, "SQLEndTran", loaded.EndTran);
    Load(library, "SQLGetInfo", loaded.GetInfo);
    Load(library, "SQLTables", loaded.Tables);
    Load(library, "SQLExecDirect", loaded.ExecDirect);
    Load(library, "SQLNumResultCols", loaded.NumResultCols);
    Load(library, "SQLDescribeCol", loaded.DescribeCol);
    Load(library, "SQLFetch", loaded.Fetch);
    Load(library, "SQLGetData", loaded.GetData);
    Load(library, "SQLGetDiagRec", loaded.GetDiagRec);
    return loaded;
}

}  // namespace

const OdbcLibrary& OdbcLibrary::Get() {
    static const OdbcLibrary library = Opened();
    return library;
}

}  // namespace quillara
