#include "panel/FileActions.h"

#include "base/FileUrl.h"
#include "base/Text.h"
#include "base/Translation.h"
#include "imaging/ImageIntake.h"
#include "imaging/PngEncoder.h"
#include "library/Storage.h"
#include "platform/Clipboard.h"
#include "platform/FileAttributes.h"
#include "platform/FileManager.h"
#include "platform/OpenFile.h"

#include <QFile>

namespace quillary {

namespace fs = std::filesystem;

namespace {

/// A PNG file's own bytes, or those of the picture made of another; empty for what is no picture.
QByteArray pngOf(const fs::path& file, int longEdge, const std::stop_token& stop) {
    if (!Storage::isReadableImage(file)) return {};
    QFile contents;
    if (platform::openForReading(contents, file) && contents.peek(8) == "\x89PNG\r\n\x1a\n") return contents.readAll();
    const auto image = ImageIntake::read(file, longEdge, stop);
    return image ? pngData(image->image, stop) : QByteArray();
}

} // namespace

FileActions::FileActions(Services with, QObject* parent)
    : QObject(parent), m_with(std::move(with)), m_copying(m_with.work) {}

std::vector<fs::path> FileActions::present(const QStringList& urls) const {
    std::vector<fs::path> files;
    for (const QString& url : urls) {
        const auto file = pathOfFileUrl(url.toUtf8());
        std::error_code missing;
        if (file && fs::exists(*file, missing))
            files.push_back(*file);
        else if (file)
            m_with.tell(translate("Shelf", "“%1” is not there any more").arg(shown(file->filename())));
    }
    return files;
}

void FileActions::copy(const QStringList& urls) {
    const auto files = present(urls);
    if (files.empty()) return;
    m_copying.run(
        [files, longEdge = m_with.longEdge()](const std::stop_token& stop) {
            return files.size() == 1 ? pngOf(files.front(), longEdge, stop) : QByteArray();
        },
        [this, files](const QByteArray& png) { m_with.clipboard.offerFiles(files, png); });
}

void FileActions::copyPath(const QStringList& urls) {
    QStringList paths;
    for (const fs::path& file : present(urls)) paths.append(shown(file));
    if (!paths.isEmpty()) m_with.clipboard.offerText(paths.join(u'\n'));
}

void FileActions::copyCredits(const QStringList& urls) {
    QStringList credits;
    const auto files = present(urls);
    for (const fs::path& file : files) {
        const QString credit = creditOf(shownStem(file), platform::webOrigin(file));
        if (!credit.isEmpty()) credits += credit;
    }
    if (!credits.isEmpty())
        m_with.clipboard.offerText(credits.join(u'\n'));
    else if (!files.empty())
        m_with.tell(tr("Nothing is known of where this came from"));
}

void FileActions::showInFiles(const QStringList& urls) {
    const auto files = present(urls);
    if (!files.empty()) m_with.fileManager.show(files);
}

} // namespace quillary
