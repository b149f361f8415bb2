#include "platform/linux/ToolkitPasteboard.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMimeData>
#include <QThread>
#include <chrono>
#include <future>

namespace quillary::platform {

namespace {

constexpr std::chrono::seconds patienceWithMainThread(5);

QStringList typesNow() {
    const QMimeData* contents = QGuiApplication::clipboard()->mimeData();
    return contents ? offeredTypes(*contents) : QStringList();
}

} // namespace

/// What the main thread reads with, alive as long as a question may still reach it.
struct ToolkitPasteboard::Reading {
    QStringList offered;
    MimeReader reader;

    std::optional<QByteArray> now(const QString& type) {
        const QMimeData* contents = QGuiApplication::clipboard()->mimeData();
        if (!contents || offeredTypes(*contents) != offered) return {};
        return reader.read(*contents, type);
    }
};

ToolkitPasteboard::ToolkitPasteboard()
    : m_types(typesNow()), m_reading(std::make_shared<Reading>(m_types, MimeReader())) {}

ToolkitPasteboard::~ToolkitPasteboard() = default;

std::optional<QByteArray> ToolkitPasteboard::data(const QString& type) {
    const auto spelling = offeredSpelling(m_types, type);
    if (!spelling || m_gaveUp) return {};
    auto* application = QCoreApplication::instance();
    if (!application) return {};
    if (QThread::currentThread() == application->thread()) return m_reading->now(*spelling);

    const auto answer = std::make_shared<std::promise<std::optional<QByteArray>>>();
    auto coming = answer->get_future();
    QMetaObject::invokeMethod(
        application, [reading = m_reading, answer, wanted = *spelling] { answer->set_value(reading->now(wanted)); },
        Qt::QueuedConnection);
    m_gaveUp = coming.wait_for(patienceWithMainThread) != std::future_status::ready;
    if (m_gaveUp) return {};
    return coming.get();
}

} // namespace quillary::platform
