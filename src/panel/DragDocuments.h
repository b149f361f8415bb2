#pragma once

#include "base/Background.h"
#include "platform/FileAttributes.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <deque>
#include <expected>
#include <filesystem>
#include <optional>

namespace quillary {

class Storage;

/// The documents that drags of blocks carry. Small ones are made when a drag begins; large ones, which take longer than
/// a hand notices, are made in the background as soon as a drag looks likely, and a few of them are kept for a while.
/// Main thread.
class DragDocuments {
public:
    /// Up to this size a document is made at once.
    static constexpr std::uintmax_t small = 256 * 1024;

    /// Both outlive this object.
    DragDocuments(Storage& storage, QThreadPool& work) : m_storage(storage), m_preparing(work) {}

    /// A drag of this block may begin soon.
    void prepare(const std::filesystem::path& block);

    enum class Missing { gone, notReady };
    /// What a drag that begins now carries. A large document that was not asked for before is not ready: it is being
    /// made then.
    std::expected<QByteArray, Missing> take(const std::filesystem::path& block);

private:
    static constexpr std::size_t mostKept = 4;
    static constexpr qsizetype mostBytes = 64 * 1024 * 1024;
    static constexpr int fresh = 30'000; ///< ms; media may move meanwhile

    struct Prepared {
        std::filesystem::path block;
        platform::FileStamp stamp;
        QByteArray xml;
        QDeadlineTimer until;
    };
    const Prepared* find(const std::filesystem::path& block, const platform::FileStamp& stamp) const;
    void keep(Prepared prepared);

    Storage& m_storage;
    Background m_preparing;
    std::optional<std::pair<std::filesystem::path, platform::FileStamp>> m_underWay;
    std::deque<Prepared> m_kept; ///< the newest first
};

} // namespace quillary
