#include "panel/PanelModel.h"

#include "base/Translation.h"
#include "library/AppSettings.h"
#include "panel/PanelModelWriting.h"
#include "panel/StagedBefore.h"
#include "platform/ItemProvider.h"
#include "values/ShelfCounts.h"

#include <array>
#include <initializer_list>

namespace quillary {


namespace {

template <std::size_t Count>
QString labelAt(const std::array<const char*, Count>& labels, int value) {
    return translate("Panel", labels[static_cast<std::size_t>(value)]);
}

} // namespace

QString PanelModel::label(Tab tab) {
    return labelAt<2>({QT_TRANSLATE_NOOP("Panel", "Import"), QT_TRANSLATE_NOOP("Panel", "Library")},
                      static_cast<int>(tab));
}

QString PanelModel::label(LibraryKind kind) {
    return labelAt<4>({QT_TRANSLATE_NOOP("Panel", "Images"), QT_TRANSLATE_NOOP("Panel", "Videos"),
                       QT_TRANSLATE_NOOP("Panel", "Audio"), QT_TRANSLATE_NOOP("Panel", "Blocks")},
                      static_cast<int>(kind));
}

PanelModel::PanelModel(const Collaborators& with, QObject* parent)
    : QObject(parent)
    , m_storage(with.storage)
    , m_settings(with.settings)
    , m_clipboard(with.clipboard)
    , m_chooser(with.chooser)
    , m_ownChooser(with.ownChooser)
    , m_jobs(FileJobs::notesIn(with.cacheFolder))
    , m_settingsModel({with.settings, with.storage, with.chooser, with.fileManager, with.work, m_jobs})
    , m_tab(with.settings.openOnLibrary() ? Tab::library : Tab::intake)
    , m_removal(with.work)
    , m_refineTask(with.work)
    , m_favorites(with.storage, with.settings)
    , m_imagesShelf({with.storage, with.settings, m_favorites, with.work, m_jobs}, with.builtIns, with.saves, with.cacheFolder)
    , m_videoShelf({with.storage, with.settings, m_favorites, with.work, m_jobs})
    , m_audioPreview({with.settings, with.work, with.cacheFolder, with.makeAudioOutput})
    , m_audioShelf({with.storage, with.settings, m_favorites, with.work, m_jobs}, m_audioPreview)
    , m_blocksShelf({with.storage, with.settings, m_favorites, with.work, m_jobs}, {with.clipboard, with.chooser, with.saves})
    , m_blockedAliases({with.storage, with.chooser, with.work,
                        [this] {
                            m_audioShelf.refresh();
                            m_videoShelf.refresh();
                        },
                        [this](const QString& note) { m_blocksShelf.setNote(note); }})
    , m_fileActions({with.clipboard, with.fileManager, with.work, [this] { return m_settings.vectorLongEdge(); },
                     [this](const QString& note) { shownShelf().setNote(note, Shelf::Tone::problem); }})
    , m_staging(with.work)
    , m_dragFile(with.storage, with.work)
    , m_pasteHistory(with.settings, with.cacheFolder, with.work)
    , m_pastedFile(with.storage, with.work)
    , m_recording(with.work)
    , m_saving(with.saves)
    , m_importQueue({with.storage, with.settings, with.clipboard, m_jobs, with.saves})
    , m_unfinishedWork(FileJobs::notesIn(with.cacheFolder), with.work) {
    connect(&m_imagesShelf, &Shelf::noteChanged, this, [this] {
        if (m_imagesShelf.note()) m_importQueue.dismiss();
        Q_EMIT librarySaveNoteChanged();
    });
    connect(&m_importQueue, &ImportQueue::resultChanged, this, &PanelModel::librarySaveNoteChanged);
    connect(&m_importQueue, &ImportQueue::finished, this, &PanelModel::finishBatch);
    connect(&m_importQueue, &ImportQueue::refiled, this, &PanelModel::refreshShelves);
    connect(&m_jobs, &FileJobs::stopped, this, &PanelModel::findUnfinishedWork);
    connect(&m_unfinishedWork, &UnfinishedWork::resumed, this, &PanelModel::resume);
    connect(&m_dragFile, &DragFile::fileChanged, this, &PanelModel::stagedChanged);
    for (const DragFile* file : {&m_dragFile, &m_pastedFile}) {
        connect(file, &DragFile::named, this, &PanelModel::pruneRecentInBackground);
        connect(file, &DragFile::failed, this,
                [this](const QString& why) { m_imagesShelf.setNote(why, Shelf::Tone::problem); });
    }
    connect(&m_pastedFile, &DragFile::failed, &m_pasteHistory, &PasteHistoryModel::refresh);
    connect(&m_touchUp, &TouchUpModel::changed, this, &PanelModel::scheduleRefine);
    for (const MediaShelf* shelf : std::initializer_list<const MediaShelf*>{&m_videoShelf, &m_audioShelf})
        connect(shelf, &MediaShelf::compoundClipDropped, this,
                [this](const platform::ItemProvider& clip) { keepBlocks({clip}); });
    for (const MediaShelf* shelf : std::initializer_list<const MediaShelf*>{&m_videoShelf, &m_audioShelf})
        connect(shelf, &MediaShelf::filed, &m_importQueue, &ImportQueue::show);
    connect(&m_audioShelf, &Shelf::listed, &m_blockedAliases, &BlockedAliases::findBlockedAliases);
    connect(m_settingsModel.copyJob(), &CopyJob::finished, this, &PanelModel::refreshShelves);
    connect(&m_settingsModel, &SettingsModel::rootChanged, this, [this] {
        refreshShelves();
        if (m_before) m_before->file.reset();
        prepareExport();
    });
}

PanelModel::~PanelModel() {
    m_jobs.stop();
}

void PanelModel::setTab(Tab tab) {
    write(m_tab, tab, &PanelModel::tabChanged);
    if (tab == Tab::intake) setStagedUnseen(false);
}

void PanelModel::setLibraryKind(LibraryKind kind) {
    write(m_libraryKind, kind, &PanelModel::libraryKindChanged);
}

void PanelModel::refreshShelves() {
    m_imagesShelf.refresh();
    m_videoShelf.refresh();
    m_audioShelf.refresh();
    m_blocksShelf.refresh();
}

void PanelModel::appear() {
    m_storage.openExtraScopes();
    refreshShelves();
    m_pasteHistory.refresh();
    findUnfinishedWork();
}

Shelf& PanelModel::shownShelf() {
    const std::array<Shelf*, 4> shelves{&m_imagesShelf, &m_videoShelf, &m_audioShelf, &m_blocksShelf};
    // The Import tab shows the notes of the Images shelf.
    return m_tab == Tab::library ? *shelves[static_cast<std::size_t>(m_libraryKind)] : m_imagesShelf;
}

ShelfCounts PanelModel::shelfCounts() const {
    return {.images = m_imagesShelf.count(),
            .videos = m_videoShelf.count(),
            .audio = m_audioShelf.count(),
            .blocks = m_blocksShelf.count(),
            .recent = std::ssize(m_imagesShelf.recent())};
}

} // namespace quillary
