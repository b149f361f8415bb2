#include "ClipScrub.h"

#include "base/FileUrl.h"
#include "library/ui/ThumbnailProvider.h"
#include "media/MediaLength.h"

#include <algorithm>

namespace quillary {

namespace {

/// As the picture at rest: the frame fills the tile, its corners are round.
constexpr QSize tileSize(440, 248);

} // namespace

void ClipScrub::setUrl(const QString& url) {
    if (std::exchange(m_url, url) == url) return;
    Q_EMIT urlChanged();
    rest();
    readDuration();
}

void ClipScrub::setStamp(const QString& stamp) {
    if (std::exchange(m_stamp, stamp) == stamp) return;
    Q_EMIT stampChanged();
    readDuration();
}

void ClipScrub::componentComplete() {
    m_complete = true;
    readDuration();
}

void ClipScrub::readDuration() {
    if (!m_complete || !m_shelf) return;
    m_duration = 0;
    Q_EMIT durationChanged();
    const auto file = pathOfFileUrl(m_url.toLatin1());
    if (!file) return;
    if (!m_length) m_length = std::make_unique<Background>(m_shelf->pool());
    m_length->run([file = *file](const std::stop_token& stop) { return media::videoLength(file, stop).value_or(0); },
                  [this](double seconds) {
                      m_duration = seconds;
                      Q_EMIT durationChanged();
                  });
}

QString ClipScrub::durationLabel() const {
    if (!(m_duration > 0)) return {};
    const auto whole = static_cast<qint64>(m_duration);
    return QStringLiteral("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
}

void ClipScrub::scrub(double fraction) {
    const auto file = pathOfFileUrl(m_url.toLatin1());
    if (!file || !m_shelf) return;
    m_scrubbing = true;
    const double seconds = std::clamp(fraction, 0.0, 1.0) * m_duration;
    const QPointer<ClipScrub> self(this);
    const bool taken = m_shelf->scrubber().frame(*file, seconds, [self, url = m_url](const QImage& frame) {
        if (!self || self->m_url != url || !self->m_scrubbing) return;
        if (!frame.isNull()) self->setScrubFrame(ThumbnailProvider::composed(frame, tileSize));
        // The pointer may rest now: the place where it came to stand is still owed.
        if (const auto next = std::exchange(self->m_next, {})) self->scrub(*next);
    });
    if (!taken) m_next = fraction;
}

void ClipScrub::rest() {
    m_scrubbing = false;
    m_next.reset();
    setScrubFrame({});
}

void ClipScrub::setScrubFrame(const QImage& frame) {
    m_scrubFrame = frame;
    Q_EMIT scrubFrameChanged();
}

} // namespace quillary
