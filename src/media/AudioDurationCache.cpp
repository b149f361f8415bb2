#include "media/AudioDurationCache.h"

#include "media/MediaLength.h"
#include "platform/FileAttributes.h"
#include "platform/OpenFile.h"
#include "platform/PendingFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cmath>

namespace quillary {

namespace {

/// Keys are text, so a path that is none cannot be kept.
bool isText(const std::filesystem::path& url) {
    const auto bytes = QByteArrayView(url.native().data(), static_cast<qsizetype>(url.native().size()));
    return bytes.isValidUtf8();
}

} // namespace

QByteArray AudioDurationCache::key(const std::filesystem::path& url) {
    const auto stamp = platform::fileStamp(url);
    const auto seconds = stamp ? std::chrono::floor<std::chrono::seconds>(stamp->modified) : std::chrono::sys_seconds();
    return QByteArray::fromStdString(url.native()) + '\x01' +
           QByteArray::number(qint64(seconds.time_since_epoch().count()));
}

AudioDurationCache::Durations AudioDurationCache::load(std::span<const FileLocation> urls) const {
    Durations found;
    QFile file;
    if (!platform::openForReading(file, m_file)) return found;
    const QJsonObject known = QJsonDocument::fromJson(file.readAll()).object();
    if (known.isEmpty()) return found;
    for (const FileLocation& url : urls) {
        const std::filesystem::path path = url;
        if (!isText(path)) continue;
        const QJsonValue seconds = known.value(QString::fromUtf8(key(path)));
        if (seconds.isDouble() && seconds.toDouble() >= 0) found.emplace(url, seconds.toDouble());
    }
    return found;
}

AudioDurationCache::Durations AudioDurationCache::read(std::span<const FileLocation> urls, std::stop_token stop) {
    Durations found;
    for (const FileLocation& url : urls) {
        if (stop.stop_requested()) break;
        if (const auto seconds = media::audioLength(url, stop)) found.emplace(url, *seconds);
    }
    return found;
}

bool AudioDurationCache::save(const Durations& durations) const {
    QJsonObject object;
    for (const auto& [url, seconds] : durations) {
        const std::filesystem::path path = url;
        if (isText(path) && std::isfinite(seconds)) object.insert(QString::fromUtf8(key(path)), seconds);
    }
    const QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Compact);
    auto pending = platform::PendingFile::holding(m_file.parent_path(), text);
    return pending && pending->replace(m_file);
}

} // namespace quillary
