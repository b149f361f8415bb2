#pragma once

#include "media/AudioPreview.h"

#include <QColor>
#include <QPointer>
#include <QQuickPaintedItem>
#include <optional>
#include <stop_token>
#include <vector>

namespace quillary {

/// Draws a sound as a row of bars, the played part in another colour. It asks for its peaks when it is told its sound,
/// and gives up its place in the line of those that wait when it goes or gets another. Main thread.
class Waveform : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillary::AudioPreview* preview READ preview WRITE setPreview NOTIFY previewChanged REQUIRED FINAL)
    /// A file: URL.
    Q_PROPERTY(QString url READ url WRITE setUrl NOTIFY urlChanged REQUIRED FINAL)
    /// Of the file; another one asks again.
    Q_PROPERTY(QString stamp READ stamp WRITE setStamp NOTIFY stampChanged FINAL)
    /// The part that was played, 0 to 1.
    Q_PROPERTY(double progress READ progress WRITE setProgress NOTIFY progressChanged FINAL)
    Q_PROPERTY(QColor ink READ ink WRITE setInk NOTIFY inkChanged FINAL)
    Q_PROPERTY(QColor playedInk READ playedInk WRITE setPlayedInk NOTIFY inkChanged FINAL)
    /// Whether the peaks are there.
    Q_PROPERTY(bool ready READ ready NOTIFY readyChanged FINAL)
    /// Why there are none; empty while they may still come.
    Q_PROPERTY(QString problem READ problem NOTIFY readyChanged FINAL)

public:
    explicit Waveform(QQuickItem* parent = nullptr);
    ~Waveform() override;

    AudioPreview* preview() const { return m_preview; }
    void setPreview(AudioPreview* preview);
    const QString& url() const { return m_url; }
    void setUrl(const QString& url);
    const QString& stamp() const { return m_stamp; }
    void setStamp(const QString& stamp);
    double progress() const { return m_progress; }
    void setProgress(double progress);
    QColor ink() const { return m_ink; }
    void setInk(QColor color);
    QColor playedInk() const { return m_playedInk; }
    void setPlayedInk(QColor color);
    bool ready() const { return m_ready; }
    const QString& problem() const { return m_problem; }

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void previewChanged();
    void urlChanged();
    void stampChanged();
    void progressChanged();
    void inkChanged();
    void readyChanged();

protected:
    void componentComplete() override;

private:
    void ask();
    void take(const AudioPreview::PeakList& peaks);
    int playedBars() const;

    QPointer<AudioPreview> m_preview;
    QString m_url;
    QString m_stamp;
    double m_progress = 0;
    QColor m_ink;
    QColor m_playedInk;
    std::vector<float> m_peaks;
    bool m_ready = false;
    QString m_problem;
    std::stop_source m_request;
};

} // namespace quillary
