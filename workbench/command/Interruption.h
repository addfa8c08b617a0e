#pragma once

#include <string>

#include "workbench/data/Errors.h"

namespace quillara {

/// From now on Ctrl-C ends the program with status 130: at once, or, while a file is being written, when the writing
/// has been undone.
void WatchForInterrupt();

/// True once Ctrl-C has been pressed while a file was being written.
[[nodiscard]] bool IsInterrupted() noexcept;

/// From now on Ctrl-C does nothing: the last result is where it belongs, and the program says so with its status.
void IgnoreInterrupts();

/// The writing of a file, which must not be cut off at any place: it asks IsInterrupted where it can stop, and throws
/// Interrupted. A device or pipe has nothing to be undone and may wait for its reader for ever: there Ctrl-C ends the
/// program at once.
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
