#pragma once

#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>
#include <optional>

namespace quillary::platform {

/// The desktop's settings of appearance, read from the Settings portal without waiting for it. Main thread.
class PortalManners : public QObject {
    Q_OBJECT

public:
    struct Manners {
        bool light = false;
        bool reducedMotion = false;
        bool operator==(const Manners&) const = default;
    };

    PortalManners();

    /// What has been answered so far.
    Manners current();

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void takeAnswer();

    std::optional<QDBusPendingCall> m_answer;
    QMap<QString, QVariantMap> m_settings;
};

/// What the portal's groups of settings mean.
PortalManners::Manners mannersOf(const QMap<QString, QVariantMap>& settings);

} // namespace quillary::platform
