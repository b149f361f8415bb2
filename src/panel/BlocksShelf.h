#pragma once

#include "panel/Shelf.h"
#include "values/Arrangement.h"

#include <QTimer>

namespace quillary {

/// The Blocks shelf: compound clips kept as documents. Main thread.
class BlocksShelf : public quillary::Shelf { // qualified: the QML type system looks it up by this name
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")

public:
    explicit BlocksShelf(const Services& with, QObject* parent = nullptr);

    QString title() const override { return tr("Blocks"); }
    void refreshBlocks() { refresh(); }
    /// None for all.
    std::optional<QString> blockCollection() const { return collectionFilter().collection(); }
    const std::optional<std::filesystem::path>& selectedBlock() const { return m_selectedBlock; }
    void setSelectedBlock(std::optional<std::filesystem::path> url);

    /// The note vanishes six seconds after the last one.
    void setNote(std::optional<QString> text) override;

Q_SIGNALS:
    void selectedBlockChanged();

protected:
    /// A block takes its poster along.
    FileVerbs fileVerbs() const override;
    void relocated(std::span<const ShelfSelection::Relocation> relocations) override;

private:
    std::optional<std::filesystem::path> m_selectedBlock;
    QTimer m_noteTask;
};

} // namespace quillary
