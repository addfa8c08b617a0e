#pragma once

#include <cstdint>
#include <string>

namespace quillara {

/// The library of DuckDB, opened when a file is read by it, so that nothing else needs it. Its C interface, as far as
/// reading needs it.
struct DuckDbLibrary {
    using Handle = void*;
    using Index = std::uint64_t;

    /// What a query has given; handed over by value, as the library wants it.
    struct Result {
        Index Unused[3];
        void* UnusedToo[2];
        void* Content;
    };
    /// A text as it lies in a vector: up to 12 bytes in place, others elsewhere.
    struct Text {
        std::uint32_t Length;
        char Front[4];
        union {
            char Rest[8];
            const char* Whole;
        };
    };
    enum State : int { Done, Failed };
    enum Pending : int { Ready, NotReady, Broken, NoTask };

    State (*CreateConfig)(Handle* made);
    State (*SetConfig)(Handle config, const char* name, const char* value);
    void (*DestroyConfig)(Handle* config);
    State (*OpenExtended)(const char* path, Handle* database, Handle config, char** error);
    void (*Close)(Handle* database);
    State (*Connect)(Handle database, Handle* connection);
    void (*Disconnect)(Handle* connection);
    State (*Prepare)(Handle connection, const char* query, Handle* statement);
    const char* (*PrepareError)(Handle statement);
    void (*DestroyPrepare)(Handle* statement);
    State (*PendingPrepared)(Handle statement, Handle* pending);
    Pending (*PendingExecuteTask)(Handle pending);
    const char* (*PendingError)(Handle pending);
    State (*ExecutePending)(Handle pending, Result* result);
    void (*DestroyPending)(Handle* pending);
    const char* (*ResultError)(Result* result);
    void (*DestroyResult)(Result* result);
    Handle (*FetchChunk)(Result result);
    Index (*ChunkSize)(Handle chunk);
    Handle (*ChunkVector)(Handle chunk, Index column);
    void (*DestroyChunk)(Handle* chunk);
    void* (*VectorData)(Handle vector);
    const std::uint64_t* (*VectorValidity)(Handle vector);
    void (*Free)(void* memory);

    /// Throws DataError, which says what to install, when it isn't there; `reader` is what needs it.
    [[nodiscard]] static const DuckDbLibrary& Get(const std::string& reader);
};

}  // namespace quillara
