#include "platform/FileChooser.h"
#include "platform/FileManager.h"
#include "support/EventLoop.h"
#include "support/FakeFiles.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <gtest/gtest.h>

using namespace quillary;
using platform::FileChooser;

/// The desktop's chooser, answering as it is told.
class FakeChooserPortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileChooser")

public:
    FakeChooserPortal() {
        bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this, QDBusConnection::ExportAllSlots);
        bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    ~FakeChooserPortal() override { QDBusConnection::disconnectFromBus(bus.name()); }

    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("fake chooser"));
    uint code = 0;
    QStringList uris;
    QString title;
    QVariantMap options;

public Q_SLOTS:
    QDBusObjectPath OpenFile(const QString&, const QString& told, const QVariantMap& wanted,
                             const QDBusMessage& message) {
        title = told;
        options = wanted;
        QString sender = message.service().sliced(1);
        sender.replace(u'.', u'_');
        const QString request = QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2")
                                    .arg(sender, wanted.value(QStringLiteral("handle_token")).toString());
        auto answer = QDBusMessage::createSignal(request, QStringLiteral("org.freedesktop.portal.Request"),
                                                 QStringLiteral("Response"));
        answer << code << QVariantMap{{QStringLiteral("uris"), uris}};
        bus.send(answer);
        return QDBusObjectPath(request);
    }
};

class FakeFileManagerService : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    FakeFileManagerService() {
        bus.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), this, QDBusConnection::ExportAllSlots);
        bus.registerService(QStringLiteral("org.freedesktop.FileManager1"));
    }
    ~FakeFileManagerService() override { QDBusConnection::disconnectFromBus(bus.name()); }

    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("fake files"));
    QStringList shown;

public Q_SLOTS:
    void ShowItems(const QStringList& uris, const QString&) { shown = uris; }
};

TEST(FilesPortal, AsksTheDesktopForAFolder) {
    FakeChooserPortal portal;
    portal.uris = {QStringLiteral("file:///drive/a%20b%C3%BC")};
    test::FakeFileChooser otherwise;
    const auto chooser = platform::systemFileChooser(otherwise);
    QObject context;
    std::vector<std::filesystem::path> picked;
    int answers = 0;
    const auto answer = [&](const std::vector<std::filesystem::path>& files) {
        picked = files;
        ++answers;
    };
    const FileChooser::Question question{
        .message = QStringLiteral("Choose a\n\nfolder"), .accept = QStringLiteral("Use"), .start = "/tmp"};
    chooser->ask(&context, question, answer);
    ASSERT_TRUE(test::comesTrue([&] { return answers == 1; }));
    EXPECT_EQ(picked, std::vector<std::filesystem::path>{"/drive/a b\xc3\xbc"});
    EXPECT_EQ(portal.title, QStringLiteral("Choose a folder"));
    EXPECT_TRUE(portal.options.value(QStringLiteral("directory")).toBool());
    EXPECT_EQ(portal.options.value(QStringLiteral("accept_label")), QStringLiteral("Use"));
    EXPECT_EQ(portal.options.value(QStringLiteral("current_folder")).toByteArray(), QByteArray("/tmp\0", 5));

    portal.code = 1;
    chooser->ask(&context, question, answer);
    ASSERT_TRUE(test::comesTrue([&] { return answers == 2; }));
    EXPECT_TRUE(picked.empty()) << "called off";
    EXPECT_FALSE(otherwise.asked());
}

TEST(FilesPortal, AsksForFilesOfOneKind) {
    FakeChooserPortal portal;
    portal.uris = {QStringLiteral("file:///a.png"), QStringLiteral("file:///b.SVG")};
    test::FakeFileChooser otherwise;
    const auto chooser = platform::systemFileChooser(otherwise);
    QObject context;
    std::vector<std::filesystem::path> picked;
    chooser->ask(&context,
                 {.kind = FileChooser::Kind::files,
                  .accept = QStringLiteral("Import"),
                  .filter = QStringLiteral("Images"),
                  .extensions = {QStringLiteral("png"), QStringLiteral("mp3")}},
                 [&](const std::vector<std::filesystem::path>& files) { picked = files; });
    ASSERT_TRUE(test::comesTrue([&] { return picked.size() == 2; }));
    EXPECT_EQ(picked.back(), "/b.SVG");
    EXPECT_TRUE(portal.options.value(QStringLiteral("multiple")).toBool());
    EXPECT_FALSE(portal.options.value(QStringLiteral("directory")).toBool());

    // As the portal's rules have it: a(sa(us)).
    const auto filters = portal.options.value(QStringLiteral("filters")).value<QDBusArgument>();
    EXPECT_EQ(filters.currentSignature(), QStringLiteral("a(sa(us))"));
    QStringList found;
    filters.beginArray();
    while (!filters.atEnd()) {
        QString name;
        filters.beginStructure();
        filters >> name;
        found += name;
        filters.beginArray();
        while (!filters.atEnd()) {
            uint kind = 7;
            QString pattern;
            filters.beginStructure();
            filters >> kind >> pattern;
            filters.endStructure();
            EXPECT_EQ(kind, 0U);
            found += pattern;
        }
        filters.endArray();
        filters.endStructure();
    }
    EXPECT_EQ(found.join(u' '), QStringLiteral("Images *.[pP][nN][gG] *.[mM][pP]3 All files *"));

    chooser->ask(&context, {.kind = FileChooser::Kind::file}, [&](const auto&) { picked.clear(); });
    ASSERT_TRUE(test::comesTrue([&] { return picked.empty(); }));
    EXPECT_FALSE(portal.options.value(QStringLiteral("multiple")).toBool());
    EXPECT_FALSE(portal.options.contains(QStringLiteral("filters")));

    portal.uris = {QStringLiteral("file:///graphics"), QStringLiteral("file:///sounds")};
    chooser->ask(&context, {.kind = FileChooser::Kind::folders}, [&](const auto& folders) { picked = folders; });
    ASSERT_TRUE(test::comesTrue([&] { return picked.size() == 2; }));
    EXPECT_TRUE(portal.options.value(QStringLiteral("multiple")).toBool());
    EXPECT_TRUE(portal.options.value(QStringLiteral("directory")).toBool());
}

TEST(FilesPortal, AsksOtherwiseWithoutADesktopsChooser) {
    test::FakeFileChooser otherwise;
    const auto chooser = platform::systemFileChooser(otherwise);
    QObject context;
    chooser->ask(&context, {.accept = QStringLiteral("Use")}, [](const auto&) {});
    EXPECT_TRUE(test::comesTrue([&] { return otherwise.asked(); }));
    EXPECT_EQ(otherwise.question.accept, QStringLiteral("Use"));
}

TEST(FilesPortal, ShowsFilesInTheDesktopsProgram) {
    FakeFileManagerService service;
    platform::systemFileManager()->show({});
    const auto manager = platform::systemFileManager();
    manager->show({"/a b/c.png", "/a b/d.png"});
    ASSERT_TRUE(test::comesTrue([&] { return !service.shown.isEmpty(); }));
    EXPECT_EQ(service.shown,
              (QStringList{QStringLiteral("file:///a%20b/c.png"), QStringLiteral("file:///a%20b/d.png")}));
}

#include "FilesPortalTest.moc"
