#pragma once

#include <cstdint>
#include <ctime>
#include <deque>
#include <filesystem>
#include <string>

class COrvMainApp;

namespace quillara {

struct LogLine {
    std::uint32_t Process;
    std::uint32_t Thread;
    int Level;
    std::string Text;
    std::uint32_t Code;  ///< of the entry; 0: none
    std::time_t Time = std::time(nullptr);  ///< when it came in
};

/// Lines that came in before the application had a log, the last thousand of them.
[[nodiscard]] const std::deque<LogLine>& KeptLogLines();
/// Keeps a line; one that memory lacks for is lost.
void KeepLogLine(LogLine line) noexcept;
void ForgetKeptLogLines();

/// The log of the application: a text file with one line an entry (time, process, thread, level, text, and the code
/// when there is one). At 1 MiB it becomes the older file, with ".1" behind its name, and a new one begins. What can't
/// be written is lost without a word: a log may not stop the work.
/// Opening it writes the lines kept so far. Throws DataError when the file can't be written.
void OpenLogFile(const std::filesystem::path& file);
/// Opens the log of a program, quillara/log in the user's state folder, unless one is open. The file and its folder are
/// made for the first line; where they can't be, lines are lost.
void OpenProgramLog();
/// Closes it; lines are kept again.
void CloseLogFile();

/// The application with its log; null while that is closed.
[[nodiscard]] COrvMainApp* OpenLog();

}  // namespace quillara
