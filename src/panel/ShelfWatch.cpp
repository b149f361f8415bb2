#include "panel/ShelfWatch.h"

#include "library/ShelfIndex.h"

#include <chrono>
#include <unistd.h>
#include <utility>

namespace quillary {

using namespace std::chrono_literals;

namespace {

constexpr auto burst = 200ms;

} // namespace

/// A descriptor of our own, so that a listing that is made anew meanwhile pulls nothing away.
class ShelfWatch::Copy {
public:
    explicit Copy(int descriptor) : number(dup(descriptor)) {}
    ~Copy() {
        if (number >= 0) close(number);
    }
    Q_DISABLE_COPY_MOVE(Copy)

    const int number;
};

ShelfWatch::ShelfWatch(std::function<void()> changed, QObject* parent) : QObject(parent) {
    m_burst.setSingleShot(true);
    connect(&m_burst, &QTimer::timeout, this, std::move(changed));
}

ShelfWatch::~ShelfWatch() = default;

void ShelfWatch::watch(int descriptor, bool growing) {
    m_notifier.reset();
    if (growing) m_burst.start(ShelfIndex::growingTime);
    m_copy = descriptor < 0 ? nullptr : std::make_unique<Copy>(descriptor);
    if (!m_copy || m_copy->number < 0) return;
    m_notifier = std::make_unique<QSocketNotifier>(m_copy->number, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        m_notifier->setEnabled(false);
        m_burst.start(burst);
    });
}

} // namespace quillary
