#include "panel/PanelModel.h"

#include "library/AppSettings.h"
#include "panel/PanelModelWriting.h"
#include "panel/ShelfListing.h"
#include "values/CollectionNode.h"

#include <array>
#include <chrono>

namespace quillary {

using namespace std::chrono_literals;

namespace {

template <std::size_t Count>
QString labelAt(const std::array<QStringView, Count>& labels, int value) {
    return labels[static_cast<std::size_t>(value)].toString();
}

QHash<QString, int> counts(const LibraryItems& items) {
    QStringList paths;
    for (const LibraryItem& item : items)
        if (item.collection) paths.append(*item.collection);
    return rollUp(paths);
}

} // namespace

QString PanelModel::label(Tab tab) {
    return labelAt<2>({u"Import", u"Library"}, static_cast<int>(tab));
}

QString PanelModel::label(LibraryKind kind) {
    return labelAt<4>({u"Images", u"Videos", u"Audio", u"Blocks"}, static_cast<int>(kind));
}

QString PanelModel::label(AudioSort sort) {
    return labelAt<4>({u"Newest", u"Name", u"Shortest", u"Longest"}, static_cast<int>(sort));
}

QString PanelModel::label(CutoutMethod method) {
    return labelAt<2>({u"Flat background", u"Subject"}, static_cast<int>(method));
}

PanelModel::PanelModel(const Collaborators& with, QObject* parent)
    : QObject(parent)
    , m_storage(with.storage)
    , m_settings(with.settings)
    , m_builtIns(with.builtIns)
    , m_clipboard(with.clipboard)
    , m_settingsModel(with.settings, with.storage)
    , m_tab(with.settings.openOnLibrary() ? Tab::library : Tab::intake)
    , m_favoritesOnly(with.settings.favouritesOnly())
    , m_favorites(with.storage.favorites())
    , m_removal(with.work)
    , m_refineTask(with.work)
    , m_visibleLibrary([this](const LibraryItem& item) { return isFavorite(item); })
    , m_recentModel([this](const LibraryItem& item) { return isFavorite(item); })
    , m_staging(with.work)
    , m_export(with.work)
    , m_saving(with.saves)
    , m_imagesShelf{std::make_shared<ShelfListing>(Storage::Folder::images), Background(with.work),
                    ShelfWatch([this] { refreshLibrary(Refresh::changed); })}
    , m_recentListing(std::make_shared<ShelfListing>(Storage::Folder::recent))
    , m_recentWatch([this] { refreshLibrary(Refresh::changed); })
    , m_videosShelf{std::make_shared<ShelfListing>(Storage::Folder::videos), Background(with.work),
                    ShelfWatch([this] { refreshVideos(); })}
    , m_audioShelf{std::make_shared<ShelfListing>(Storage::Folder::audio), Background(with.work),
                   ShelfWatch([this] { refreshAudio(); })} {
    m_noteTask.setSingleShot(true);
    m_noteTask.setTimerType(Qt::PreciseTimer);
    m_noteTask.setInterval(6s);
    connect(&m_noteTask, &QTimer::timeout, this, [this] { write(m_blockNote, {}, &PanelModel::blockNoteChanged); });
    m_progressTick.setInterval(50ms);
    connect(&m_progressTick, &QTimer::timeout, this, &PanelModel::showImportProgress);
    connect(&m_settingsModel, &SettingsModel::rootChanged, this, [this] {
        refreshLibrary();
        refreshVideos();
        refreshAudio();
        prepareExport();
    });
}

PanelModel::~PanelModel() {
    m_closing.request_stop();
}

void PanelModel::setTab(Tab tab) {
    write(m_tab, tab, &PanelModel::tabChanged);
}

void PanelModel::setLibraryKind(LibraryKind kind) {
    write(m_libraryKind, kind, &PanelModel::libraryKindChanged);
}

void PanelModel::setSelectedAudio(std::optional<std::filesystem::path> url) {
    writeIfDifferent(m_selectedAudio, std::move(url), &PanelModel::selectedAudioChanged);
}

void PanelModel::setSelectedBlock(std::optional<std::filesystem::path> url) {
    writeIfDifferent(m_selectedBlock, std::move(url), &PanelModel::selectedBlockChanged);
}

void PanelModel::note(const QString& text) {
    write(m_blockNote, std::optional(text), &PanelModel::blockNoteChanged);
    m_noteTask.start();
}

QHash<QString, int> PanelModel::imageCounts() const {
    return counts(library());
}
QHash<QString, int> PanelModel::videoCounts() const {
    return counts(videos());
}
QHash<QString, int> PanelModel::audioCounts() const {
    return counts(audio());
}

QHash<QString, int> PanelModel::blockCounts() const {
    QStringList paths;
    for (const Arrangement& block : m_blocks)
        if (block.collection) paths.append(*block.collection);
    return rollUp(paths);
}

} // namespace quillary
