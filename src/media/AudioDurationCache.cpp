#include "media/AudioDurationCache.h"

#include "media/MediaLength.h"
#include "platform/PendingFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cmath>
#include <sys/stat.h>

namespace quillary {

namespace {

/// Keys are text, so a path that is none cannot be kept.
bool isText(const std::filesystem::path& url) {
    const auto bytes = QByteArrayView(url.native().data(), static_cast<qsizetype>(url.native().size()));
    return bytes.isValidUtf8();
}

} // namespace

QByteArray AudioDurationCache::key(const std::filesystem::path& url) {
    struct stat status {};
    const qint64 seconds = ::stat(url.c_str(), &status) == 0 ? status.st_mtim.tv_sec : 0;
    return QByteArray::fromStdString(url.native()) + '\x01' + QByteArray::number(seconds);
}

AudioDurationCache::Durations AudioDurationCache::load(std::span<const FileLocation> urls) const {
    Durations found;
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly)) return found;
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

AudioDurationCache::Durations AudioDurationCache::read(std::span<const FileLocation> urls,
                                                       std::stop_token stop) {
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
    auto pending = platform::PendingFile::create(m_file.parent_path());
    return pending &&
           pending->write(std::as_bytes(std::span(text.constData(), static_cast<std::size_t>(text.size())))) &&
           pending->replace(m_file);
}

} // namespace quillary
