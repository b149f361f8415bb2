#pragma once

#include "base/Background.h"
#include "drag/DragRequest.h"
#include "library/LibraryFilter.h"
#include "library/Storage.h"
#include "panel/Favorites.h"
#include "panel/ItemListModel.h"
#include "panel/ShelfHistory.h"
#include "panel/ShelfListing.h"
#include "panel/ShelfSelection.h"
#include "panel/ShelfWatch.h"

#include <QObject>
#include <QtQml/qqml.h>
#include <memory>

namespace quillary {

class AppSettings;
class FileJobs;

/// A shelf of the Library tab from its folder to its visible list: listed in the background, listed again when it
/// changes on disk, narrowed by collection, search and favourites, and looked after. What is special to one shelf is
/// added by its class; the views' parts need nothing else.
///
/// Main thread. Every verb works in the background on files; its result comes home as a note and a refresh.
class Shelf : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")
    /// What the picker calls it.
    Q_PROPERTY(QString title READ title CONSTANT FINAL)
    Q_PROPERTY(quillary::ItemListModel* visible READ visibleModel CONSTANT FINAL)
    Q_PROPERTY(quillary::ShelfSelection* selection READ selection CONSTANT FINAL)
    Q_PROPERTY(quillary::Favorites* favorites READ favorites CONSTANT FINAL)
    /// All files of the shelf.
    Q_PROPERTY(int count READ count NOTIFY listed FINAL)
    /// False until the first listing is there, be it a remembered one.
    Q_PROPERTY(bool loaded READ loaded NOTIFY listed FINAL)
    Q_PROPERTY(quillary::Shelf::Place place READ place NOTIFY placeChanged FINAL)
    /// Of the collection, or the set's name; empty elsewhere.
    Q_PROPERTY(QString placePath READ placePath NOTIFY placeChanged FINAL)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged FINAL)
    /// The collections that can be picked, ascending.
    Q_PROPERTY(QStringList collections READ collections NOTIFY listed FINAL)
    /// Whether anything but the place narrows the list.
    Q_PROPERTY(bool filtered READ filtered NOTIFY filteredChanged FINAL)
    /// One line about what was done last; empty when there is nothing to tell.
    Q_PROPERTY(QString note READ noteText NOTIFY noteChanged FINAL)
    /// Whether the note tells that something went wrong.
    Q_PROPERTY(bool noteIsProblem READ noteIsProblem NOTIFY noteChanged FINAL)

public:
    /// Where the browser can be. Recent and the built-in sets belong to the Images shelf.
    enum class Place { All, Unfiled, Collection, Recent, BuiltIn };
    Q_ENUM(Place)

    /// All of it outlives the shelf.
    struct Services {
        Storage& storage;
        AppSettings& settings;
        Favorites& favorites;
        QThreadPool& work;
        FileJobs& jobs;
    };

    ~Shelf() override;

    virtual QString title() const = 0;

    // --- What is on it ------------------------------------------------------------------------------------------

    /// Lists the shelf. Where the selected collection is no longer among `collections`, everything is shown.
    virtual void refresh();
    /// The newest alone for as long as `upToDate` is false.
    const LibraryItems& items() const { return m_contents.items.items(); }
    /// The collections that can be picked, ascending.
    virtual const QStringList& collections() const { return m_contents.collectionFolders; }
    /// Every collection folder, empty ones too, ascending: where files can go.
    const QStringList& collectionFolders() const { return m_contents.collectionFolders; }
    /// Those of them that cannot be read now, such as links to a drive that is away.
    const QStringList& missingFolders() const { return m_contents.missing; }
    const QHash<QString, int>& counts() const { return m_contents.counts; }
    int unfiledCount() const { return m_contents.unfiled; }
    int count() const { return static_cast<int>(m_contents.count); }
    bool loaded() const { return m_loaded; }
    /// Whether what is shown was read from the disk, not only remembered.
    bool upToDate() const { return m_loaded && m_contents.whole; }
    /// Places beside the collections, with what they hold.
    struct ExtraPlace {
        Place place;
        QString label;
        int count;
    };
    virtual std::vector<ExtraPlace> extraPlaces() const { return {}; }

    // --- What is shown ------------------------------------------------------------------------------------------

    /// The visible items, in order.
    LibraryItems visible() const;
    ItemListModel* visibleModel() { return &m_visible; }
    ShelfSelection* selection() { return &m_selection; }
    Favorites* favorites() { return &m_favorites; }

    const CollectionFilter& collectionFilter() const { return m_collectionFilter; }
    virtual void setCollectionFilter(const CollectionFilter& filter);
    Q_INVOKABLE virtual void pick(quillary::Shelf::Place place, const QString& path);
    virtual Place place() const;
    QString placePath() const;
    const QString& search() const { return m_search; }
    void setSearch(const QString& text);
    virtual bool filtered() const;
    /// Drops the search and the filters; the place stays.
    Q_INVOKABLE virtual void clearFilters();

    const std::optional<QString>& note() const { return m_note; }
    QString noteText() const { return m_note.value_or(QString()); }
    bool noteIsProblem() const { return m_noteTone == Tone::problem; }
    enum class Tone { done, problem };
    virtual void setNote(std::optional<QString> text, Tone tone = Tone::done);
    /// What was done, or why not.
    void tell(const std::expected<QString, QString>& outcome);

    // --- Looking after files ------------------------------------------------------------------------------------

    // Files are named by their file: URLs; those that the shelf does not show are passed over.

    Q_INVOKABLE void toggleFavorite(const QString& url);
    Q_INVOKABLE void setFavorite(const QStringList& urls, bool favorite);
    /// The star follows.
    Q_INVOKABLE void rename(const QString& url, const QString& name);
    /// Into a collection of the shelf; the empty path is Unfiled.
    Q_INVOKABLE void move(const QStringList& urls, const QString& collection);
    /// What was removed can be taken back. More than can be kept is not removed: `removalAsked` tells of it.
    Q_INVOKABLE void remove(const QStringList& urls);
    Q_INVOKABLE void removeForGood(const QStringList& urls);
    /// Into the desktop's trash.
    Q_INVOKABLE void trash(const QStringList& urls);
    /// Take back what was done last in this session, and do it again. The note names the step; what others changed
    /// since stays as it is.
    Q_INVOKABLE void undo() { revert(ShelfHistory::Direction::undo); }
    Q_INVOKABLE void redo() { revert(ShelfHistory::Direction::redo); }
    /// Tells that the icons that come with the program stay as they are.
    Q_INVOKABLE void refuseBuiltIn();
    /// Makes the collection and selects it.
    Q_INVOKABLE void createCollection(const QString& name);
    /// A file: URL for a drag that begins now, empty when there is none; the reason goes into the note.
    Q_INVOKABLE QString dragFileUrl(const QString& url);
    /// Writes what a drag of the file carries into the request; nothing where it cannot be dragged.
    Q_INVOKABLE virtual void fillDrag(quillary::DragRequest* request, const QString& url);
    /// Every selected file in the order shown; those that are gone are told of and left out.
    Q_INVOKABLE void fillDragOfSelection(quillary::DragRequest* request);
    /// Null for what is not shown.
    const LibraryItem* itemAt(const QString& url) const;

Q_SIGNALS:
    /// A listing was taken over.
    void listed();
    void placeChanged();
    void searchChanged();
    void filteredChanged();
    void noteChanged();
    /// The user is to say whether these files, as "“Logo”" or "3 files", are removed without a way back.
    void removalAsked(const QStringList& urls, const QString& named);

protected:
    Shelf(const Services& with, std::shared_ptr<ShelfListing> listing, QObject* parent);

    Storage& storage() const { return m_storage; }
    AppSettings& settings() const { return m_settings; }
    QThreadPool& work() const { return m_work; }
    FileJobs& jobs() const { return m_jobs; }
    const ShelfListing::Contents& contents() const { return m_contents; }

    /// Runs after a listing was taken over and before `listed` is told.
    virtual void takenOver() {}
    /// The list that the place narrows.
    virtual const SearchableItems& base() const { return m_contents.items; }
    virtual LibraryQuery query() const;
    /// Puts the visible rows of `items` into the shelf's order; they come newest first.
    virtual void arrange(std::vector<quint32>& rows, const LibraryItems& items) const;
    virtual QVariant details(const LibraryItem& item) const;
    /// Files got another place, and `items` is not listed anew yet.
    virtual void relocated(std::span<const ShelfSelection::Relocation> relocations);
    /// Files went from the shelf, and `items` is not listed anew yet.
    virtual void left(std::span<const std::filesystem::path> files);
    void updateVisible();
    void tellFiltered();

    /// The files of the given items, built-in ones left out.
    std::vector<std::filesystem::path> ownFiles(const QStringList& urls) const;
    /// Tells the user where built-in icons are among what was to be changed.
    void refuseBuiltIns(const QStringList& urls);
    /// The verbs on one file: `this` is not theirs.
    virtual FileVerbs fileVerbs() const = 0;
    static FileVerbs fileVerbs(Storage& storage, Storage::Folder folder);
    /// Runs a verb in the background and takes over what it did: its texts, its way back, and where files are now.
    void run(Background& on, std::function<ShelfOutcome(const FileVerbs&)> verb);
    /// The file that a drag of the item carries.
    virtual std::expected<std::filesystem::path, QString> fileToDrag(const LibraryItem& item);

private:
    void showRemembered();
    void list();
    void takeOver(ShelfListing::Contents found);
    void settleFilter();
    void run(std::function<ShelfOutcome(const FileVerbs&)> verb) { run(m_verbs, std::move(verb)); }
    void takeOver(ShelfOutcome& outcome);
    FileVerbs verbs() const;
    void revert(ShelfHistory::Direction direction);
    void revertNext();

    Storage& m_storage;
    AppSettings& m_settings;
    Favorites& m_favorites;
    QThreadPool& m_work;
    FileJobs& m_jobs;
    ShelfListing::Contents m_contents;
    bool m_loaded = false;
    CollectionFilter m_collectionFilter;
    QString m_search;
    std::optional<QString> m_note;
    Tone m_noteTone = Tone::done;
    /// Whether the listing under way may take the selected collection away although its folder is still there: it was
    /// asked for by the panel, not by a change on disk, and nothing was selected since.
    bool m_settles = false;
    std::optional<QString> m_selectAfterRefresh; ///< a collection made just now
    ItemListModel m_visible;
    ShelfSelection m_selection;
    std::shared_ptr<ShelfListing> m_listing;
    Background m_refresh;
    Background m_verbs;
    ShelfHistory m_history;
    const std::shared_ptr<FileSuccession> m_succession = std::make_shared<FileSuccession>();
    int m_verbsUnderWay = 0;
    std::deque<ShelfHistory::Direction> m_reverts; ///< asked for while verbs are under way
    ShelfWatch m_watch;
};

} // namespace quillary
