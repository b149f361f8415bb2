#include "cli/ProgressBar.h"

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <string>

namespace quillary::cli {

namespace {

using namespace std::chrono_literals;

constexpr auto tick = 100ms;
constexpr int width = 30;

void draw(int done, int total) {
    const int filled = total > 0 ? done * width / total : 0;
    std::string bar;
    for (int i = 0; i < width; ++i) bar += i < filled ? "█" : "░";
    std::fprintf(stderr, "\r\033[K%s  %d of %d", bar.c_str(), done, total);
    std::fflush(stderr);
}

void paint(const std::stop_token& stop, const BatchProgress& progress) {
    std::mutex mutex;
    std::condition_variable_any wake;
    std::unique_lock lock(mutex);
    bool drawn = false;
    while (!wake.wait_for(lock, stop, tick, [&] { return stop.stop_requested(); })) {
        draw(progress.done, progress.total);
        drawn = true;
    }
    if (drawn) std::fputs("\r\033[K", stderr);
}

} // namespace

ProgressBar::ProgressBar(const BatchProgress& progress, const Output& output) {
    if (!output.showsProgress()) return;
    m_painter = std::jthread([&progress](const std::stop_token& stop) { paint(stop, progress); });
}

} // namespace quillary::cli
