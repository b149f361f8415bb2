#include "support/Rounds.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillary::benchmark {

namespace {

double processorTime() {
    double sum = 0;
    for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        getrusage(who, &usage);
        for (const timeval& part : {usage.ru_utime, usage.ru_stime})
            sum += static_cast<double>(part.tv_sec) * 1e3 + static_cast<double>(part.tv_usec) * 1e-3;
    }
    return sum;
}

/// A line of this process's memory table, in bytes.
double memoryLine(std::string_view key) {
    std::ifstream table("/proc/self/status");
    for (std::string line; std::getline(table, line);)
        if (line.starts_with(key)) return std::strtod(line.c_str() + key.size() + 1, nullptr) * 1024;
    return 0;
}

} // namespace

double median(std::vector<double> values) {
    if (values.empty()) return 0;
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

Sample measured(const std::function<void()>& work) {
    malloc_trim(0);
    const double before = processorTime();
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - start;
    return {processorTime() - before, wall.count()};
}

Rounds::Options Rounds::options(int argumentCount, char** arguments) {
    Options options;
    for (int i = 1; i + 1 < argumentCount; ++i) {
        const std::string_view word = arguments[i];
        if (word == "--runs")
            options.runs = std::max(1, std::atoi(arguments[++i]));
        else if (word == "--warm")
            options.warmUps = std::max(0, std::atoi(arguments[++i]));
        else if (word == "--only")
            options.only.emplace_back(arguments[++i]);
    }
    return options;
}

Rounds::Rounds(std::string title, Options options) : m_title(std::move(title)), m_options(std::move(options)) {}

void Rounds::add(std::string name, std::function<void()> work, std::string note) {
    const auto asked = [&](const std::string& part) { return name.find(part) != std::string::npos; };
    if (!m_options.only.empty() && std::ranges::none_of(m_options.only, asked)) return;
    m_variants.push_back({std::move(name), std::move(work), std::move(note)});
}

std::vector<double> Rounds::print() {
    for (int round = -m_options.warmUps; round < m_options.runs; ++round) {
        for (Variant& variant : m_variants) {
            const Sample sample = measured(variant.work);
            if (round >= 0) variant.samples.push_back(sample);
        }
    }
    std::printf("== %s (%d runs)\n%-38s %9s %9s %9s %9s %8s  %s\n", m_title.c_str(), m_options.runs, "variant",
                "cpu ms", "least", "most", "wall ms", "x first", "note");
    std::vector<double> ratios;
    for (const Variant& variant : m_variants) {
        std::vector<double> processor;
        std::vector<double> wall;
        std::vector<double> ratio;
        for (std::size_t i = 0; i < variant.samples.size(); ++i) {
            processor.push_back(variant.samples[i].processor);
            wall.push_back(variant.samples[i].wall);
            ratio.push_back(processor.back() / std::max(1e-6, m_variants.front().samples[i].processor));
        }
        ratios.push_back(median(ratio));
        std::printf("%-38s %9.2f %9.2f %9.2f %9.2f %8.3f  %s\n", variant.name.c_str(), median(processor),
                    std::ranges::min(processor), std::ranges::max(processor), median(wall), ratios.back(),
                    variant.note.c_str());
    }
    std::fflush(stdout);
    return ratios;
}

PeakMemory peakMemoryOf(const std::function<void()>& work) {
    int channel[2];
    if (pipe(channel) != 0) return {};
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        const double before = memoryLine("VmRSS:");
        work();
        const PeakMemory result{before, memoryLine("VmHWM:")};
        const bool told = write(channel[1], &result, sizeof result) == sizeof result;
        _exit(told ? 0 : 1);
    }
    close(channel[1]);
    PeakMemory result{};
    const bool heard = child > 0 && read(channel[0], &result, sizeof result) == sizeof result;
    close(channel[0]);
    if (child > 0) waitpid(child, nullptr, 0);
    return heard ? result : PeakMemory{};
}

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "%s\n", what);
    std::exit(1);
}

} // namespace quillary::benchmark
