#include "platform/ItemProvider.h"

#include "base/FileUrl.h"
#include "platform/UniformTypes.h"

#include <algorithm>
#include <system_error>

namespace quillary::platform {

namespace fs = std::filesystem;

namespace {

QString typeOfContent(const fs::path& file) {
    std::error_code ignored;
    const auto kind = fs::status(file, ignored).type();
    if (kind == fs::file_type::directory) return QStringLiteral("inode/directory");
    if (kind == fs::file_type::regular) return contentType(file);
    return QStringLiteral("application/octet-stream");
}

} // namespace

ItemProvider ItemProvider::file(const fs::path& url) {
    ItemProvider item;
    item.m_fileURL = url;
    item.m_types += typeOfContent(url);
    item.registerData(QStringLiteral("text/uri-list"), fileUrl(url) + "\r\n");
    return item;
}

void ItemProvider::registerData(const QString& type, const QByteArray& data) {
    if (!m_types.contains(type)) m_types += type;
    m_data.insert(type, data);
}

bool ItemProvider::hasItemConforming(const QString& type) const {
    return std::ranges::any_of(m_types, [&](const QString& offered) { return conforms(offered, type); });
}

std::optional<QByteArray> ItemProvider::data(const QString& type) const {
    if (const auto found = m_data.find(type); found != m_data.end()) return *found;
    const QString meant = mimeName(type);
    for (const QString& offered : m_types) {
        const auto found = m_data.find(offered);
        if (found != m_data.end() && mimeName(offered) == meant) return *found;
    }
    return {};
}

} // namespace quillary::platform
