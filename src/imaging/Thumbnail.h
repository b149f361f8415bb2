#pragma once

#include "imaging/ThumbnailCache.h"

#include <QByteArray>
#include <QCache>
#include <QImage>
#include <QMutex>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>

namespace quillary {

/// The small upright pictures of library tiles: bitmaps and vectors at most 220 pixels on their longer side (vectors
/// exactly that), clips at most 440.
///
/// A picture that was made once stays in memory, up to a bound, and in the desktop's thumbnail cache beyond the end of
/// the program; so does the finding that none can be made. Both are void when the file's date or size has changed.
/// Thread-safe; `load` works on the calling thread.
class Thumbnail {
public:
    static constexpr int pictureSide = 220;
    static constexpr int clipSide = 440;
    static constexpr int memoryKilobytes = 48 * 1024;

    /// Grabs the frame that stands for a clip: upright, at most `longestSide` pixels on its longer side, from 10 % of
    /// the clip's length but at most 2 seconds into it, or from its beginning when the length is unknown; a key frame
    /// from 1 second before to 2 seconds after that will do. Null when there is none or a stop was requested. Called on
    /// any thread, on several at once.
    using FrameSource = std::function<QImage(const std::filesystem::path& clip, int longestSide, std::stop_token stop)>;

    /// `cacheFolder` is the desktop's folder for caches. Without frames there are no pictures of clips.
    explicit Thumbnail(const std::filesystem::path& cacheFolder, FrameSource frames = {});

    /// Null when no picture can be made of the file, or a stop was requested before there was one.
    QImage load(const std::filesystem::path& url, std::stop_token stop = {});

private:
    enum class Kind { bitmap, vector, clip };
    struct Remembered {
        ThumbnailCache::FileState state;
        QImage picture; ///< null: none can be made
    };

    std::optional<QImage> remembered(const QByteArray& key, const ThumbnailCache::FileState& state);
    void remember(const QByteArray& key, const ThumbnailCache::FileState& state, const QImage& picture);
    QImage made(const std::filesystem::path& url, const ThumbnailCache::FileState& state, Kind kind,
                std::stop_token stop);
    ThumbnailCache::Entry make(const std::filesystem::path& url, Kind kind, std::stop_token stop) const;

    const ThumbnailCache m_cache;
    const FrameSource m_frames;
    QMutex m_mutex;
    QCache<QByteArray, Remembered> m_memory{memoryKilobytes}; ///< by path, guarded by `m_mutex`
};

} // namespace quillary
