#include "workbench/exploration/TableReading.h"

#include <exception>
#include <new>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/formats/DataFile.h"

namespace quillara {

TableReading::TableReading(std::string path) : Path(std::move(path)), Reader([this] { Read(); }) {}

TableReading::~TableReading() {
    Cancel();
    if (Reader.joinable()) {
        Reader.join();
    }
}

TableReading::Outcome TableReading::Finish() {
    if (Reader.joinable()) {
        Reader.join();
    }
    return std::exchange(Result, {});
}

void TableReading::Read() {
    ReadOptions options;
    options.Progress = [this](double share) { Done = share; };
    options.Received = [this](std::size_t bytes) { Bytes = bytes; };
    options.Noticed = [this](const Remark& remark) { Result.Remarks.push_back(remark); };
    options.Cancelled = [this] { return IsCancelled.load(); };
    try {
        Result.Table = std::make_shared<DataTable>(ReadDataFile(Path, options));
    } catch (const Interrupted&) {
        Result = {};
    } catch (const std::bad_alloc&) {
        Result.Failure = "There is not enough memory for this file.";
    } catch (const std::exception& failure) {
        Result.Failure = failure.what();
    }
    Ended = true;
}

}  // namespace quillara
