#include "workbench/formats/DuckDbLibrary.h"

#include <dlfcn.h>

#include <cstdlib>

#include "workbench/data/Errors.h"

namespace quillara {
namespace {

constexpr const char* PlaceVariable = "QUILLARA_DUCKDB";  // names the library where the system doesn't find it
constexpr const char* LibraryName = "libduckdb.so";

template <typename Function>
void LoadFrom(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    if (function == nullptr) {
        throw DataError("The library of DuckDB can't be used: it has no " + std::string(name) + ".");
    }
}

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
    DuckDbLibrary loaded{};
    LoadFrom(library, "duckdb_create_config", loaded.CreateConfig);
    LoadFrom(library, "duckdb_set_config", loaded.SetConfig);
    LoadFrom(library, "duckdb_destroy_config", loaded.DestroyConfig);
    LoadFrom(library, "duckdb_open_ext", loaded.OpenExtended);
    LoadFrom(library, "duckdb_close", loaded.Close);
    LoadFrom(library, "duckdb_connect", loaded.Connect);
    LoadFrom(library, "duckdb_disconnect", loaded.Disconnect);
    LoadFrom(library, "duckdb_prepare", loaded.Prepare);
    LoadFrom(library, "duckdb_prepare_error", loaded.PrepareError);
    LoadFrom(library, "duckdb_destroy_prepare", loaded.DestroyPrepare);
    LoadFrom(library, "duckdb_pending_prepared", loaded.PendingPrepared);
    LoadFrom(library, "duckdb_pending_execute_task", loaded.PendingExecuteTask);
    LoadFrom(library, "duckdb_pending_error", loaded.PendingError);
    LoadFrom(library, "duckdb_execute_pending", loaded.ExecutePending);
    LoadFrom(library, "duckdb_destroy_pending", loaded.DestroyPending);
    LoadFrom(library, "duckdb_result_error", loaded.ResultError);
    LoadFrom(library, "duckdb_destroy_result", loaded.DestroyResult);
    LoadFrom(library, "duckdb_fetch_chunk", loaded.FetchChunk);
    LoadFrom(library, "duckdb_data_chunk_get_size", loaded.ChunkSize);
    LoadFrom(library, "duckdb_data_chunk_get_vector", loaded.ChunkVector);
    LoadFrom(library, "duckdb_destroy_data_chunk", loaded.DestroyChunk);
    LoadFrom(library, "duckdb_vector_get_data", loaded.VectorData);
    LoadFrom(library, "duckdb_vector_get_validity", loaded.VectorValidity);
    LoadFrom(library, "duckdb_free", loaded.Free);
    return loaded;
}

}  // namespace

const DuckDbLibrary& DuckDbLibrary::Get(const std::string& reader) {
    static const DuckDbLibrary library = LoadedLibrary(OpenedLibrary(reader));
    return library;
}

}  // namespace quillara
