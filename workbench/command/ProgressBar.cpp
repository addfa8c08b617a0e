#include "workbench/command/ProgressBar.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <unistd.h>

namespace quillara {
namespace {

using namespace std::chrono_literals;

constexpr auto Patience = 500ms;
constexpr auto RedrawEvery = 100ms;
constexpr int Width = 40;
constexpr char EraseLine[] = "\r\033[K";

}  // namespace

std::atomic<bool> ProgressBar::IsShown = false;

bool ProgressBar::IsWanted() {
    return isatty(STDERR_FILENO) == 1;
}

ProgressBar::~ProgressBar() {
    Clear();
}

void ProgressBar::Start(std::string_view text, std::int32_t total) {
    Text = text;
    Total = std::max(total, 1);
    NextLook = 0;
    if (!NextDraw && IsWanted()) {
        NextDraw = Clock::now() + Patience;
    }
}

void ProgressBar::Advance(std::int32_t done) {
    if (done < NextLook) {
        return;
    }
    NextLook = std::int64_t{done} + Total / 500;
    if (IsDue()) {
        Draw(std::clamp(done, 0, Total));
    }
}

void ProgressBar::AdvanceTo(const std::string& amount) {
    if (IsDue()) {
        Show(amount);
    }
}

void ProgressBar::Clear() {
    if (IsShown) {
        std::fputs(EraseLine, stderr);
        IsShown = false;
    }
}

void ProgressBar::ClearAnyInSignalHandler() noexcept {
    if (IsShown) {
        static_cast<void>(!write(STDERR_FILENO, EraseLine, sizeof EraseLine - 1));
    }
}

bool ProgressBar::IsDue() {
    const auto now = Clock::now();
    const bool isDue = NextDraw && now >= *NextDraw;
    if (isDue) {
        NextDraw = now + RedrawEvery;
    }
    return isDue;
}

void ProgressBar::Draw(std::int32_t done) {
    const double share = static_cast<double>(done) / Total;
    std::string bar(Width, '.');
    std::fill_n(bar.begin(), static_cast<int>(share * Width), '#');
    const int percent = static_cast<int>(std::lround(share * 100.0));
    Show('[' + bar + "] " + std::to_string(percent) + '%');
}

void ProgressBar::Show(const std::string& line) {
    std::fprintf(stderr, "%s%s%s", EraseLine, Text.c_str(), line.c_str());
    IsShown = true;
}

}  // namespace quillara
