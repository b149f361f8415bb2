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
    m_importQueue.save(urls, {.images = m_imagesShelf.collectionFilter().collection(),
                              .videos = m_videoShelf.videoCollection(),
                              .audio = m_audioShelf.audioCollection(),
                              .blocks = m_blocksShelf.blockCollection()});
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

void PanelModel::importFolders() {
    const platform::FileChooser::Question question{.kind = platform::FileChooser::Kind::folders,
                                                   .message = translate("Panel", "Choose folders to add to your library."),
                                                   .accept = translate("Panel", "Import")};
    m_chooser.ask(this, question, [this](const std::vector<fs::path>& chosen) {
        if (!chosen.empty()) saveToLibrary(chosen);
    });
}

void PanelModel::finishBatch(const BatchResult& result) {
    if (result.images > 0) m_imagesShelf.refresh();
    if (result.videos > 0) m_videoShelf.refresh();
    if (result.sounds > 0) m_audioShelf.refresh();
    if (result.blocks > 0) m_blocksShelf.refresh();
    if (m_tab != Tab::library) setTab(Tab::library);
    m_imagesShelf.setNote(std::nullopt);
}

std::optional<QString> PanelModel::librarySaveNote() const {
    return m_importQueue.summary().isEmpty() ? m_imagesShelf.note() : m_importQueue.summary();
}

void PanelModel::findUnfinishedWork() {
    if (const auto root = m_storage.root()) m_unfinishedWork.read(*root);
}

void PanelModel::resume(const JobRecord& record) {
    switch (record.kind) {
    case JobRecord::Kind::batch:
        m_importQueue.save(record.files, record.target);
        break;
    case JobRecord::Kind::blocks:
        m_blocksShelf.captureBlocks(record.files, record.collection);
        break;
    case JobRecord::Kind::libraryCopy:
        m_settingsModel.copyJob()->resume(record.from, record.root, record.selection);
        break;
    }
}

} // namespace quillary
