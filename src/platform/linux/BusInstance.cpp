#include "platform/linux/BusInstance.h"

#include "platform/linux/SessionBus.h"

#include <QDBusMessage>
#include <utility>

namespace quillary::platform {

namespace {

const QString service = QStringLiteral("com.tamsel.quillary");
const QString path = QStringLiteral("/com/tamsel/quillary");
const QString interface = QStringLiteral("org.freedesktop.Application");
const QString tokenKey = QStringLiteral("activation-token");
const QString startupKey = QStringLiteral("desktop-startup-id");
const QString tabKey = QStringLiteral("tab");
const QString shelfKey = QStringLiteral("shelf");
constexpr int patience = 10'000; ///< ms

StartRequest requestOf(const QStringList& urls, const QVariantMap& details) {
    const QString token = details.value(tokenKey).toString();
    return {.urls = {urls.begin(), urls.end()},
            .tab = details.value(tabKey).toString(),
            .shelf = details.value(shelfKey).toString(),
            .activationToken = token.isEmpty() ? details.value(startupKey).toString() : token};
}

} // namespace

void BusApplication::Activate(const QVariantMap& details) {
    m_take(requestOf({}, details));
}

void BusApplication::Open(const QStringList& urls, const QVariantMap& details) {
    m_take(requestOf(urls, details));
}

// The program declares no actions; whoever asks for one gets the panel.
void BusApplication::ActivateAction(const QString&, const QVariantList&, const QVariantMap& details) {
    Activate(details);
}

BusInstance::BusInstance() : m_application([this](const StartRequest& request) { Q_EMIT requested(request); }) {}

BusInstance::~BusInstance() {
    BusInstance::release();
}

void BusInstance::release() {
    if (!std::exchange(m_claimed, false)) return;
    if (auto bus = sessionBus()) {
        bus->unregisterService(service);
        bus->unregisterObject(path);
    }
}

bool BusInstance::claim() {
    auto bus = sessionBus();
    if (!bus) return true;
    // The object first: whoever finds the name taken may call at once.
    bus->registerObject(path, &m_application, QDBusConnection::ExportAllSlots);
    m_claimed = bus->registerService(service);
    if (!m_claimed) bus->unregisterObject(path);
    return m_claimed;
}

bool BusInstance::handOver(const StartRequest& request) {
    const auto bus = sessionBus();
    if (!bus) return false;
    QVariantMap details;
    for (const auto& [key, value] : {std::pair(tabKey, request.tab), std::pair(shelfKey, request.shelf),
                                     std::pair(tokenKey, request.activationToken)})
        if (!value.isEmpty()) details.insert(key, value);
    auto call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Open"));
    call << QStringList(request.urls.begin(), request.urls.end()) << details;
    call.setAutoStartService(false);
    return bus->call(call, QDBus::Block, patience).type() == QDBusMessage::ReplyMessage;
}

std::unique_ptr<Instance> systemInstance() {
    return std::make_unique<BusInstance>();
}

} // namespace quillary::platform
