#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>

namespace quillary {

/// Tells that a listed shelf changed on disk, once for a burst of changes, and then not again until it is asked to
/// watch anew: whoever listens lists the shelf in between. Main thread.
class ShelfWatch : public QObject {
public:
    explicit ShelfWatch(std::function<void()> changed, QObject* parent = nullptr);
    ~ShelfWatch() override;

    /// Watches the descriptor that a listing gave, -1 for none. It stays the caller's. Files that are `growing` are a
    /// change by themselves, a while later.
    void watch(int descriptor, bool growing);

private:
    class Copy;

    QTimer m_burst;
    std::unique_ptr<Copy> m_copy;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace quillary
