#include "platform/linux/PortalFileChooser.h"

#include "base/FileUrl.h"
#include "platform/linux/SessionBus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

namespace quillary::platform {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.FileChooser");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

/// Where the portal's answer will be told, by its rules.
QString requestPath(const QDBusConnection& bus, const QString& token) {
    QString sender = bus.baseService().sliced(1);
    sender.replace(u'.', u'_');
    return path + QStringLiteral("/request/") + sender + u'/' + token;
}

class PortalFileChooser final : public FileChooser {
public:
    explicit PortalFileChooser(FileChooser& otherwise) : m_otherwise(otherwise) {}

    void ask(QObject* context, const Question& question, Answer answer) override {
        (new PortalRequest(context, m_otherwise, question, std::move(answer)))->send();
    }

private:
    FileChooser& m_otherwise;
};

} // namespace

PortalRequest::PortalRequest(QObject* context, FileChooser& otherwise, FileChooser::Question question,
                             FileChooser::Answer answer)
    : QObject(context), m_otherwise(otherwise), m_question(std::move(question)), m_answer(std::move(answer)) {}

void PortalRequest::send() {
    static int asked = 0;
    auto bus = sessionBus();
    if (!bus) return askOtherwise();
    const QString token = QStringLiteral("quillary%1").arg(++asked);
    // Any sender: naming the service would make the library look it up, and wait.
    bus->connect(QString(), requestPath(*bus, token), requestInterface, QStringLiteral("Response"), this,
                 SLOT(response(uint, QVariantMap)));
    QVariantMap options{
        {QStringLiteral("handle_token"), token},
        {QStringLiteral("accept_label"), m_question.accept},
        {QStringLiteral("modal"), true},
        {QStringLiteral("directory"), m_question.kind == FileChooser::Kind::folder},
        {QStringLiteral("multiple"), m_question.kind == FileChooser::Kind::files},
    };
    if (!m_question.start.empty())
        options.insert(QStringLiteral("current_folder"), QByteArray(m_question.start.c_str()) + '\0');
    auto call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("OpenFile"));
    call << QString() << m_question.message.simplified() << options;
    auto* watcher = new QDBusPendingCallWatcher(bus->asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (watcher->isError()) askOtherwise();
    });
}

void PortalRequest::askOtherwise() {
    deleteLater();
    m_otherwise.ask(parent(), m_question, std::move(m_answer));
}

void PortalRequest::response(uint code, const QVariantMap& results) {
    deleteLater();
    std::vector<std::filesystem::path> picked;
    if (code == 0)
        for (const QString& uri : results.value(QStringLiteral("uris")).toStringList())
            if (auto file = pathOfFileUrl(uri.toUtf8())) picked.push_back(*std::move(file));
    if (m_answer) std::exchange(m_answer, {})(picked);
}

std::unique_ptr<FileChooser> systemFileChooser(FileChooser& otherwise) {
    return std::make_unique<PortalFileChooser>(otherwise);
}

} // namespace quillary::platform
