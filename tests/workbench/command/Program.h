#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

/// What one run of the program left behind.
struct Outcome {
    int Status = -1;  ///< as a shell tells it: 128 and the signal for a run that a signal ended
    std::string Out;
    std::string Errors;
};

/// Runs the program and waits for its end. With `interruptAfter` it is sent Ctrl-C's signal after so many milliseconds.
Outcome Quillara(const std::vector<std::string>& arguments, int interruptAfter = 0);

/// The arguments of a command line cut at blanks; 'single quotes' hold an argument together.
std::vector<std::string> Words(const std::string& line);

/// A folder of this test's own, with its files; gone when the test ends.
class Folder {
  public:
    Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder();

    /// Writes a file; gives its path.
    std::string Write(const std::string& name, const std::string& content) const;
    std::string Path(const std::string& name) const;
    std::string Read(const std::string& name) const;
    /// Names of all files, also hidden ones.
    std::vector<std::string> Names() const;

  private:
    std::string Root;
};

/// Documents in short: "9060.1@0 sex: Female 3, Male 2, Missing 1 | ..." - button, sequence, step, the last word of the
/// title, then each row with its first cell.
std::string InShort(const nlohmann::json& outputs);
