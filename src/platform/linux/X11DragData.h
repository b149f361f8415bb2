#pragma once

#include <QAbstractNativeEventFilter>
#include <cstdint>

class QMimeData;

namespace quillary::platform {

/// Hands out a drag's large data on an X server, as long as it lives. The toolkit puts whatever a drag carries into one
/// request, and over some 16 MiB the server ends the connection and with it the program. This sees requests before the
/// toolkit does and answers those for large data in pieces (ICCCM, INCR), on a thread and a connection of its own, so
/// that a slow receiver keeps nobody waiting. Main thread.
class X11DragData final : public QAbstractNativeEventFilter {
public:
    /// Up to this many bytes the toolkit answers.
    static constexpr qsizetype large = qsizetype(1) << 20;

    /// `data` outlives this; null leaves all to the toolkit. `begun` is the server's time when the drag began, as the
    /// pointer's event tells it, 0 when it is not known. Of several drags whose receivers are still fetching, each
    /// answers the questions from its own time.
    X11DragData(const QMimeData* data, std::uint32_t begun);
    ~X11DragData() override;

    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr* result) override;

private:
    /// Whether a question of that time means this drag.
    bool isAsked(std::uint32_t time) const;

    const QMimeData* m_data;
    std::uint32_t m_begun;
};

} // namespace quillary::platform
