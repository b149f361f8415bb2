#include "Waveform.h"

#include "base/FileUrl.h"
#include "media/Peaks.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace quillary {

namespace {

constexpr int barWidth = 2;
constexpr int barStep = 3;
constexpr double leastHeight = 1;

int barsIn(double width) {
    return std::max(0, static_cast<int>((width + barStep - barWidth) / barStep));
}

/// The loudest of the peaks that a bar stands for.
float peakOf(const std::vector<float>& peaks, int bar, int bars) {
    const auto at = [&](int n) { return peaks.size() * static_cast<std::size_t>(n) / static_cast<std::size_t>(bars); };
    const std::size_t first = std::min(at(bar), peaks.size() - 1);
    const std::size_t last = std::clamp(at(bar + 1), first + 1, peaks.size());
    return *std::max_element(peaks.begin() + static_cast<std::ptrdiff_t>(first),
                             peaks.begin() + static_cast<std::ptrdiff_t>(last));
}

} // namespace

Waveform::Waveform(QQuickItem* parent) : QQuickPaintedItem(parent) {}

Waveform::~Waveform() {
    m_request.request_stop();
}

void Waveform::setPreview(AudioPreview* preview) {
    if (std::exchange(m_preview, preview) == preview) return;
    Q_EMIT previewChanged();
    ask();
}

void Waveform::setUrl(const QString& url) {
    if (std::exchange(m_url, url) == url) return;
    Q_EMIT urlChanged();
    ask();
}

void Waveform::setStamp(const QString& stamp) {
    if (std::exchange(m_stamp, stamp) == stamp) return;
    Q_EMIT stampChanged();
    ask();
}

int Waveform::playedBars() const {
    return static_cast<int>(std::lround(m_progress * barsIn(width())));
}

void Waveform::setProgress(double progress) {
    const int before = playedBars();
    if (std::exchange(m_progress, progress) == progress) return;
    Q_EMIT progressChanged();
    if (playedBars() != before) update();
}

void Waveform::setInk(QColor color) {
    m_ink = color;
    Q_EMIT inkChanged();
    update();
}

void Waveform::setPlayedInk(QColor color) {
    m_playedInk = color;
    Q_EMIT inkChanged();
    update();
}

void Waveform::componentComplete() {
    QQuickPaintedItem::componentComplete();
    ask();
}

void Waveform::ask() {
    if (!isComponentComplete() || !m_preview) return;
    m_request.request_stop();
    m_request = std::stop_source();
    m_peaks.clear();
    m_ready = false;
    m_problem.clear();
    Q_EMIT readyChanged();
    update();
    const auto file = pathOfFileUrl(m_url.toLatin1());
    if (!file) return;
    m_preview->peaks(*file, media::waveformPeaks, m_request.get_token(),
                     [this](const AudioPreview::PeakList& peaks) { take(peaks); });
}

void Waveform::take(const AudioPreview::PeakList& peaks) {
    m_ready = peaks.has_value();
    m_peaks = peaks.value_or(std::vector<float>());
    if (!peaks)
        m_problem = media::description(peaks.error());
    else if (m_peaks.empty())
        m_problem = media::description(media::MediaError::noSamples);
    Q_EMIT readyChanged();
    update();
}

void Waveform::paint(QPainter* painter) {
    const int bars = barsIn(width());
    if (m_peaks.empty() || bars == 0) return;
    const int played = playedBars();
    for (int bar = 0; bar < bars; ++bar) {
        const double high = std::max(leastHeight, static_cast<double>(peakOf(m_peaks, bar, bars)) * height());
        const QRectF shape(bar * barStep, (height() - high) / 2, barWidth, high);
        painter->fillRect(shape, bar < played ? m_playedInk : m_ink);
    }
}

} // namespace quillary
