#pragma once

#include "media/MediaError.h"

#include <QImage>
#include <QObject>
#include <QThreadPool>
#include <filesystem>
#include <functional>
#include <memory>

namespace quillary {

/// Frames of clips while the pointer moves over their tiles: at most one per file is being made at a time, and what is
/// asked for meanwhile is dropped. A clip that was asked for stays open for the next time; the ones that were asked for
/// longest ago are closed.
class VideoScrubber : public QObject {
public:
    static constexpr int longestSide = 320;
    static constexpr double tolerance = 0.8; ///< seconds before and after
    static constexpr std::size_t openClips = 6;

    /// The pool outlives this object.
    explicit VideoScrubber(QThreadPool& pool, QObject* parent = nullptr);
    ~VideoScrubber() override;

    /// Null when the clip has no such frame.
    using Completion = std::function<void(const QImage& frame)>;
    /// Called on the main thread, and so is `completion`. False when the request is dropped because a frame of that
    /// file is being made: its completion is never called.
    bool frame(const std::filesystem::path& url, double seconds, Completion completion);

private:
    struct Shared;
    std::shared_ptr<Shared> m_shared;
    QThreadPool& m_pool;
};

} // namespace quillary
