#include "workbench/formats/DuckDbLibrary.h"

#include <dlfcn.h>

#include <cstdlib>

#include "workbench/data/Errors.h"
#include "workbench/formats/LibraryFunctions.h"

namespace quillara {
namespace {

constexpr const char* PlaceVariable = "QUILLARA_DUCKDB";  // names the library where the system doesn't find it
constexpr const char* LibraryName = "libduckdb.so";

void* OpenedLibrary(const std::string& reader) {
    const char* place = std::getenv(PlaceVariable);
    const bool isPlaced = place != nullptr && *place != '\0';
    void* const library = dlopen(isPlaced ? place : LibraryName, RTLD_LAZY | RTLD_LOCAL);
    if (library == nullptr) {
        const std::string which = isPlaced
                                      ? "isn't there as " + std::string(place) + ", which " + PlaceVariable + " names"
                                      : "isn't installed";
        throw DataError(reader + " by the library of DuckDB (" + LibraryName + "), which " + which +
                        "; get it from duckdb.org and put it where the system finds libraries, or name its file in " +
                        PlaceVariable + ".");
    }
    return library;
}

DuckDbLibrary LoadedLibrary(void* library) {
    const LibraryFunctions functions(library, "DuckDB");
    DuckDbLibrary loaded{};
    functions.Load("duckdb_create_config", loaded.CreateConfig);
    functions.Load("duckdb_set_config", loaded.SetConfig);
    functions.Load("duckdb_destroy_config", loaded.DestroyConfig);
    functions.Load("duckdb_open_ext", loaded.OpenExtended);
    functions.Load("duckdb_close", loaded.Close);
    functions.Load("duckdb_connect", loaded.Connect);
    functions.Load("duckdb_disconnect", loaded.Disconnect);
    functions.Load("duckdb_prepare", loaded.Prepare);
    functions.Load("duckdb_prepare_error", loaded.PrepareError);
    functions.Load("duckdb_destroy_prepare", loaded.DestroyPrepare);
    functions.Load("duckdb_pending_prepared", loaded.PendingPrepared);
    functions.Load("duckdb_pending_execute_task", loaded.PendingExecuteTask);
    functions.Load("duckdb_pending_error", loaded.PendingError);
    functions.Load("duckdb_execute_pending", loaded.ExecutePending);
    functions.Load("duckdb_destroy_pending", loaded.DestroyPending);
    functions.Load("duckdb_result_error", loaded.ResultError);
    functions.Load("duckdb_destroy_result", loaded.DestroyResult);
    functions.Load("duckdb_fetch_chunk", loaded.FetchChunk);
    functions.Load("duckdb_data_chunk_get_size", loaded.ChunkSize);
    functions.Load("duckdb_data_chunk_get_vector", loaded.ChunkVector);
    functions.Load("duckdb_destroy_data_chunk", loaded.DestroyChunk);
    functions.Load("duckdb_vector_get_data", loaded.VectorData);
    functions.Load("duckdb_vector_get_validity", loaded.VectorValidity);
    functions.Load("duckdb_free", loaded.Free);
    return loaded;
}

}  // namespace

const DuckDbLibrary& DuckDbLibrary::Get(const std::string& reader) {
    static const DuckDbLibrary library = LoadedLibrary(OpenedLibrary(reader));
    return library;
}

}  // namespace quillara
