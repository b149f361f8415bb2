#include "platform/Desktop.h"
#include "support/EventLoop.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <gtest/gtest.h>

using namespace quillary;
using platform::Desktop;
using Settings = QMap<QString, QVariantMap>;

namespace {

const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString appearance = QStringLiteral("org.freedesktop.appearance");

} // namespace

/// The part of a desktop portal that the panel asks, on a connection of its own.
class FakePortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    FakePortal() {
        qDBusRegisterMetaType<Settings>();
        m_bus.registerObject(path, this, QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    ~FakePortal() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    Settings settings;
    bool answers = true;
    int asked = 0;

public Q_SLOTS:
    QMap<QString, QVariantMap> ReadAll(const QStringList&, const QDBusMessage& message) {
        ++asked;
        if (!answers) message.setDelayedReply(true);
        return settings;
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("fake portal"));
};

TEST(Portal, TellsColoursAndMotionAndTheirChanges) {
    FakePortal portal;
    portal.settings[appearance] = {{QStringLiteral("color-scheme"), 2U}, {QStringLiteral("reduced-motion"), 1U}};
    const auto desktop = platform::systemDesktop();
    int changes = 0;
    QObject context;
    desktop->watchManners(&context, [&] { ++changes; });
    EXPECT_TRUE(test::comesTrue([&] { return desktop->colorScheme() == Desktop::ColorScheme::light; }));
    EXPECT_TRUE(desktop->prefersReducedMotion());
    EXPECT_TRUE(test::comesTrue([&] { return changes == 1; }));

    Q_EMIT portal.SettingChanged(appearance, QStringLiteral("color-scheme"), QDBusVariant(1U));
    EXPECT_TRUE(test::comesTrue([&] { return changes == 2; }));
    EXPECT_EQ(desktop->colorScheme(), Desktop::ColorScheme::dark);
    Q_EMIT portal.SettingChanged(appearance, QStringLiteral("accent-color"), QDBusVariant(1U));
    Q_EMIT portal.SettingChanged(appearance, QStringLiteral("reduced-motion"), QDBusVariant(0U));
    EXPECT_TRUE(test::comesTrue([&] { return !desktop->prefersReducedMotion(); }));
    EXPECT_EQ(changes, 3) << "what the panel does not ask for is no change";
}

TEST(Portal, IsNotWaitedFor) {
    for (const bool present : {false, true}) {
        std::unique_ptr<FakePortal> portal;
        if (present) {
            portal = std::make_unique<FakePortal>();
            portal->answers = false;
        }
        QElapsedTimer watch;
        watch.start();
        const auto desktop = platform::systemDesktop();
        EXPECT_EQ(desktop->colorScheme(), Desktop::ColorScheme::dark);
        EXPECT_FALSE(desktop->prefersReducedMotion());
        EXPECT_LT(watch.elapsed(), 200);
        EXPECT_TRUE(test::comesTrue([&] { return !portal || portal->asked == 1; }));
        EXPECT_EQ(desktop->colorScheme(), Desktop::ColorScheme::dark);
    }
}

#include "PortalTest.moc"
