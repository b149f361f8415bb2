#pragma once

#include <QImage>
#include <QMutex>
#include <QQuickAsyncImageProvider>
#include <QThreadPool>
#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

namespace quillary {

class Thumbnail;
class ThumbnailResponse;

/// The pictures of library tiles under "image://thumbnail/<file: URL>?<stamp>". The stamp is the file's date or
/// anything else that changes with its contents. With a requested size the picture fills it, for a tile with a
/// checkerboard below: opaque pictures are cropped and get round corners, those with transparency are fitted with a
/// margin around them.
///
/// The newest request is served first, on two threads, and one that is no longer wanted is dropped. What was made
/// before is Thumbnail's to remember. Files of which no picture can be made end as errors.
class ThumbnailProvider : public QQuickAsyncImageProvider {
public:
    using Load = std::function<QImage(const std::filesystem::path&, std::stop_token)>;
    /// `thumbnails` outlives the provider.
    explicit ThumbnailProvider(Thumbnail& thumbnails);
    explicit ThumbnailProvider(Load load);
    ~ThumbnailProvider() override;

    /// Whether a picture that somebody wants is still to be made. Any thread.
    bool busy() const { return m_open > 0; }

    QQuickImageResponse* requestImageResponse(const QString& id, const QSize& requestedSize) override;

    /// The picture as a tile of that many pixels shows it.
    static QImage composed(const QImage& thumbnail, QSize size);

private:
    friend class ThumbnailResponse;
    struct Request;

    /// Serves the newest request.
    void serve();
    /// Whether the request had not been begun.
    bool withdraw(const Request& request);

    const Load m_load;
    QThreadPool m_pool;
    QMutex m_mutex;
    std::vector<std::shared_ptr<Request>> m_waiting; ///< the newest last
    std::atomic<int> m_open = 0;                     ///< requests that are neither answered nor withdrawn
};

} // namespace quillary
