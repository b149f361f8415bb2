#pragma once

#include "base/Background.h"
#include "library/Storage.h"

#include <QObject>
#include <QtQml/qqml.h>
#include <filesystem>
#include <functional>
#include <optional>

namespace quillary {

namespace platform {
class FileChooser;
}

/// The aliases on the shelves that lead to folders which the user has to grant first, and the granting. Main thread;
/// the search runs in the background.
class BlockedAliases : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")
    /// 0 where nothing is blocked, and on systems without a fence.
    Q_PROPERTY(int blockedAliasCount READ blockedAliasCount NOTIFY changed FINAL)

public:
    struct BlockedAlias {
        std::filesystem::path alias;
        std::filesystem::path target;
    };
    /// All outlive this object. `refresh` lists the shelves that may lie behind a grant, `tell` takes the note.
    struct Services {
        Storage& storage;
        platform::FileChooser& chooser;
        QThreadPool& work;
        std::function<void()> refresh;
        std::function<void(const QString&)> tell;
    };
    explicit BlockedAliases(Services with, QObject* parent = nullptr);

    /// The first one that was met.
    const std::optional<BlockedAlias>& blockedAlias() const { return m_blockedAlias; }
    int blockedAliasCount() const { return m_blockedAliasCount; }

    void findBlockedAliases();
    /// Lets the user pick the folder that the first blocked alias leads to, or one above it.
    Q_INVOKABLE void grantAccessToBlockedAlias();

Q_SIGNALS:
    void changed();

private:
    void tellGrant(const QString& folder) const;

    const Services m_with;
    std::optional<BlockedAlias> m_blockedAlias;
    int m_blockedAliasCount = 0;
    std::optional<QString> m_granted; ///< the folder of a grant that is to be told once the search has ended
    Background m_search;
};

} // namespace quillary
