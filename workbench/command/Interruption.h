#pragma once

#include <string>

#include "workbench/data/Errors.h"

namespace quillara {

/// From now on Ctrl-C ends the program with status 130, at once, and a file that is being written is removed. Between
/// two files, and when a file has just got its name, the program goes on to where it asks IsInterrupted.
void WatchForInterrupt();

/// True once Ctrl-C has been pressed where it didn't end the program.
[[nodiscard]] bool IsInterrupted() noexcept;

/// From now on Ctrl-C does nothing: the last result is where it belongs, and the program says so with its status.
void IgnoreInterrupts();

/// The writing of a file, which must not be cut off once the file has its name: the status tells that it has. A device
/// or pipe has nothing to be undone and may wait for its reader for ever: there Ctrl-C ends the program in any case.
class FileWriting {
  public:
    explicit FileWriting(const std::string& path);
    FileWriting(const FileWriting&) = delete;
    FileWriting& operator=(const FileWriting&) = delete;
    ~FileWriting();

  private:
    bool Holds;
};

}  // namespace quillara
