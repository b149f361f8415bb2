#include "platform/linux/PortalManners.h"

#include "platform/linux/SessionBus.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace quillary::platform {

namespace {

using Settings = QMap<QString, QVariantMap>;

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString gnomeInterface = QStringLiteral("org.gnome.desktop.interface");
constexpr int patienceInMilliseconds = 2000;

} // namespace

PortalManners::Manners mannersOf(const QMap<QString, QVariantMap>& settings) {
    constexpr uint preferLight = 2;
    const QVariantMap common = settings.value(appearance);
    const QVariantMap gnome = settings.value(gnomeInterface);
    PortalManners::Manners manners;
    manners.light = common.value(QStringLiteral("color-scheme")).toUInt() == preferLight;
    manners.reducedMotion = common.value(QStringLiteral("reduced-motion")).toUInt() != 0 ||
                            !gnome.value(QStringLiteral("enable-animations"), true).toBool();
    return manners;
}

PortalManners::PortalManners() {
    auto bus = sessionBus();
    if (!bus) return;
    qDBusRegisterMetaType<Settings>();
    // The library looks a slot's types up by name, and knows its own only from their first use on.
    qRegisterMetaType<QDBusVariant>();
    // Any sender: naming the service would make the library look it up, and wait.
    bus->connect(QString(), path, interface, QStringLiteral("SettingChanged"), this,
                 SLOT(settingChanged(QString, QString, QDBusVariant)));
    auto question = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("ReadAll"));
    question << QStringList{appearance, gnomeInterface};
    m_answer = bus->asyncCall(question, patienceInMilliseconds);
    auto* watcher = new QDBusPendingCallWatcher(*m_answer, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        takeAnswer();
        if (current() != Manners()) Q_EMIT changed();
    });
}

PortalManners::Manners PortalManners::current() {
    // The answer may have arrived although the event loop has not told of it yet.
    if (m_answer && m_answer->isFinished()) takeAnswer();
    return mannersOf(m_settings);
}

void PortalManners::takeAnswer() {
    if (!m_answer) return;
    const QDBusPendingReply<Settings> reply = *m_answer;
    m_answer.reset();
    if (reply.isValid()) m_settings = reply.value();
}

void PortalManners::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    const Manners before = current();
    m_settings[group].insert(key, value.variant());
    if (current() != before) Q_EMIT changed();
}

} // namespace quillary::platform
