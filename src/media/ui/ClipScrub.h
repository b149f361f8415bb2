#pragma once

#include "base/Background.h"
#include "panel/VideoShelf.h"

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QQmlParserStatus>
#include <memory>
#include <optional>

namespace quillary {

/// What a clip's tile shows under the pointer, and how long the clip plays. Main thread.
class ClipScrub : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(quillary::VideoShelf* shelf MEMBER m_shelf REQUIRED FINAL)
    /// A file: URL.
    Q_PROPERTY(QString url READ url WRITE setUrl NOTIFY urlChanged REQUIRED FINAL)
    /// Of the file; another one asks for the length again.
    Q_PROPERTY(QString stamp READ stamp WRITE setStamp NOTIFY stampChanged FINAL)
    /// The frame at the last place asked for; null when there is none.
    Q_PROPERTY(QImage scrubFrame READ scrubFrame NOTIFY scrubFrameChanged FINAL)
    /// Such as "0:38"; empty while it is not known.
    Q_PROPERTY(QString durationLabel READ durationLabel NOTIFY durationChanged FINAL)

public:
    explicit ClipScrub(QObject* parent = nullptr) : QObject(parent) {}

    const QString& url() const { return m_url; }
    void setUrl(const QString& url);
    const QString& stamp() const { return m_stamp; }
    void setStamp(const QString& stamp);
    const QImage& scrubFrame() const { return m_scrubFrame; }
    QString durationLabel() const;

    /// Fetches the frame at a fraction of the length. While one is being made the last place asked for waits.
    Q_INVOKABLE void scrub(double fraction);
    /// Back to no frame.
    Q_INVOKABLE void rest();

    void classBegin() override {}
    void componentComplete() override;

Q_SIGNALS:
    void urlChanged();
    void stampChanged();
    void scrubFrameChanged();
    void durationChanged();

private:
    void readDuration();
    void setScrubFrame(const QImage& frame);

    QPointer<VideoShelf> m_shelf;
    QString m_url;
    QString m_stamp;
    bool m_complete = false;
    std::unique_ptr<Background> m_length;
    double m_duration = 0;
    QImage m_scrubFrame;
    bool m_scrubbing = false;
    std::optional<double> m_next;
};

} // namespace quillary
