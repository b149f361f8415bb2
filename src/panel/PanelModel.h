#pragma once

#include "base/Background.h"
#include "blocks/FCPXMLPasteboard.h"
#include "cutout/Cutout.h"
#include "cutout/MatteRefiner.h"
#include "imaging/ImageIntake.h"
#include "library/Storage.h"
#include "panel/AudioShelf.h"
#include "panel/BlockedAliases.h"
#include "panel/BlocksShelf.h"
#include "panel/DragFile.h"
#include "panel/Favorites.h"
#include "panel/FileActions.h"
#include "panel/FileJobs.h"
#include "panel/FolderChooser.h"
#include "panel/ImagesShelf.h"
#include "panel/ImportQueue.h"
#include "panel/PasteHistoryModel.h"
#include "panel/SettingsModel.h"
#include "panel/TouchUpModel.h"
#include "panel/UnfinishedWork.h"
#include "panel/VideoShelf.h"

#include <QImage>
#include <QObject>
#include <QtQml/qqml.h>
#include <functional>
#include <memory>
#include <stop_token>

namespace quillary {

class AppSettings;
class BuiltInLibrary;

namespace platform {
class Clipboard;
class FileChooser;
class FileManager;
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
/// hands its result back. Writing a property notifies its observers, also when the value stays the same; the optional
/// locations (such as `staged`) notify only when they change.
///
/// Each shelf is an object of its own, reached from here, and so are the favourites that they share. The body is split
/// by domain: PanelModel.cpp (tabs, shelves), PanelModelStaging.cpp (the Import tab), PanelModelImport.cpp (drops and
/// batches).
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
    /// The name of the image that `goBack` stages; empty when there is none.
    Q_PROPERTY(QString nameBefore READ nameBefore NOTIFY stateChanged FINAL)
    /// Whether the Import tab changed while the Library was shown, and the user has not looked since.
    Q_PROPERTY(bool stagedUnseen READ stagedUnseen WRITE setStagedUnseen NOTIFY stagedUnseenChanged FINAL)
    Q_PROPERTY(QString stagedName READ stagedName NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString stagedDimensions READ stagedDimensions NOTIFY displayImageChanged FINAL)
    Q_PROPERTY(QString stagedProvenance READ stagedProvenance NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString stagedOrigin READ stagedOrigin NOTIFY stateChanged FINAL)
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
    Q_PROPERTY(QImage edgeBase READ edgeBase NOTIFY rawCutoutChanged FINAL)
    Q_PROPERTY(QRectF cutoutFrame READ cutoutFrame NOTIFY displayImageChanged FINAL)
    Q_PROPERTY(quillary::TouchUpModel* touchUp READ touchUp CONSTANT FINAL)
    Q_PROPERTY(double edgeRefine READ edgeRefine WRITE setEdgeRefine NOTIFY edgeRefineChanged FINAL)
    Q_PROPERTY(bool refining READ refining NOTIFY refiningChanged FINAL)

    Q_PROPERTY(quillary::Favorites* favorites READ favorites CONSTANT FINAL)
    Q_PROPERTY(quillary::ImagesShelf* imagesShelf READ imagesShelf CONSTANT FINAL)
    Q_PROPERTY(quillary::VideoShelf* videoShelf READ videoShelf CONSTANT FINAL)
    Q_PROPERTY(quillary::AudioShelf* audioShelf READ audioShelf CONSTANT FINAL)
    Q_PROPERTY(quillary::BlocksShelf* blocksShelf READ blocksShelf CONSTANT FINAL)

    Q_PROPERTY(quillary::ImportQueue* importQueue READ importQueue CONSTANT FINAL)
    Q_PROPERTY(quillary::UnfinishedWork* unfinishedWork READ unfinishedWork CONSTANT FINAL)

    Q_PROPERTY(quillary::BlockedAliases* blockedAliases READ blockedAliases CONSTANT FINAL)
    /// Null where the panel never asks by itself.
    Q_PROPERTY(quillary::FolderChooser* ownChooser READ ownChooser CONSTANT FINAL)
    Q_PROPERTY(quillary::FileActions* fileActions READ fileActions CONSTANT FINAL)
    Q_PROPERTY(quillary::PasteHistoryModel* pasteHistory READ pasteHistory CONSTANT FINAL)
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

    /// What the model works with; all of it outlives the model. `work` serves requests that may be dropped, `saves` has
    /// one thread and is waited for when the program ends, so that nothing asked for is lost.
    struct Collaborators {
        Storage& storage;
        AppSettings& settings;
        BuiltInLibrary& builtIns;
        platform::Clipboard& clipboard;
        platform::FileChooser& chooser;
        platform::FileManager& fileManager;
        QThreadPool& work;
        QThreadPool& saves;
        FolderChooser* ownChooser = nullptr;    ///< what asks inside the panel where the desktop has no chooser
        std::filesystem::path cacheFolder = {}; ///< for what can be made again; empty keeps nothing
        SoundPlayer::MakeOutput makeAudioOutput = platform::systemAudioOutput;
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
    /// After a failure: stages again what was staged before it, as it was, its cut-out included. Nothing otherwise.
    Q_INVOKABLE void goBack();
    QString nameBefore() const;
    bool stagedUnseen() const { return m_stagedUnseen; }
    void setStagedUnseen(bool unseen);
    Q_INVOKABLE void renameCurrent(const QString& name);
    Q_INVOKABLE void saveCurrentToLibrary();
    /// Brings a library image back into the Import tab.
    void editInIntake(const LibraryItem& item);

    /// What was pasted or dropped before.
    PasteHistoryModel* pasteHistory() { return &m_pasteHistory; }
    /// Stages a picture of the history again.
    Q_INVOKABLE void stageAgain(int row);
    /// For a drag that begins now: a picture of the history, brought into Recent as any drag is. Nothing when there is
    /// none; the reason goes into the note.
    Q_INVOKABLE void offerPasted(quillary::DragRequest* request, int row);

    /// The picture that leaves the panel: the staged one, or its cut-out while that is shown.
    std::expected<PastedImage, ImageIntakeError> imageToExport() const;
    /// For a drag that begins now: the file of the staged image in Recent, which is still being made when it was staged
    /// just now. Nothing while no image is staged; what fails later goes into the note.
    Q_INVOKABLE void offerStaged(quillary::DragRequest* request);
    /// The same file, waited for in an event loop of its own. None when it cannot be had; the note tells why.
    std::optional<std::filesystem::path> fileOnDisk();
    QImage displayImage() const;
    std::optional<QString> resolutionWarning() const;
    std::optional<std::filesystem::path> staged() const { return m_dragFile.file(); }
    /// What the last save came to: the summary of a batch, or the Images shelf's note, which the Import tab shows too.
    std::optional<QString> librarySaveNote() const;

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
    /// What a new edge is made of: `rawCutout`, without the enclosed areas where those are to go too.
    const QImage& edgeBase() const { return m_edgeBase.isNull() ? m_rawCutout : m_edgeBase; }
    /// The part of the staged image that the cut-out shows, in 0 … 1 of its width and height.
    QRectF cutoutFrame() const;
    /// A change of it makes the cut-out anew from `rawCutout`.
    TouchUpModel* touchUp() { return &m_touchUp; }
    std::optional<CutoutMethod> cutoutMethod() const { return m_cutoutMethod; }
    /// 0 to 1. A change of more than 0.001 refines the cut-out anew.
    double edgeRefine() const { return m_edgeRefine; }
    void setEdgeRefine(double amount);
    /// True until `cutout` is what `edgeRefine` asks for.
    bool refining() const { return m_refineTask.busy(); }
    bool showCutout() const { return m_showCutout; }
    void setShowCutout(bool on);

    // --- The shelves ------------------------------------------------------------------------------------------------

    Favorites* favorites() { return &m_favorites; }
    ImagesShelf* imagesShelf() { return &m_imagesShelf; }
    VideoShelf* videoShelf() { return &m_videoShelf; }
    AudioShelf* audioShelf() { return &m_audioShelf; }
    BlocksShelf* blocksShelf() { return &m_blocksShelf; }
    /// Lists all four, and what belongs to them.
    void refreshShelves();
    /// For a panel that comes into sight: opens what the user granted, then lists the shelves.
    void appear();
    BlockedAliases* blockedAliases() { return &m_blockedAliases; }
    FileActions* fileActions() { return &m_fileActions; }
    FolderChooser* ownChooser() { return m_ownChooser; }
    /// Puts the staged image on the clipboard as a file, which is written into Recent as a drag writes it.
    Q_INVOKABLE void copyStaged();
    Q_INVOKABLE void copyStagedPath();
    Q_INVOKABLE void showStagedInFiles();
    ShelfCounts shelfCounts() const;

    // --- Drops and batches ------------------------------------------------------------------------------------------

    /// A drop lands where it was dropped: on the stage of the Import tab, or on the shelf that is shown. Clips and what
    /// comes beside them go onto the shelves of their kinds.
    void handleDrop(const std::vector<platform::ItemProvider>& items);
    /// Files a batch: shelves by type, one summary line, the Library tab shown afterwards. Folders are walked. A second
    /// batch waits for the first.
    void saveToLibrary(const std::vector<std::filesystem::path>& urls);
    /// Lets the user pick files for a shelf and files them like dropped ones.
    Q_INVOKABLE void importFiles(quillary::PanelModel::LibraryKind kind);
    /// The same for folders with all that is in them, whatever the shelf.
    Q_INVOKABLE void importFolders();
    const std::optional<ImportQueue::Progress>& importProgress() const { return m_importQueue.progress(); }
    ImportQueue* importQueue() { return &m_importQueue; }
    /// What an earlier start left undone.
    UnfinishedWork* unfinishedWork() { return &m_unfinishedWork; }
    /// What is under way and is to be finished before the program ends.
    FileJobs& jobs() { return m_jobs; }

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
    /// All that is known of where the image came from, a fact a line: `stagedProvenance`, and addresses on the web.
    QString stagedOrigin() const;
    QString stagedBadge() const;
    QString resolutionWarningText() const { return resolutionWarning().value_or(QString()); }
    QString librarySaveNoteText() const { return librarySaveNote().value_or(QString()); }
    CutoutProgress cutoutProgress() const;
    QString cutoutFailure() const;
    QString cutoutSuggestion() const;
    /// What is to be told of a cut-out that was made, such as why the user's model was passed over.
    const QString& cutoutNote() const { return m_cutoutNote; }
    bool hasCutout() const { return !m_cutout.isNull(); }
    bool importing() const { return m_importQueue.importing(); }

    /// `editInIntake` of the image that the Images shelf shows under this file: URL.
    Q_INVOKABLE void editItem(const QString& itemUrl);

Q_SIGNALS:
    void tabChanged();
    void libraryKindChanged();
    void stateChanged();
    /// The staged image is about to leave, or to make room for another: a name that is being typed for it is committed
    /// now.
    void nameWanted();
    void stagingChanged();
    void stagedUnseenChanged();
    void displayImageChanged();
    void stagedChanged();
    void librarySaveNoteChanged();
    void cutoutStateChanged();
    void rawCutoutChanged();
    void edgeRefineChanged();
    void refiningChanged();

private:
    struct StagedBefore;
    using Maker = std::function<State(std::stop_token)>;
    using Observers = void (PanelModel::*)();

    template <typename T>
    void write(T& property, T value, Observers observers);

    /// Runs the maker in the background. What belongs to the image before is dropped at once, `state` follows when the
    /// new one is there; a newer load or `clear` makes it void.
    /// What came from outside goes into the paste history.
    enum class Origin { outside, library };
    void load(const Maker& make, Origin origin = Origin::outside);
    /// Lays the staged image aside, unless one lies there already.
    void keepBefore();
    void fail(const QString& message, const std::optional<QString>& hint);
    void setState(State state);
    /// The picture to export, for any thread: with the edge that was asked for, also while that is being refined.
    std::function<PastedImage(std::stop_token)> exported() const;
    /// Has the picture to export encoded and laid ready in Recent, so that it only needs its name.
    void prepareExport();
    /// False when there is nothing to drag.
    bool hasExport();
    /// Of a picture that came from outside, once it is encoded.
    DragFile::Listener recording(const PastedImage& image);
    void pruneRecentInBackground(const std::filesystem::path& justWritten);
    void startRemoval(std::optional<Cutout::Method> method);
    void finishRemoval(Cutout::Expected removed);
    void setCutoutState(CutoutState state);
    struct Refined {
        QImage base; ///< null when it is the raw cut-out
        TouchUp::Result touched;
    };
    /// Makes the shown cut-out from the raw one; may run on any thread.
    std::function<Refined(std::stop_token)> refinement() const;
    void setCutout(const Refined& refined);
    void saveInBackground(std::function<std::expected<QString, QString>()> save);

    /// A drop without clips on the Import tab or the Images shelf.
    void takeFilesAndPictures(const std::vector<platform::ItemProvider>& items);
    void stageDropped(const platform::ItemProvider& item);
    /// Puts a picture that came as data onto the Images shelf.
    void saveDropped(const platform::ItemProvider& item);
    void keepBlocks(const std::vector<platform::ItemProvider>& clips);
    void finishBatch(const BatchResult& result);
    /// Whose notes the user sees now.
    Shelf& shownShelf();
    void findUnfinishedWork();
    void resume(const JobRecord& record);

    Storage& m_storage;
    AppSettings& m_settings;
    platform::Clipboard& m_clipboard;
    platform::FileChooser& m_chooser;
    FolderChooser* m_ownChooser;
    FileJobs m_jobs;
    SettingsModel m_settingsModel;
    State m_state = Empty{};
    Tab m_tab = Tab::intake;
    LibraryKind m_libraryKind = LibraryKind::images;
    quint64 m_turn = 0; ///< how often what is staged was replaced
    CutoutState m_cutoutState = CutoutProgress::none;
    std::unique_ptr<StagedBefore> m_before;
    bool m_stagedUnseen = false;
    QImage m_cutout;
    std::optional<CutoutMethod> m_cutoutMethod;
    QImage m_rawCutout;
    QImage m_edgeBase; ///< null when it is the raw cut-out, or not made yet
    QRect m_cutoutFrame;
    TouchUpModel m_touchUp;
    QString m_cutoutNote;
    Background m_removal;
    Background m_refineTask;
    double m_edgeRefine = MatteRefiner::usualAmount;
    bool m_showCutout = true;

    Favorites m_favorites;
    ImagesShelf m_imagesShelf;
    VideoShelf m_videoShelf;
    AudioPreview m_audioPreview;
    AudioShelf m_audioShelf;
    BlocksShelf m_blocksShelf;

    BlockedAliases m_blockedAliases;
    FileActions m_fileActions;
    Background m_staging;
    DragFile m_dragFile; ///< of the picture that `imageToExport` gives
    PasteHistoryModel m_pasteHistory;
    DragFile m_pastedFile; ///< of the picture of the history that was dragged last
    Background m_recording;
    bool m_unrecorded = false; ///< the staged image is to go into the history
    Background m_saving;
    ImportQueue m_importQueue;
    UnfinishedWork m_unfinishedWork;
};

} // namespace quillary
