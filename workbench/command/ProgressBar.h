#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillara {

/// A bar on standard error that shows how far a pass over the cases is. It appears once the pass has run for half a
/// second and goes when it ends.
class ProgressBar {
  public:
    /// Whether anybody would see a bar: standard error is a terminal.
    [[nodiscard]] static bool IsWanted();

    ProgressBar() = default;
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    void Start(std::string_view text, std::int32_t total);
    void Advance(std::int32_t done);
    void End();

  private:
    using Clock = std::chrono::steady_clock;

    void Draw(std::int32_t done);

    std::string Text;
    std::int32_t Total = 0;
    std::int64_t NextLook = 0;  ///< cases before which the clock isn't read again
    Clock::time_point NextDraw;
    bool IsShown = false;
};

}  // namespace quillara
