#include "library/PasteHistory.h"

#include "base/Text.h"
#include "base/Try.h"
#include "imaging/ImageIntake.h"
#include "imaging/PngEncoder.h"
#include "platform/PendingFile.h"
#include "platform/PendingFolder.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace {

constexpr auto factsName = "picture.json";

struct FactsOfSource {
    QJsonObject operator()(const PastedImage::File& file) const {
        return {{u"kind"_s, u"file"_s}, {u"value"_s, QFile::decodeName(file.url.c_str())}};
    }
    QJsonObject operator()(const PastedImage::RasterizedVector& vector) const {
        return {{u"kind"_s, u"vector"_s}, {u"value"_s, vector.origin}};
    }
    QJsonObject operator()(const PastedImage::Bitmap& bitmap) const {
        return {{u"kind"_s, u"bitmap"_s}, {u"value"_s, bitmap.type}};
    }
};

QByteArray facts(const PastedImage& image) {
    QJsonObject object{{u"name"_s, image.name},
                       {u"format"_s, image.formatLabel},
                       {u"alpha"_s, image.hasAlphaChannel},
                       {u"source"_s, std::visit(FactsOfSource{}, image.source)},
                       {u"page"_s, image.webOrigin.page},
                       {u"address"_s, image.webOrigin.address}};
    if (image.sourceBytes) object[u"bytes"_s] = *image.sourceBytes;
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QJsonObject factsIn(const fs::path& entry) {
    QFile file(entry / factsName);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

PastedImage::Source source(const QJsonObject& told, const fs::path& picture) {
    const QString kind = told["kind"_L1].toString();
    const QString value = told["value"_L1].toString();
    if (kind == u"vector") return PastedImage::RasterizedVector{value};
    if (kind == u"bitmap") return PastedImage::Bitmap{value};
    return PastedImage::File{value.isEmpty() ? picture : fs::path(QFile::encodeName(value).toStdString())};
}

QImage preview(const QImage& image) {
    const QSize small = image.size().scaled(PasteHistory::previewSide, PasteHistory::previewSide, Qt::KeepAspectRatio);
    // A large picture is thinned out before it is smoothed.
    const QSize thinned = small * 4;
    const bool large = image.width() > thinned.width() && image.height() > thinned.height();
    const QImage source = large ? image.scaled(thinned) : image;
    return source.scaled(small.expandedTo({1, 1}).boundedTo(image.size()), Qt::IgnoreAspectRatio,
                         Qt::SmoothTransformation);
}

bool write(const fs::path& folder, const char* name, const QByteArray& bytes) {
    auto file = platform::PendingFile::create(folder);
    return file && file->write(std::as_bytes(std::span(bytes.constData(), bytes.size()))) && file->placeAs(name);
}

bool copy(const fs::path& from, const fs::path& folder, const char* name) {
    auto file = platform::PendingFile::create(folder);
    return file && file->copyFrom(from) && file->placeAs(name);
}

std::string contentName(const fs::path& file) {
    QFile contents(file);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    return contents.open(QIODevice::ReadOnly) && hash.addData(&contents) ? hash.result().toHex().toStdString()
                                                                         : std::string();
}

/// Being made or taken away.
bool isHidden(const fs::path& entry) {
    return entry.filename().native().starts_with('.');
}

} // namespace

PasteHistory::PasteHistory(const fs::path& cacheFolder)
    : m_folder(cacheFolder.empty() ? fs::path() : cacheFolder / "quillary" / "history") {}

std::vector<PasteHistory::Entry> PasteHistory::entries() const {
    std::vector<std::pair<fs::file_time_type, Entry>> found;
    std::error_code failed;
    for (const auto& folder : fs::directory_iterator(m_folder, failed)) {
        if (isHidden(folder.path())) continue;
        const QJsonObject known = factsIn(folder.path());
        if (!known.isEmpty())
            found.push_back({folder.last_write_time(failed), {folder.path(), known["name"_L1].toString()}});
    }
    std::ranges::sort(found, std::greater(), &std::pair<fs::file_time_type, Entry>::first);
    std::vector<Entry> newest;
    for (auto& [time, entry] : found)
        if (newest.size() < most) newest.push_back(std::move(entry));
    return newest;
}

void PasteHistory::keep(const PastedImage& image, const fs::path& png) const {
    if (!m_folder.is_absolute() || image.image.isNull() || !platform::createFolders(m_folder)) return;
    std::error_code failed;
    // Others may not look at what was pasted.
    fs::permissions(m_folder, fs::perms::owner_all, failed);
    auto pending = platform::PendingFolder::create(m_folder);
    if (!pending) return;
    const fs::path& making = pending->path();
    const bool made =
        png.empty() ? write(making, "picture.png", pngData(image.image)) : copy(png, making, "picture.png");
    const std::string name = made ? contentName(making / "picture.png") : std::string();
    if (!name.empty() && write(making, "preview.png", pngData(preview(image.image))) &&
        write(making, factsName, facts(image))) {
        static_cast<void>(pending->placeAs(name)); // unless it is there already
        fs::last_write_time(m_folder / name, fs::file_time_type::clock::now(), failed);
    }
    prune();
}

std::expected<PastedImage, ImageIntakeError> PasteHistory::read(const Entry& entry, std::stop_token stop) const {
    const QJsonObject known = factsIn(entry.folder);
    PastedImage image = TRY(ImageIntake::read(entry.picture(), 0, std::move(stop)));
    if (known.isEmpty()) return image;
    image.name = known["name"_L1].toString();
    image.formatLabel = known["format"_L1].toString();
    image.hasAlphaChannel = known["alpha"_L1].toBool();
    image.source = source(known["source"_L1].toObject(), entry.picture());
    image.webOrigin = {webAddress(known["page"_L1].toString()), webAddress(known["address"_L1].toString())};
    const QJsonValue bytes = known["bytes"_L1];
    image.sourceBytes = bytes.isDouble() ? std::optional(bytes.toInteger()) : std::nullopt;
    return image;
}

int PasteHistory::clear() const {
    int count = 0;
    std::error_code failed;
    std::vector<fs::path> all;
    for (const auto& folder : fs::directory_iterator(m_folder, failed))
        if (!isHidden(folder.path())) all.push_back(folder.path());
    for (const fs::path& entry : all) count += discard(entry);
    return count;
}

void PasteHistory::prune() const {
    std::vector<std::pair<fs::file_time_type, fs::path>> kept;
    std::error_code failed;
    for (const auto& folder : fs::directory_iterator(m_folder, failed))
        if (!isHidden(folder.path())) kept.emplace_back(folder.last_write_time(failed), folder.path());
    std::ranges::sort(kept, std::greater());
    for (std::size_t i = most; i < kept.size(); ++i) discard(kept[i].second);
    platform::removeAbandonedFiles(m_folder);
}

/// Out of sight in one step, then away; false when another process was first.
bool PasteHistory::discard(const fs::path& entry) const {
    std::error_code failed;
    const auto leaving = platform::PendingFolder::create(m_folder);
    if (leaving) fs::rename(entry, leaving->path() / "entry", failed);
    return leaving && !failed;
}

} // namespace quillary
