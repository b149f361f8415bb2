#pragma once

#include "blocks/ArrangementStore.h"
#include "panel/BlockCare.h"
#include "panel/BlockDetails.h"
#include "panel/BlockExportJob.h"
#include "panel/BlocksListing.h"
#include "panel/DragDocuments.h"
#include "panel/Shelf.h"

#include <QTimer>
#include <memory>

namespace quillary {

namespace platform {
class Clipboard;
class FileChooser;
class ItemProvider;
} // namespace platform

class FileJob;

/// The Blocks shelf: compound clips kept with their media, each with a poster or a drawing of its layers. Main thread.
class BlocksShelf : public quillary::Shelf { // qualified: the QML type system looks it up by this name
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")
    /// What the one selected block tells; that of no block when none or several are selected.
    Q_PROPERTY(quillary::BlockDetails selectedDetails READ selectedDetails NOTIFY selectedDetailsChanged FINAL)
    Q_PROPERTY(bool hasSelectedBlock READ hasSelectedBlock NOTIFY selectedDetailsChanged FINAL)
    /// How far the copies of a save are, 0 to 1; -1 while nothing is saved.
    Q_PROPERTY(double saveProgress READ saveProgress NOTIFY saveProgressChanged FINAL)
    /// How the media of the blocks are.
    Q_PROPERTY(quillary::BlockCare* care READ care CONSTANT FINAL)
    Q_PROPERTY(quillary::BlockExportJob* exporting READ exporting CONSTANT FINAL)

public:
    /// `saves` has one thread and is waited for when the program ends. All outlive the shelf.
    struct BlockServices {
        platform::Clipboard& clipboard;
        platform::FileChooser& chooser;
        QThreadPool& saves;
    };
    BlocksShelf(const Services& with, const BlockServices& also, QObject* parent = nullptr);

    QString title() const override { return tr("Blocks"); }

    // --- What is on it ------------------------------------------------------------------------------------------

    void refreshBlocks() { refresh(); }
    const std::vector<Arrangement>& blocks() const { return m_blocks->list; }
    const QStringList& blockCollections() const { return collections(); }
    /// None for all.
    std::optional<QString> blockCollection() const { return collectionFilter().collection(); }
    const QString& blockSearch() const { return search(); }
    bool isSearchingBlocks() const { return !search().trimmed().isEmpty(); }
    /// The blocks that are shown, in order.
    std::vector<Arrangement> visibleBlocks() const;

    const std::optional<std::filesystem::path>& selectedBlock() const { return m_selectedBlock; }
    void setSelectedBlock(std::optional<std::filesystem::path> url);
    bool hasSelectedBlock() const { return find(m_selectedBlock) != nullptr; }
    BlockDetails selectedDetails() const;

    // --- Keeping clips --------------------------------------------------------------------------------------------

    /// Whether a dropped item is for this shelf: a clip, or a file with a clip's document.
    static bool isClip(const platform::ItemProvider& item);
    /// Stores every clip that was dropped in the selected collection, in the background.
    void captureBlocks(const std::vector<platform::ItemProvider>& providers);
    /// The same for documents, into this collection.
    void captureBlocks(const std::vector<std::filesystem::path>& documents, const std::optional<QString>& collection);
    double saveProgress() const;

    // --- Posters --------------------------------------------------------------------------------------------------

    /// The picture on the clipboard becomes the poster of the block with this file: URL, or of the selected one.
    Q_INVOKABLE void pastePoster(const QString& url = {});
    Q_INVOKABLE void removePoster(const QString& url);

    // --- For others
    // ---------------------------------------------------------------------------------------------------

    BlockCare* care() { return &m_care; }
    BlockExportJob* exporting() { return &m_exporting; }
    /// A drag of the block with this file: URL may begin soon.
    Q_INVOKABLE void prepareDrag(const QString& url);

    /// The line that tells what was done last; it vanishes six seconds after it was set.
    const std::optional<QString>& blockNote() const { return Shelf::note(); }
    using Shelf::note;
    void note(const QString& text) { setNote(text); }
    void setNote(std::optional<QString> text, Tone tone = Tone::done) override;

    void fillDrag(quillary::DragRequest* request, const QString& url) override;

Q_SIGNALS:
    void selectedBlockChanged();
    void selectedDetailsChanged();
    void saveProgressChanged();

protected:
    void takenOver() override;
    const SearchableItems& base() const override { return m_blocks->items; }
    QVariant details(const LibraryItem& item) const override;
    /// A block takes its poster along.
    FileVerbs fileVerbs() const override;
    void relocated(std::span<const ShelfSelection::Relocation> relocations) override;

private:
    BlocksShelf(const Services& with, const BlockServices& also, std::shared_ptr<BlocksListing> listing,
                QObject* parent);

    const Arrangement* find(const std::optional<std::filesystem::path>& url) const;
    void captureBlocks(const std::vector<platform::ItemProvider>& providers, const std::optional<QString>& collection);
    void followSelection();
    void finish(const std::expected<QString, QString>& outcome);

    std::shared_ptr<BlocksListing> m_blocksListing;
    std::shared_ptr<const BlocksListing::Blocks> m_blocks;
    std::optional<std::filesystem::path> m_selectedBlock;
    platform::Clipboard& m_clipboard;
    Background m_saving;
    BlockCare m_care;
    BlockExportJob m_exporting;
    DragDocuments m_drags;
    std::vector<std::shared_ptr<FileJob>> m_saves; ///< under way, the running one first
    QTimer m_noteTask;
};

} // namespace quillary
