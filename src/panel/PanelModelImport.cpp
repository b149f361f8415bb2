#include "base/Translation.h"
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
