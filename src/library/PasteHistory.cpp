#include "library/PasteHistory.h"

#include "base/Text.h"
#include "base/Try.h"
#include "imaging/ImageIntake.h"
#include "imaging/PngEncoder.h"
#include "platform/OpenFile.h"
#include "platform/OpenFolder.h"
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
        return {{u"kind"_s, u"file"_s}, {u"value"_s, shown(file.url)}};
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
    QFile file;
    const auto opened = platform::openForReading(file, entry / factsName);
    return opened ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

PastedImage::Source source(const QJsonObject& told, const fs::path& picture) {
    const QString kind = told["kind"_L1].toString();
    const QString value = told["value"_L1].toString();
    if (kind == u"vector") return PastedImage::RasterizedVector{value};
    if (kind == u"bitmap") return PastedImage::Bitmap{value};
    return PastedImage::File{value.isEmpty() ? picture : pathOf(value)};
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
    auto file = platform::PendingFile::holding(folder, bytes);
    return file && file->placeAs(name);
}

bool copy(const fs::path& from, const fs::path& folder, const char* name) {
    auto file = platform::PendingFile::create(folder);
    return file && file->copyFrom(from) && file->placeAs(name);
}

std::string contentName(const fs::path& file) {
    QFile contents;
    QCryptographicHash hash(QCryptographicHash::Sha1);
    const bool hashed = platform::openForReading(contents, file) && hash.addData(&contents);
    return hashed ? hash.result().toHex().toStdString() : std::string();
}

/// The folders of the entries, those that are being made or taken away left out: the newest first.
std::vector<fs::path> newestFirst(const fs::path& history) {
    std::vector<std::pair<fs::file_time_type, fs::path>> dated;
    for (fs::path& entry : platform::visibleEntries(history)) {
        std::error_code failed;
        dated.emplace_back(fs::last_write_time(entry, failed), std::move(entry));
    }
    std::ranges::sort(dated, std::greater());
    std::vector<fs::path> entries;
    for (auto& [time, entry] : dated) entries.push_back(std::move(entry));
    return entries;
}

} // namespace

PasteHistory::PasteHistory(const fs::path& cacheFolder)
    : m_folder(cacheFolder.empty() ? fs::path() : cacheFolder / "quillary" / "history") {}

std::vector<PasteHistory::Entry> PasteHistory::entries() const {
    std::vector<Entry> newest;
    for (const fs::path& folder : newestFirst(m_folder)) {
        const QJsonObject known = factsIn(folder);
        if (!known.isEmpty()) newest.push_back({folder, known["name"_L1].toString()});
        if (newest.size() == most) break;
    }
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
    for (const fs::path& entry : platform::visibleEntries(m_folder)) count += discard(entry);
    return count;
}

void PasteHistory::prune() const {
    const std::vector<fs::path> kept = newestFirst(m_folder);
    for (std::size_t i = most; i < kept.size(); ++i) discard(kept[i]);
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
