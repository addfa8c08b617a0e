#pragma once

#include <csignal>

#include <functional>
#include <string>

namespace quillara {

/// Removes a file when a signal ends the program while this lives. Only signals whose effect is the ordinary one, to
/// end the program, are caught, and they still end it. Of several that live at the same time the first is served.
class RemovalOnSignal {
  public:
    RemovalOnSignal() = default;
    RemovalOnSignal(const RemovalOnSignal&) = delete;
    RemovalOnSignal& operator=(const RemovalOnSignal&) = delete;
    ~RemovalOnSignal();

    /// Makes the file and watches over it from then on; no signal of this thread comes between. `make` gives the
    /// descriptor, negative for a failure, and may change the path. Gives the descriptor, and errno as `make` left it.
    [[nodiscard]] int Watch(const std::string& path, const std::function<int()>& make);

    /// Gives the file its final name: watching ends in the same moment for every signal of this thread. False, and
    /// errno as `move` left it, when `move` fails.
    [[nodiscard]] bool EndBy(const std::function<bool()>& move);

  private:
    bool IsWatching = false;
};

/// For a handler that ends the program at a signal of its own: removes the file that is watched over, if there is one.
/// False, and nothing removed, once a file has got its final name and no other is watched over.
bool RemoveUnfinishedFile() noexcept;

}  // namespace quillara
