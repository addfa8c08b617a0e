#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillara {

/// A bar on standard error that shows how far a pass over the data is. It appears half a second after the first start,
/// so that many short passes show it too, and stays until it is cleared.
class ProgressBar {
  public:
    /// Whether anybody would see a bar: standard error is a terminal.
    [[nodiscard]] static bool IsWanted();

    ProgressBar() = default;
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// Without anybody who would see it there is no bar.
    void Start(std::string_view text, std::int32_t total);
    void Advance(std::int32_t done);
    /// In place of a bar where nobody knows the total: how much is done, as "12 MB".
    void AdvanceTo(const std::string& amount);
    /// Takes the bar off the screen; to be done before anything else is written there.
    void Clear();
    /// Takes any bar off the screen when the program ends here and now.
    static void ClearAnyInSignalHandler() noexcept;

  private:
    using Clock = std::chrono::steady_clock;

    /// Whether it is time to draw anew.
    [[nodiscard]] bool IsDue();
    void Draw(std::int32_t done);
    void Show(const std::string& line);

    std::string Text;
    std::int32_t Total = 0;
    std::int64_t NextLook = 0;  ///< cases before which the clock isn't read again
    std::optional<Clock::time_point> NextDraw;  ///< nothing: never started
    static std::atomic<bool> IsShown;  ///< there is one screen
};

}  // namespace quillara
