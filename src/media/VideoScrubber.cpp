#include "media/VideoScrubber.h"

#include "media/ClipFrames.h"

#include <algorithm>
#include <list>
#include <mutex>
#include <optional>
#include <set>
#include <sys/stat.h>

namespace quillary {

namespace {

/// What must be the same for an opened clip to be still that file.
struct Identity {
    dev_t device = 0;
    ino_t inode = 0;
    timespec modified{};
    off_t size = 0;

    static Identity of(const std::filesystem::path& url) {
        struct stat status {};
        if (::stat(url.c_str(), &status) != 0) return {};
        return {status.st_dev, status.st_ino, status.st_mtim, status.st_size};
    }
    bool operator==(const Identity& other) const {
        return device == other.device && inode == other.inode && size == other.size &&
               modified.tv_sec == other.modified.tv_sec && modified.tv_nsec == other.modified.tv_nsec;
    }
};

struct Generator {
    std::filesystem::path url;
    Identity identity;
    media::ClipFrames frames;
};

} // namespace

struct VideoScrubber::Shared {
    std::mutex lock;
    std::list<Generator> generators; ///< the last one used first; one in use is not in the list
    std::set<std::filesystem::path> inFlight;
    VideoScrubber* home = nullptr; ///< null when nobody waits any more

    std::optional<Generator> take(const std::filesystem::path& url) {
        const auto identity = Identity::of(url);
        std::optional<Generator> taken;
        {
            const std::scoped_lock guard(lock);
            const auto kept = std::ranges::find(generators, url, &Generator::url);
            if (kept != generators.end()) {
                if (kept->identity == identity) taken = std::move(*kept);
                generators.erase(kept);
            }
        }
        if (taken) return taken;
        auto opened = media::ClipFrames::open(url);
        if (!opened) return {};
        return Generator{url, identity, std::move(*opened)};
    }

    void giveBack(Generator generator) {
        const std::scoped_lock guard(lock);
        generators.push_front(std::move(generator));
        if (generators.size() > openClips) generators.pop_back();
    }
};

VideoScrubber::VideoScrubber(QThreadPool& pool, QObject* parent)
    : QObject(parent), m_shared(std::make_shared<Shared>()), m_pool(pool) {
    m_shared->home = this;
}

VideoScrubber::~VideoScrubber() {
    const std::scoped_lock guard(m_shared->lock);
    m_shared->home = nullptr;
}

bool VideoScrubber::frame(const std::filesystem::path& url, double seconds, Completion completion) {
    {
        const std::scoped_lock guard(m_shared->lock);
        if (!m_shared->inFlight.insert(url).second) return false;
    }
    // Before other work of the pool: somebody moves the pointer and waits.
    constexpr int priority = 1;
    m_pool.start(
        [shared = m_shared, url, seconds, completion = std::move(completion)] {
            QImage picture;
            if (auto generator = shared->take(url)) {
                picture = generator->frames.frame(seconds, tolerance, tolerance, longestSide).value_or(QImage());
                shared->giveBack(std::move(*generator));
            }
            const std::scoped_lock guard(shared->lock);
            shared->inFlight.erase(url);
            if (!shared->home) return;
            QMetaObject::invokeMethod(
                shared->home, [completion, picture] { completion(picture); }, Qt::QueuedConnection);
        },
        priority);
    return true;
}

} // namespace quillary
