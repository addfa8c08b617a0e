#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"

namespace quillara {

/// Reads a data file on a thread of its own, so that whoever shows it stays alive. Used from one thread.
class TableReading {
  public:
    /// How it ended: with a table, or with a text that says why not. Neither: it was cancelled.
    struct Outcome {
        std::shared_ptr<DataTable> Table;
        std::vector<Remark> Remarks;  ///< on the file and its reading
        std::string Failure;
    };

    /// Begins to read at once.
    explicit TableReading(std::string path);
    TableReading(const TableReading&) = delete;
    TableReading& operator=(const TableReading&) = delete;
    /// Cancels what isn't done, and waits.
    ~TableReading();

    /// How much is done, rising from 0 to 1.
    [[nodiscard]] double Share() const { return Done; }
    /// What has been received of a pipe, whose length nobody knows.
    [[nodiscard]] std::size_t Received() const { return Bytes; }
    [[nodiscard]] bool HasEnded() const { return Ended; }
    /// Ends it as soon as it can.
    void Cancel() { IsCancelled = true; }
    /// Waits for its end.
    [[nodiscard]] Outcome Finish();

  private:
    void Read();

    const std::string Path;
    std::atomic<double> Done = 0.0;
    std::atomic<std::size_t> Bytes = 0;
    std::atomic<bool> IsCancelled = false;
    std::atomic<bool> Ended = false;
    Outcome Result;  // the thread's until it has ended
    std::thread Reader;
};

}  // namespace quillara
