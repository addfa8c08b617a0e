#pragma once

#include <stdexcept>

namespace quillara {

/// The data or the drill can't be used as asked. The text is one clear line for the user: what is wrong and, where
/// it helps, what to do. The program ends with status 1.
class DataError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The program was called in a way that it doesn't understand. The program ends with status 2.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The user ended the work before it was done; nothing was changed. The program ends with status 130.
class Interrupted : public std::runtime_error {
  public:
    Interrupted() : std::runtime_error("Interrupted.") {}
};

}  // namespace quillara
