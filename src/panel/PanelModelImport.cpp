#include "base/Translation.h"
#include "drag/DropReader.h"
#include "library/AppSettings.h"
#include "panel/PanelModel.h"
#include "panel/PanelModelWriting.h"
#include "platform/FileChooser.h"
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

QStringList texts(std::span<const std::string_view> extensions) {
    QStringList list;
    for (const std::string_view extension : extensions)
        list.append(QString::fromLatin1(extension.data(), static_cast<qsizetype>(extension.size())));
    return list;
}

platform::FileChooser::Question importQuestion(PanelModel::LibraryKind kind) {
    platform::FileChooser::Question question{.kind = platform::FileChooser::Kind::files,
                                             .message = translate("Panel", "Choose images to add to your library."),
                                             .accept = translate("Panel", "Import"),
                                             .filter = PanelModel::label(kind)};
    switch (kind) {
    case PanelModel::LibraryKind::images:
        // The shelf's own, and the other kinds of pictures that become PNG on the way in.
        question.extensions = texts(Storage::extensions(Storage::Folder::images)) +
                              QStringLiteral("webp heic heif avif gif bmp ico tga").split(u' ');
        break;
    case PanelModel::LibraryKind::videos:
        question.message = translate("Panel", "Choose video files to add to your library.");
        question.extensions = texts(Storage::extensions(Storage::Folder::videos));
        break;
    case PanelModel::LibraryKind::audio:
        question.message = translate("Panel", "Choose sounds to add to your library.");
        question.extensions = texts(Storage::extensions(Storage::Folder::audio));
        break;
    case PanelModel::LibraryKind::blocks:
        question.message = translate("Panel", "Choose FCPXML documents to keep as blocks.");
        question.filter = QStringLiteral("FCPXML");
        question.extensions = texts(Storage::blockExtensions);
        break;
    }
    return question;
}

} // namespace

void PanelModel::handleDrop(const std::vector<platform::ItemProvider>& items) {
    // What is dropped on the shelf of sounds or clips is for that shelf.
    if (m_tab == Tab::library && m_libraryKind == LibraryKind::audio) return m_audioShelf.saveAudio(items);
    if (m_tab == Tab::library && m_libraryKind == LibraryKind::videos) return m_videoShelf.saveVideos(items);
    switch (DropReader::contents(items, &BlocksShelf::isClip)) {
    case DropReader::Contents::clips:
        keepBlocks(items);
        break;
    case DropReader::Contents::image:
        // Over the Images shelf a file goes onto the shelf, into the collection that is shown.
        if (m_tab == Tab::library && m_libraryKind == LibraryKind::images && items.front().fileURL())
            saveToLibrary({*items.front().fileURL()});
        else
            stageDropped(items.front());
        break;
    case DropReader::Contents::batch:
        DropReader::fileURLs(items, this, [this](const std::vector<fs::path>& urls) { saveToLibrary(urls); });
        break;
    case DropReader::Contents::nothing:
        fail(translate("Panel", "Nothing readable in that drop."),
             translate("Panel", "Drop PNG, TIFF, JPEG, SVG or PDF files."));
        break;
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
    const QString type = imageType(item);
    load([data = item.data(type).value_or(QByteArray()), type, longEdge, origin = item.webOrigin(),
          name = item.suggestedName().value_or(PastedImage::defaultName())](std::stop_token stop) -> State {
        if (auto image = ImageIntake::read(data, name, type, longEdge, stop))
            return withOrigin(*std::move(image), origin);
        return Failed{translate("Panel", "Could not read that image."), std::nullopt};
    });
}

void PanelModel::saveToLibrary(const std::vector<fs::path>& urls) {
    auto progress = std::make_shared<BatchProgress>();
    progress->total = static_cast<int>(urls.size());
    m_batches.push_back(progress);
    showImportProgress();
    m_progressTick.start();

    const BatchTarget target{m_imagesShelf.collectionFilter().collection(), m_videoShelf.videoCollection(),
                             m_audioShelf.audioCollection()};
    m_saving.every(
        [urls, target, progress, &storage = m_storage, longEdge = m_settings.vectorLongEdge(),
         closing = m_closing.get_token()](const std::stop_token&) {
            return performSave(urls, storage, target, longEdge, *progress, closing);
        },
        [this](const BatchResult& result) { finishBatch(result); });
}

void PanelModel::importFiles(LibraryKind kind) {
    m_chooser.ask(this, importQuestion(kind), [this, kind](const std::vector<fs::path>& chosen) {
        if (chosen.empty()) return;
        if (kind != LibraryKind::blocks) return saveToLibrary(chosen);
        std::vector<platform::ItemProvider> documents;
        for (const fs::path& file : chosen) documents.push_back(platform::ItemProvider::file(file));
        keepBlocks(documents);
    });
}

void PanelModel::finishBatch(const BatchResult& result) {
    m_batches.pop_front();
    showImportProgress();
    if (m_batches.empty()) m_progressTick.stop();
    if (result.images > 0) m_imagesShelf.refresh();
    if (result.videos > 0) m_videoShelf.refresh();
    if (result.sounds > 0) m_audioShelf.refresh();
    if (m_tab != Tab::library) setTab(Tab::library);
    m_imagesShelf.setNote(result.summary());
}

void PanelModel::showImportProgress() {
    std::optional<ImportProgress> shown;
    if (!m_batches.empty()) shown = {m_batches.front()->done, m_batches.front()->total};
    if (shown != m_importProgress) write(m_importProgress, shown, &PanelModel::importProgressChanged);
}

} // namespace quillary
