#include "platform/linux/PortalFileChooser.h"

#include "base/FileUrl.h"
#include "platform/linux/SessionBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

namespace quillary::platform {

/// A line of the chooser's list of filters, as the portal has it.
struct PortalFilter {
    struct Pattern {
        uint kind = 0; ///< 0: a pattern of names
        QString names;
    };
    QString name;
    QList<Pattern> patterns;
};

QDBusArgument& operator<<(QDBusArgument& to, const PortalFilter::Pattern& pattern) {
    to.beginStructure();
    to << pattern.kind << pattern.names;
    to.endStructure();
    return to;
}
const QDBusArgument& operator>>(const QDBusArgument& from, PortalFilter::Pattern& pattern) {
    from.beginStructure();
    from >> pattern.kind >> pattern.names;
    from.endStructure();
    return from;
}
QDBusArgument& operator<<(QDBusArgument& to, const PortalFilter& filter) {
    to.beginStructure();
    to << filter.name << filter.patterns;
    to.endStructure();
    return to;
}
const QDBusArgument& operator>>(const QDBusArgument& from, PortalFilter& filter) {
    from.beginStructure();
    from >> filter.name >> filter.patterns;
    from.endStructure();
    return from;
}

namespace {

/// Matches the extension whatever its case.
QString namesWith(const QString& extension) {
    QString names = QStringLiteral("*.");
    for (const QChar letter : extension)
        names += letter.isLetter() ? QStringLiteral("[%1%2]").arg(letter.toLower(), letter.toUpper()) : QString(letter);
    return names;
}

QList<PortalFilter> filtersFor(const FileChooser::Question& question) {
    PortalFilter wanted{question.filter, {}};
    for (const QString& extension : question.extensions) wanted.patterns.append({0, namesWith(extension)});
    return {wanted, {QStringLiteral("All files"), {{0, QStringLiteral("*")}}}};
}

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
        {QStringLiteral("directory"), m_question.kind == FileChooser::Kind::folder || m_question.kind == FileChooser::Kind::folders},
        {QStringLiteral("multiple"), m_question.kind == FileChooser::Kind::files || m_question.kind == FileChooser::Kind::folders},
    };
    if (!m_question.extensions.isEmpty()) {
        qDBusRegisterMetaType<PortalFilter::Pattern>();
        qDBusRegisterMetaType<QList<PortalFilter::Pattern>>();
        qDBusRegisterMetaType<PortalFilter>();
        qDBusRegisterMetaType<QList<PortalFilter>>();
        options.insert(QStringLiteral("filters"), QVariant::fromValue(filtersFor(m_question)));
    }
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
