#include "cutout/flat/RegionFill.h"

#include <array>
#include <utility>
#include <vector>

namespace quillary::cutout {

namespace {

/// Seeds grow along the runs of `room`, of which they are a part, to the runs' ends.
std::uint64_t grownAlongRuns(std::uint64_t seeds, std::uint64_t room) {
    // Upwards the carry of an addition does it: it ripples from each seed to the end of its run.
    seeds |= ((room + seeds) ^ room) & room;
    if ((seeds >> 1 & room & ~seeds) == 0) return seeds;
    for (int step = 1; step < 64; step *= 2) {
        seeds |= room & seeds >> step;
        room &= room >> step;
    }
    return seeds;
}

class RegionFill {
public:
    RegionFill(BitPlane& open, int width, int height)
        : m_width(width), m_height(height), m_stride(open.stride()), m_open(open), m_taken(width, height) {}

    BitPlane fromBorder(const std::stop_token& stop) {
        takeBorder();
        return grown(stop);
    }

    BitPlane fromCores(const std::stop_token& stop) {
        takeCores();
        return grown(stop);
    }

private:
    BitPlane grown(const std::stop_token& stop) {
        sweep(0, m_height, 1);
        sweep(m_height - 1, -1, -1);
        do {
            m_overflown = false;
            for (int y = 0; y < m_height && !stop.stop_requested(); ++y) scan(y);
        } while (m_overflown && !stop.stop_requested());
        return std::move(m_taken);
    }

    void take(std::size_t index, std::uint64_t bits) {
        m_taken[index] |= bits;
        m_open[index] &= ~bits;
    }

    void takeBorder() {
        const std::size_t words = m_open.wordsPerRow();
        const std::uint64_t rightmost = std::uint64_t(1) << (m_width - 1) % 64;
        for (int y = 0; y < m_height; ++y) {
            const std::size_t first = m_open.index(y);
            if (y == 0 || y == m_height - 1)
                for (std::size_t i = first; i < first + words; ++i) take(i, m_open[i]);
            take(first, m_open[first] & 1);
            take(first + words - 1, m_open[first + words - 1] & rightmost);
        }
    }

    /// The centres of all open squares of 3 × 3. Of each row the run of three is kept until the two rows around it are
    /// known, since a centre that is taken leaves the set.
    void takeCores() {
        const std::size_t words = m_open.wordsPerRow();
        const auto runs = [&](int y) {
            std::vector<std::uint64_t> row(words, 0);
            if (y < 0 || y >= m_height) return row;
            for (std::size_t i = 0; i < words; ++i) {
                const std::size_t at = m_open.index(y) + i;
                row[i] =
                    m_open[at] & (m_open[at] << 1 | m_open[at - 1] >> 63) & (m_open[at] >> 1 | m_open[at + 1] << 63);
            }
            return row;
        };
        std::vector<std::uint64_t> above = runs(-1);
        std::vector<std::uint64_t> here = runs(0);
        for (int y = 0; y < m_height; ++y) {
            std::vector<std::uint64_t> below = runs(y + 1);
            for (std::size_t i = 0; i < words; ++i) take(m_open.index(y) + i, above[i] & here[i] & below[i]);
            above = std::exchange(here, std::move(below));
        }
    }

    /// Row by row in one direction, each taking from the one before and along itself: most of a plain region is done
    /// so.
    void sweep(int from, int end, int step) {
        const std::size_t words = m_open.wordsPerRow();
        for (int y = from; y != end; y += step) {
            const std::size_t first = m_open.index(y);
            const std::size_t before = step > 0 ? first - m_stride : first + m_stride;
            std::uint64_t carry = 0;
            for (std::size_t i = 0; i < words; ++i) {
                const std::uint64_t open = m_open[first + i];
                if (open != 0) {
                    const std::uint64_t had = m_taken[first + i];
                    const std::uint64_t gained = (m_taken[before + i] | carry) & open;
                    if (gained != 0 || ((had << 1 | had >> 1) & open) != 0)
                        take(first + i, grownAlongRuns(had | gained, had | open) & open);
                }
                carry = m_taken[first + i] >> 63;
            }
            for (std::size_t i = words; i-- > 1;) {
                const std::uint64_t gained = m_taken[first + i] << 63 & m_open[first + i - 1];
                if (gained == 0) continue;
                take(first + i - 1, grownAlongRuns(gained, m_open[first + i - 1]));
            }
        }
    }

    /// Follows every word of a row from which the region can still grow.
    void scan(int y) {
        const std::size_t first = m_open.index(y);
        for (std::size_t i = first; i < first + m_open.wordsPerRow(); ++i) {
            const std::uint64_t taken = m_taken[i];
            if (taken == 0) continue;
            const std::uint64_t gains = ((taken << 1 | taken >> 1) & m_open[i]) | (taken & m_open[i - m_stride]) |
                                        (taken & m_open[i + m_stride]) | (taken << 63 & m_open[i - 1]) |
                                        (taken >> 63 & m_open[i + 1]);
            if (gains == 0) continue;
            follow(i);
            while (m_waiting > 0) follow(m_list[--m_waiting]);
        }
    }

    void remember(std::size_t index) {
        if (m_waiting < m_list.size())
            m_list[m_waiting++] = index;
        else
            m_overflown = true;
    }

    /// Lets the region grow from a word, and on from each word that it reaches; of several ways one is followed at once
    /// and the others are remembered.
    void follow(std::size_t index) {
        for (;;) {
            std::uint64_t taken = m_taken[index];
            const std::uint64_t open = m_open[index];
            if (((taken << 1 | taken >> 1) & open) != 0) {
                taken = grownAlongRuns(taken, taken | open);
                m_taken[index] = taken;
                m_open[index] = open & ~taken;
            }
            std::size_t next = 0;
            const auto reach = [&](std::size_t neighbour, std::uint64_t bits) {
                const std::uint64_t gained = bits & m_open[neighbour];
                if (gained == 0) return;
                take(neighbour, gained);
                if (next != 0) remember(next);
                next = neighbour;
            };
            reach(index - 1, taken << 63);
            reach(index + 1, taken >> 63);
            reach(index - m_stride, taken);
            reach(index + m_stride, taken);
            if (next == 0) return;
            index = next;
        }
    }

    int m_width;
    int m_height;
    std::size_t m_stride;
    BitPlane& m_open;
    BitPlane m_taken;
    std::array<std::size_t, 4096> m_list;
    std::size_t m_waiting = 0;
    bool m_overflown = false;
};

} // namespace

BitPlane takeRegionAtBorder(BitPlane& open, int width, int height, const std::stop_token& stop) {
    return RegionFill(open, width, height).fromBorder(stop);
}

BitPlane takeRegionsWithCore(BitPlane& open, int width, int height, const std::stop_token& stop) {
    return RegionFill(open, width, height).fromCores(stop);
}

} // namespace quillary::cutout
