#include "base/Text.h"
#include "base/Translation.h"
#include "base/Try.h"
#include "drag/DropReader.h"
#include "library/AppSettings.h"
#include "panel/PanelModel.h"
#include "platform/ItemProvider.h"
#include "platform/UniformTypes.h"

#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

namespace {

/// The best type under which a picture comes as data.
QString imageType(const platform::ItemProvider& item) {
    for (const QString& type : ImageIntake::bitmapPriority() + ImageIntake::vectorTypes())
        if (item.types().contains(type)) return type;
    const auto accepted = [](const QString& type) {
        return std::ranges::any_of(ImageIntake::acceptedFileTypes(),
                                   [&](const QString& kind) { return platform::conforms(type, kind); });
    };
    const auto picture = std::ranges::find_if(item.types(), accepted);
    return picture == item.types().end() ? QString() : *picture;
}

/// What whoever dragged it tells goes before what its file says.
PastedImage withOrigin(PastedImage image, const WebOrigin& told) {
    if (told.isKnown()) image.webOrigin = told;
    return image;
}

/// A picture that was dropped as data.
std::expected<PastedImage, QString> pictureIn(const platform::ItemProvider& item, int longEdge,
                                              const std::stop_token& stop) {
    const QString type = imageType(item);
    auto image = ImageIntake::read(item.data(type).value_or(QByteArray()),
                                   item.suggestedName().value_or(PastedImage::defaultName()), type, longEdge, stop);
    if (!image) return std::unexpected(translate("Panel", "Could not read that image."));
    return withOrigin(*std::move(image), item.webOrigin());
}

} // namespace

void PanelModel::handleDrop(const std::vector<platform::ItemProvider>& items) {
    const bool overLibrary = m_tab == Tab::library;
    // What is dropped on the shelf of sounds or clips is for that shelf.
    if (overLibrary && m_libraryKind == LibraryKind::audio) return m_audioShelf.saveAudio(items);
    if (overLibrary && m_libraryKind == LibraryKind::videos) return m_videoShelf.saveVideos(items);

    const auto [clips, others] = DropReader::split(items, &BlocksShelf::isClip);
    if (clips.empty() && overLibrary && m_libraryKind == LibraryKind::blocks) return m_blocksShelf.captureBlocks(items);
    if (clips.empty()) return takeFilesAndPictures(items);
    keepBlocks(clips);
    // What came beside the clips is filed by its kind.
    DropReader::fileURLs(others, this, [this](const std::vector<fs::path>& urls) {
        if (!urls.empty()) saveToLibrary(urls);
    });
}

void PanelModel::takeFilesAndPictures(const std::vector<platform::ItemProvider>& items) {
    const bool overImages = m_tab == Tab::library;
    switch (DropReader::contents(items)) {
    case DropReader::Contents::image:
        if (!overImages)
            stageDropped(items.front());
        else if (const auto& file = items.front().fileURL())
            saveToLibrary({*file});
        else
            saveDropped(items.front());
        break;
    case DropReader::Contents::batch:
        DropReader::fileURLs(items, this, [this](const std::vector<fs::path>& urls) { saveToLibrary(urls); });
        break;
    case DropReader::Contents::nothing: {
        const QString message = translate("Panel", "Nothing readable in that drop.");
        if (overImages)
            m_imagesShelf.setNote(message, Shelf::Tone::problem);
        else
            fail(message, translate("Panel", "Drop PNG, TIFF, JPEG, SVG or PDF files."));
        break;
    }
    }
}

void PanelModel::keepBlocks(const std::vector<platform::ItemProvider>& clips) {
    setTab(Tab::library);
    setLibraryKind(LibraryKind::blocks);
    m_blocksShelf.captureBlocks(clips);
}

void PanelModel::stageDropped(const platform::ItemProvider& item) {
    const int longEdge = m_settings.vectorLongEdge();
    if (item.fileURL()) {
        load([file = *item.fileURL(), longEdge, origin = item.webOrigin()](std::stop_token stop) -> State {
            auto image = ImageIntake::read(file, longEdge, stop);
            if (image) return withOrigin(*std::move(image), origin);
            if (image.error().kind == ImageIntakeError::Kind::lockedFile)
                return Failed{image.error().description(), image.error().recoverySuggestion()};
            return Failed{translate("Panel", "Could not read that file."),
                          translate("Panel", "Try a PNG, TIFF, JPEG, SVG or PDF.")};
        });
        return;
    }
    load([item, longEdge](std::stop_token stop) -> State {
        auto image = pictureIn(item, longEdge, stop);
        if (!image) return Failed{image.error(), std::nullopt};
        return *std::move(image);
    });
}

void PanelModel::saveDropped(const platform::ItemProvider& item) {
    saveInBackground([item, longEdge = m_settings.vectorLongEdge(),
                      collection = m_imagesShelf.collectionFilter().collection(),
                      &storage = m_storage]() -> std::expected<QString, QString> {
        const PastedImage image = TRY(pictureIn(item, longEdge, {}));
        const auto written = storage.write(image, Storage::Folder::images, collection);
        if (!written) return std::unexpected(written.error().description());
        return translate("Shelf", "%1 saved to your library").arg(shownStem(*written));
    });
}

} // namespace quillary
