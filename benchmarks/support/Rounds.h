#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quillary::benchmark {

/// One run of a variant, in milliseconds. Processor time is that of all threads and of children that ended meanwhile.
struct Sample {
    double processor;
    double wall;
};

Sample measured(const std::function<void()>& work);

/// Runs variants in turn, round after round, so that a drift of the machine hits all alike, and prints a table.
///
///     Rounds rounds("PNG, photo", Rounds::options(argc, argv));
///     rounds.add("QImage::save", [&] { … });                    // the rival is added first
///     rounds.add("pngData", [&] { … }, "12.3 MB");
///     rounds.print();
///
/// The table tells each variant's median, least and largest processor time, its median wall time, and the median over
/// the rounds of its processor time against the first variant's.
class Rounds {
public:
    struct Options {
        int runs = 7;
        int warmUps = 1;
        std::vector<std::string> only; ///< variants whose name contains one of these; all when empty
    };
    /// --runs N, --warm N, --only TEXT (repeatable); other words are left alone.
    static Options options(int argumentCount, char** arguments);

    Rounds(std::string title, Options options);

    void add(std::string name, std::function<void()> work, std::string note = {});
    /// Runs everything and prints. Returns the ratio of each variant, in order.
    std::vector<double> print();

private:
    struct Variant {
        std::string name;
        std::function<void()> work;
        std::string note;
        std::vector<Sample> samples = {};
    };

    std::string m_title;
    Options m_options;
    std::vector<Variant> m_variants;
};

/// The largest resident size, in bytes, that a child process reached which did `work`, and its size before: (before,
/// peak).
struct PeakMemory {
    double before;
    double peak;
};
PeakMemory peakMemoryOf(const std::function<void()>& work);

double median(std::vector<double> values);

/// Ends the program with the text when what it is about to measure is not so.
void require(bool holds, const char* what);

} // namespace quillary::benchmark
