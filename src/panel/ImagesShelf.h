#pragma once

#include "panel/Shelf.h"

namespace quillary {

class BuiltInLibrary;

/// The Images shelf, with what the browser shows beside it: Recent and the built-in icons. Main thread.
class ImagesShelf : public quillary::Shelf { // qualified: the QML type system looks it up by this name
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")
    /// The source formats present, ascending.
    Q_PROPERTY(QStringList availableFormats READ availableFormats NOTIFY listed FINAL)
    /// Empty: every format.
    Q_PROPERTY(QString formatFilter READ formatFilterText WRITE setFormatFilterText NOTIFY formatFilterChanged FINAL)
    Q_PROPERTY(QStringList builtInSets READ builtInSets NOTIFY listed FINAL)
    Q_PROPERTY(int builtInCount READ builtInCount NOTIFY listed FINAL)

public:
    /// `saves` is waited for when the program ends. All outlive the shelf. `cacheFolder` is the desktop's folder for
    /// caches; an empty one keeps nothing.
    ImagesShelf(const Services& with, BuiltInLibrary& builtIns, QThreadPool& saves,
                const std::filesystem::path& cacheFolder = {}, QObject* parent = nullptr);

    QString title() const override { return tr("Images"); }
    void refresh() override;
    const LibraryItems& library() const { return items(); }
    const LibraryItems& recent() const { return m_recent.items.items(); }
    const LibraryItems& builtIn() const { return m_builtIn.items(); }
    const QStringList& builtInSets() const { return m_builtInSets; }
    int builtInCount() const { return static_cast<int>(builtIn().size()); }
    /// An empty collection, and one whose files all lie in sub-collections, is not among them.
    const QStringList& collections() const override { return contents().collections; }
    const QStringList& availableFormats() const { return contents().formats; }
    std::vector<ExtraPlace> extraPlaces() const override;

    void setCollectionFilter(const CollectionFilter& filter) override;
    Q_INVOKABLE void pick(quillary::Shelf::Place place, const QString& path) override;
    Place place() const override;
    const std::optional<QString>& formatFilter() const { return m_formatFilter; }
    void setFormatFilter(std::optional<QString> format);
    QString formatFilterText() const { return m_formatFilter.value_or(QString()); }
    void setFormatFilterText(const QString& format);
    bool filtered() const override { return m_formatFilter || Shelf::filtered(); }
    Q_INVOKABLE void clearFilters() override;

    /// Copies an icon into the selected collection. Anything else is passed over.
    Q_INVOKABLE void saveBuiltIn(const QString& url);
    void saveBuiltInToLibrary(const LibraryItem& item);
    /// Turns or mirrors the files in place, in the background; `operation` is one of ImageTransform's. Built-in icons
    /// are passed over.
    Q_INVOKABLE void transform(const QStringList& urls, const QString& operation);

Q_SIGNALS:
    void formatFilterChanged();

protected:
    const SearchableItems& base() const override;
    LibraryQuery query() const override;
    FileVerbs fileVerbs() const override { return Shelf::fileVerbs(storage(), Storage::Folder::images); }
    /// A built-in vector icon goes out as its PNG.
    std::expected<std::filesystem::path, QString> fileToDrag(const LibraryItem& item) override;

private:
    void listRecent();
    void readBuiltIns();

    BuiltInLibrary& m_builtIns;
    SearchableItems m_builtIn;
    QStringList m_builtInSets;
    std::optional<QString> m_formatFilter;
    bool m_showsRecent = false;
    ShelfListing::Contents m_recent;
    std::shared_ptr<ShelfListing> m_recentListing;
    Background m_recentRefresh;
    Background m_builtInRead;
    Background m_saving;
    ShelfWatch m_recentWatch;
};

} // namespace quillary
