#pragma once

#include "base/Background.h"
#include "blocks/FCPXMLPasteboard.h"
#include "cutout/Cutout.h"
#include "cutout/MatteRefiner.h"
#include "imaging/ImageIntake.h"
#include "library/BuiltInLibrary.h"
#include "library/LibraryFilter.h"
#include "library/Storage.h"
#include "panel/BatchSave.h"
#include "panel/ItemListModel.h"
#include "panel/SettingsModel.h"
#include "panel/ShelfWatch.h"
#include "values/Arrangement.h"

#include <QImage>
#include <QObject>
#include <QTimer>
#include <QtQml/qqml.h>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <stop_token>

namespace quillary {

class AppSettings;
class ShelfListing;

namespace platform {
class Clipboard;
class ItemProvider;
} // namespace platform

/// Makes the type of `displayImage` known to QML, as a value without members.
struct DisplayedImage {
    Q_GADGET
    QML_FOREIGN(QImage)
    QML_ANONYMOUS
};

/// The one observable object behind the panel: what the user sees, and the operations that change it.
///
/// Lives on the main thread: every property is read and written there, and work that takes time runs on the pools and
/// hands its result back. Writing a property notifies its observers, also when the value stays the same; the three
/// optional locations (`selectedAudio`, `selectedBlock`, `staged`) notify only when they change.
///
/// The body is split by domain: PanelModel.cpp (state), PanelModelStaging.cpp (the Import tab), PanelModelLibrary.cpp
/// (the Images shelf), PanelModelImport.cpp (drops and batches).
class PanelModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

    Q_PROPERTY(quillary::PanelModel::Tab tab READ tab WRITE setTab NOTIFY tabChanged FINAL)
    Q_PROPERTY(quillary::PanelModel::LibraryKind libraryKind READ libraryKind WRITE setLibraryKind NOTIFY
                   libraryKindChanged FINAL)

    Q_PROPERTY(quillary::PanelModel::Stage stage READ stage NOTIFY stateChanged FINAL)
    Q_PROPERTY(bool staging READ staging NOTIFY stagingChanged FINAL)
    Q_PROPERTY(QString failureMessage READ failureMessage NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString failureHint READ failureHint NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString stagedName READ stagedName NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString stagedDimensions READ stagedDimensions NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString stagedProvenance READ stagedProvenance NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString stagedBadge READ stagedBadge NOTIFY displayImageChanged FINAL)
    Q_PROPERTY(QString resolutionWarning READ resolutionWarningText NOTIFY stateChanged FINAL)
    Q_PROPERTY(QImage displayImage READ displayImage NOTIFY displayImageChanged FINAL)
    Q_PROPERTY(QString librarySaveNote READ librarySaveNoteText NOTIFY librarySaveNoteChanged FINAL)

    Q_PROPERTY(quillary::PanelModel::CutoutProgress cutoutProgress READ cutoutProgress NOTIFY cutoutStateChanged FINAL)
    Q_PROPERTY(QString cutoutFailure READ cutoutFailure NOTIFY cutoutStateChanged FINAL)
    Q_PROPERTY(QString cutoutSuggestion READ cutoutSuggestion NOTIFY cutoutStateChanged FINAL)
    Q_PROPERTY(QString cutoutNote READ cutoutNote NOTIFY cutoutStateChanged FINAL)
    Q_PROPERTY(bool hasCutout READ hasCutout NOTIFY displayImageChanged FINAL)
    Q_PROPERTY(bool showCutout READ showCutout WRITE setShowCutout NOTIFY displayImageChanged FINAL)
    Q_PROPERTY(QImage rawCutout READ rawCutout NOTIFY rawCutoutChanged FINAL)
    Q_PROPERTY(double edgeRefine READ edgeRefine WRITE setEdgeRefine NOTIFY edgeRefineChanged FINAL)
    Q_PROPERTY(bool refining READ refining NOTIFY refiningChanged FINAL)

    Q_PROPERTY(quillary::ItemListModel* visibleLibrary READ visibleLibraryModel CONSTANT FINAL)
    Q_PROPERTY(quillary::ItemListModel* recentItems READ recentModel CONSTANT FINAL)
    Q_PROPERTY(QStringList collections READ collections NOTIFY collectionsChanged FINAL)
    Q_PROPERTY(QStringList builtInSets READ builtInSets NOTIFY builtInChanged FINAL)
    Q_PROPERTY(QStringList availableFormats READ availableFormats NOTIFY libraryChanged FINAL)
    Q_PROPERTY(QString filterKind READ filterKind NOTIFY collectionFilterChanged FINAL)
    Q_PROPERTY(QString filterName READ filterName NOTIFY collectionFilterChanged FINAL)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged FINAL)
    Q_PROPERTY(QString formatFilter READ formatFilterText WRITE setFormatFilterText NOTIFY formatFilterChanged FINAL)
    Q_PROPERTY(bool favoritesOnly READ favoritesOnly WRITE setFavoritesOnly NOTIFY favoritesOnlyChanged FINAL)
    Q_PROPERTY(int imagesCount READ imagesCount NOTIFY shelfCountsChanged FINAL)
    Q_PROPERTY(int videosCount READ videosCount NOTIFY shelfCountsChanged FINAL)
    Q_PROPERTY(int audioCount READ audioCount NOTIFY shelfCountsChanged FINAL)
    Q_PROPERTY(int blocksCount READ blocksCount NOTIFY shelfCountsChanged FINAL)
    Q_PROPERTY(bool libraryLoaded READ libraryLoaded NOTIFY libraryChanged FINAL)

    Q_PROPERTY(QString audioNote READ audioNoteText NOTIFY audioNoteChanged FINAL)
    Q_PROPERTY(QString videoNote READ videoNoteText NOTIFY videoNoteChanged FINAL)
    Q_PROPERTY(QString blockNote READ blockNoteText NOTIFY blockNoteChanged FINAL)

    Q_PROPERTY(bool importing READ importing NOTIFY importProgressChanged FINAL)
    Q_PROPERTY(int importDone READ importDone NOTIFY importProgressChanged FINAL)
    Q_PROPERTY(int importTotal READ importTotal NOTIFY importProgressChanged FINAL)

    Q_PROPERTY(quillary::SettingsModel* settings READ settings CONSTANT FINAL)

public:
    // Enumerators come twice: QML reads only names that begin with a capital.
    enum class Tab { intake, library, Intake = intake, Library = library };
    Q_ENUM(Tab)
    enum class LibraryKind {
        images,
        videos,
        audio,
        blocks,
        Images = images,
        Videos = videos,
        Audio = audio,
        Blocks = blocks
    };
    Q_ENUM(LibraryKind)
    enum class AudioSort { recent, name, shortest, longest };
    Q_ENUM(AudioSort)
    enum class CutoutMethod { solid, subject, Solid = solid, Subject = subject };
    Q_ENUM(CutoutMethod)
    /// Which case of `State` holds, as views ask for it.
    enum class Stage { empty, loaded, failed, Empty = empty, Loaded = loaded, Failed = failed };
    Q_ENUM(Stage)
    /// Which case of `CutoutState` holds.
    enum class CutoutProgress {
        none,
        working,
        ready,
        failed,
        None = none,
        Working = working,
        Ready = ready,
        Failed = failed
    };
    Q_ENUM(CutoutProgress)

    /// The texts that pickers show.
    static QString label(Tab tab);
    static QString label(LibraryKind kind);
    static QString label(AudioSort sort);
    static QString label(CutoutMethod method);

    struct Empty {
        bool operator==(const Empty&) const = default;
    };
    struct Failed {
        QString message;
        std::optional<QString> hint;
        bool operator==(const Failed&) const = default;
    };
    using State = std::variant<PastedImage, Failed, Empty>;

    struct CutoutFailed {
        QString message;
        std::optional<QString> suggestion;
        bool operator==(const CutoutFailed&) const = default;
    };
    using CutoutState = std::variant<CutoutFailed, CutoutProgress>;

    struct BlockedAlias {
        std::filesystem::path alias;
        std::filesystem::path target;
    };
    struct ImportProgress {
        int done = 0;
        int total = 0;
        bool operator==(const ImportProgress&) const = default;
    };

    /// What the model works with; all of it outlives the model. `work` serves requests that may be dropped, `saves` has
    /// one thread and is waited for when the program ends, so that nothing asked for is lost.
    struct Collaborators {
        Storage& storage;
        AppSettings& settings;
        BuiltInLibrary& builtIns;
        platform::Clipboard& clipboard;
        QThreadPool& work;
        QThreadPool& saves;
    };

    explicit PanelModel(const Collaborators& with, QObject* parent = nullptr);
    ~PanelModel() override;

    // --- The Import tab -------------------------------------------------------------------------------------------

    const State& state() const { return m_state; }
    Stage stage() const;
    /// True while a newer image is being read; `state` still tells the one before.
    bool staging() const { return m_staging.busy(); }

    Q_INVOKABLE void handlePaste();
    Q_INVOKABLE void paste();
    void load(const std::filesystem::path& file);
    void load(const QByteArray& data, const QString& named, const QString& type);
    Q_INVOKABLE void clear();
    Q_INVOKABLE void renameCurrent(const QString& name);
    Q_INVOKABLE void saveCurrentToLibrary();
    /// Brings a library image back into the Import tab.
    void editInIntake(const LibraryItem& item);

    /// The picture that leaves the panel: the staged one, or its cut-out while that is shown.
    std::expected<PastedImage, ImageIntakeError> imageToExport() const;
    /// The file of the staged image in Recent, written now unless it lies there already. Fast, because the picture was
    /// encoded ahead. The error is a text for the user.
    std::expected<std::filesystem::path, QString> fileOnDisk();
    QImage displayImage() const;
    std::optional<QString> resolutionWarning() const;
    const std::optional<std::filesystem::path>& staged() const { return m_staged; }
    const std::optional<QString>& librarySaveNote() const { return m_librarySaveNote; }

    // --- Cut-outs ---------------------------------------------------------------------------------------------------

    /// Cuts the staged image out, with the method that suits it or with the one asked for; nothing while no image is
    /// staged or a newer one is being read. A cut-out made before stays until the new one is there, and when there is
    /// none to be had.
    Q_INVOKABLE void removeBackground();
    Q_INVOKABLE void removeBackground(quillary::PanelModel::CutoutMethod method);
    /// Gives the running removal up; the cut-out before it, if any, stays.
    Q_INVOKABLE void stopRemoval();
    /// Refines `rawCutout` anew at full size. A burst of calls leaves one stored result, that of the last.
    void scheduleRefine();
    void resetCutout();

    const CutoutState& cutoutState() const { return m_cutoutState; }
    const QImage& cutout() const { return m_cutout; }
    const QImage& rawCutout() const { return m_rawCutout; }
    std::optional<CutoutMethod> cutoutMethod() const { return m_cutoutMethod; }
    /// 0 to 1. A change of more than 0.001 refines the cut-out anew.
    double edgeRefine() const { return m_edgeRefine; }
    void setEdgeRefine(double amount);
    /// True until `cutout` is what `edgeRefine` asks for.
    bool refining() const { return m_refineTask.busy(); }
    bool showCutout() const { return m_showCutout; }
    void setShowCutout(bool on);

    // --- The Images shelf -------------------------------------------------------------------------------------------

    void refreshLibrary();
    const LibraryItems& library() const { return m_library.items(); }
    const LibraryItems& recent() const { return *m_recent; }
    const LibraryItems& builtIn() const { return m_builtIn.items(); }
    const QStringList& builtInSets() const { return m_builtInSets; }
    const QStringList& collections() const { return m_collections; }
    /// The items that the shelf shows, in order.
    LibraryItems visibleLibrary() const;
    ItemListModel* visibleLibraryModel() { return &m_visibleLibrary; }
    ItemListModel* recentModel() { return &m_recentModel; }
    /// The source formats present on the shelf, ascending.
    QStringList availableFormats() const { return m_availableFormats; }
    const CollectionFilter& collectionFilter() const { return m_collectionFilter; }
    void setCollectionFilter(const CollectionFilter& filter);
    Q_INVOKABLE void selectAll() { setCollectionFilter(CollectionFilter::all()); }
    Q_INVOKABLE void selectUnfiled() { setCollectionFilter(CollectionFilter::unfiled()); }
    Q_INVOKABLE void selectCollection(const QString& path) { setCollectionFilter(CollectionFilter::named(path)); }
    Q_INVOKABLE void selectBuiltIn(const QString& set) { setCollectionFilter(CollectionFilter::builtIn(set)); }
    const QString& searchText() const { return m_searchText; }
    void setSearchText(const QString& text);
    const std::optional<QString>& formatFilter() const { return m_formatFilter; }
    void setFormatFilter(std::optional<QString> format);
    bool favoritesOnly() const { return m_favoritesOnly; }
    void setFavoritesOnly(bool on);
    const QSet<QString>& favorites() const { return m_favorites; }
    bool isFavorite(const LibraryItem& item) const;
    void toggleFavorite(const LibraryItem& item);
    Q_INVOKABLE void createCollection(const QString& name);
    void rename(const LibraryItem& item, const QString& name, Storage::Folder folder);
    void saveBuiltInToLibrary(const LibraryItem& item);
    /// Moves a shelf's file to a collection; none is Unfiled.
    void move(const LibraryItem& item, const std::optional<QString>& collection);
    void removeFromLibrary(const LibraryItem& item);
    /// The file that a drag of the item carries: a built-in vector icon goes out as its PNG.
    std::expected<std::filesystem::path, QString> fileToDrag(const LibraryItem& item);

    QHash<QString, int> imageCounts() const;
    QHash<QString, int> videoCounts() const;
    QHash<QString, int> audioCounts() const;
    QHash<QString, int> blockCounts() const;
    const ShelfCounts& shelfCounts() const { return m_shelfCounts; }
    Q_INVOKABLE int collectionCount(const QString& path) const { return imageCounts().value(path); }

    // --- The other shelves ------------------------------------------------------------------------------------------

    void refreshVideos();
    void refreshAudio();
    const LibraryItems& videos() const { return *m_videos; }
    const LibraryItems& audio() const { return *m_audio; }
    const std::vector<Arrangement>& blocks() const { return m_blocks; }
    const std::optional<std::filesystem::path>& selectedAudio() const { return m_selectedAudio; }
    void setSelectedAudio(std::optional<std::filesystem::path> url);
    const std::optional<std::filesystem::path>& selectedBlock() const { return m_selectedBlock; }
    void setSelectedBlock(std::optional<std::filesystem::path> url);

    /// Sets the Blocks shelf's note; it vanishes six seconds after the last one.
    void note(const QString& text);
    const std::optional<QString>& blockNote() const { return m_blockNote; }

    // --- Drops and batches ------------------------------------------------------------------------------------------

    /// What a drop on the panel does.
    void handleDrop(const std::vector<platform::ItemProvider>& items);
    /// Files a batch: shelves by type, one summary line, the Library tab shown afterwards. Folders are walked. A second
    /// batch waits for the first.
    void saveToLibrary(const std::vector<std::filesystem::path>& urls);
    const std::optional<ImportProgress>& importProgress() const { return m_importProgress; }

    // --- Tabs -------------------------------------------------------------------------------------------------------

    Tab tab() const { return m_tab; }
    void setTab(Tab tab);
    LibraryKind libraryKind() const { return m_libraryKind; }
    void setLibraryKind(LibraryKind kind);

    // --- Settings ---------------------------------------------------------------------------------------------------

    SettingsModel* settings() { return &m_settingsModel; }

    // --- What QML asks in QML's own kinds ---------------------------------------------------------------------------

    QString failureMessage() const;
    QString failureHint() const;
    QString stagedName() const;
    QString stagedDimensions() const;
    QString stagedProvenance() const;
    QString stagedBadge() const;
    QString resolutionWarningText() const { return resolutionWarning().value_or(QString()); }
    QString librarySaveNoteText() const { return m_librarySaveNote.value_or(QString()); }
    CutoutProgress cutoutProgress() const;
    QString cutoutFailure() const;
    QString cutoutSuggestion() const;
    /// What is to be told of a cut-out that was made, such as why the user's model was passed over.
    const QString& cutoutNote() const { return m_cutoutNote; }
    bool hasCutout() const { return !m_cutout.isNull(); }
    QString filterKind() const;
    QString filterName() const;
    QString formatFilterText() const { return m_formatFilter.value_or(QString()); }
    void setFormatFilterText(const QString& format);
    int imagesCount() const { return static_cast<int>(m_shelfCounts.images); }
    int videosCount() const { return static_cast<int>(m_shelfCounts.videos); }
    int audioCount() const { return static_cast<int>(m_shelfCounts.audio); }
    int blocksCount() const { return static_cast<int>(m_shelfCounts.blocks); }
    bool libraryLoaded() const { return m_libraryLoaded; }
    QString audioNoteText() const { return m_audioNote.value_or(QString()); }
    QString videoNoteText() const { return m_videoNote.value_or(QString()); }
    QString blockNoteText() const { return m_blockNote.value_or(QString()); }
    bool importing() const { return m_importProgress.has_value(); }
    int importDone() const { return m_importProgress ? m_importProgress->done : 0; }
    int importTotal() const { return m_importProgress ? m_importProgress->total : 0; }

    /// A file: URL for a drag that begins now, empty when there is none; the reason goes into the note.
    Q_INVOKABLE QString stagedFileUrl();
    Q_INVOKABLE QString dragFileUrl(const QString& itemUrl);
    /// The verbs of a tile, for the item with this file: URL.
    Q_INVOKABLE void toggleFavoriteOf(const QString& itemUrl);
    Q_INVOKABLE void editItem(const QString& itemUrl);
    Q_INVOKABLE void renameItem(const QString& itemUrl, const QString& name);
    Q_INVOKABLE void moveItem(const QString& itemUrl, const QString& collection);
    Q_INVOKABLE void removeItem(const QString& itemUrl);
    Q_INVOKABLE void saveBuiltInItem(const QString& itemUrl);

Q_SIGNALS:
    void tabChanged();
    void libraryKindChanged();
    void stateChanged();
    void stagingChanged();
    void displayImageChanged();
    void stagedChanged();
    void librarySaveNoteChanged();
    void cutoutStateChanged();
    void rawCutoutChanged();
    void edgeRefineChanged();
    void refiningChanged();
    void libraryChanged();
    void recentChanged();
    void builtInChanged();
    void collectionsChanged();
    void collectionFilterChanged();
    void searchTextChanged();
    void formatFilterChanged();
    void favoritesOnlyChanged();
    void favoritesChanged();
    void shelfCountsChanged();
    void videosChanged();
    void audioChanged();
    void blocksChanged();
    void selectedAudioChanged();
    void selectedBlockChanged();
    void audioNoteChanged();
    void videoNoteChanged();
    void blockNoteChanged();
    void importProgressChanged();

private:
    using Maker = std::function<State(std::stop_token)>;
    using Observers = void (PanelModel::*)();

    template <typename T>
    void write(T& property, T value, Observers observers);
    template <typename T>
    void writeIfDifferent(T& property, T value, Observers observers);

    /// Runs the maker in the background. What belongs to the image before is dropped at once, `state` follows when the
    /// new one is there; a newer load or `clear` makes it void.
    void load(const Maker& make);
    void fail(const QString& message, const std::optional<QString>& hint);
    void setState(State state);
    void setStaged(std::optional<std::filesystem::path> url);
    void setLibrarySaveNote(std::optional<QString> text);
    /// Encodes the picture to export and lays it ready in Recent, so that a drag only has to name it.
    void prepareExport();
    void pruneRecentInBackground();
    void startRemoval(std::optional<Cutout::Method> method);
    void finishRemoval(Cutout::Expected removed);
    void setCutoutState(CutoutState state);
    void setCutout(const QImage& refined);
    /// Waits for a refinement that is under way, so that what leaves the panel is what it shows.
    void settleRefine();
    void saveInBackground(std::function<std::expected<QString, QString>()> save);

    void updateVisibleLibrary();
    LibraryQuery query() const;
    const SearchableItems& filteredBase() const;
    void reloadFavorites();
    using ShelfRefreshed = std::function<void(std::shared_ptr<const LibraryItems>, QStringList)>;
    /// A shelf that is listed in the background and listed again when it changes on disk.
    struct Shelf {
        std::shared_ptr<ShelfListing> listing;
        Background refresh;
        ShelfWatch watch;
    };
    void refreshShelf(Shelf& shelf, ShelfRefreshed done);

    /// A change on disk never takes a collection away that is still there; a refresh that the panel asks for does when
    /// it holds no image.
    enum class Refresh { asked, changed };
    void refreshLibrary(Refresh cause);
    struct LibraryListing;
    void takeOver(LibraryListing found, Refresh cause);
    void settleFilter(const LibraryListing& found, Refresh cause);
    const LibraryItem* itemAt(const QString& itemUrl) const;
    void stageDropped(const platform::ItemProvider& item);
    void finishBatch(const BatchResult& result);
    void showImportProgress();

    Storage& m_storage;
    AppSettings& m_settings;
    BuiltInLibrary& m_builtIns;
    platform::Clipboard& m_clipboard;
    SettingsModel m_settingsModel;
    State m_state = Empty{};
    Tab m_tab = Tab::intake;
    SearchableItems m_library;
    std::shared_ptr<const LibraryItems> m_recent = std::make_shared<const LibraryItems>();
    SearchableItems m_builtIn;
    QStringList m_builtInSets;
    QStringList m_collections;
    std::optional<QString> m_librarySaveNote;
    LibraryKind m_libraryKind = LibraryKind::images;
    std::shared_ptr<const LibraryItems> m_audio = std::make_shared<const LibraryItems>();
    QStringList m_audioCollections;
    std::map<std::filesystem::path, double> m_audioDurations; ///< seconds
    std::optional<QString> m_audioCollection;
    QString m_audioSearch;
    AudioSort m_audioSort = AudioSort::recent;
    std::optional<std::filesystem::path> m_selectedAudio;
    std::optional<QString> m_audioNote;
    bool m_favoritesOnly = false;
    QSet<QString> m_favorites;
    std::shared_ptr<const LibraryItems> m_videos = std::make_shared<const LibraryItems>();
    QStringList m_videoCollections;
    std::optional<QString> m_videoCollection;
    QString m_videoSearch;
    std::optional<QString> m_videoNote;
    std::vector<Arrangement> m_blocks;
    QStringList m_blockCollections;
    std::optional<QString> m_blockCollection;
    QString m_blockSearch;
    std::optional<std::filesystem::path> m_selectedBlock;
    std::optional<QString> m_blockNote;
    QTimer m_noteTask;
    CollectionFilter m_collectionFilter;
    QString m_searchText;
    std::optional<QString> m_formatFilter;
    std::optional<std::filesystem::path> m_staged;
    CutoutState m_cutoutState = CutoutProgress::none;
    QImage m_cutout;
    std::optional<CutoutMethod> m_cutoutMethod;
    QImage m_rawCutout;
    QString m_cutoutNote;
    Background m_removal;
    Background m_refineTask;
    double m_edgeRefine = MatteRefiner::usualAmount;
    bool m_showCutout = true;
    std::optional<BlockedAlias> m_blockedAlias;
    int m_blockedAliasCount = 0;
    int m_durationsRemaining = 0;
    std::optional<ImportProgress> m_importProgress;

    ShelfCounts m_shelfCounts;
    QStringList m_availableFormats;
    bool m_libraryLoaded = false;
    ItemListModel m_visibleLibrary;
    ItemListModel m_recentModel;
    std::filesystem::path m_root;  ///< of the last listing; favourite keys are relative to it
    FavoriteFiles m_favoriteFiles; ///< `m_favorites` below `m_root`

    Background m_staging;
    Background m_export;
    Background m_saving;
    std::optional<Storage::Prepared> m_prepared; ///< belongs to the picture that `imageToExport` gives now
    Shelf m_imagesShelf;
    std::shared_ptr<ShelfListing> m_recentListing;
    ShelfWatch m_recentWatch;
    Shelf m_videosShelf;
    Shelf m_audioShelf;
    std::stop_source m_closing;
    QTimer m_progressTick;
    std::deque<std::shared_ptr<BatchProgress>> m_batches; ///< the running one first
    std::optional<QString> m_selectAfterRefresh;          ///< a collection made just now
};

} // namespace quillary
