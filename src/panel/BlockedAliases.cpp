#include "panel/BlockedAliases.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "platform/FileChooser.h"

#include <utility>

namespace quillary {

BlockedAliases::BlockedAliases(Services with, QObject* parent)
    : QObject(parent), m_with(std::move(with)), m_search(m_with.work) {}

void BlockedAliases::findBlockedAliases() {
    m_search.run([&storage = m_with.storage](std::stop_token stop) { return storage.blockedAliases(std::move(stop)); },
                 [this](const Storage::BlockedAliases& found) {
                     m_blockedAlias.reset();
                     if (found.count > 0) m_blockedAlias = BlockedAlias{found.alias, found.target};
                     m_blockedAliasCount = found.count;
                     Q_EMIT changed();
                     if (const auto granted = std::exchange(m_granted, {})) tellGrant(*granted);
                 });
}

void BlockedAliases::tellGrant(const QString& folder) const {
    const QString note = m_blockedAliasCount > 0
                             ? translate("BlockedAliases", "Access granted — %1, %n more folder(s) to allow", nullptr,
                                         m_blockedAliasCount)
                             : translate("BlockedAliases", "Access granted — %1");
    m_with.tell(note.arg(folder));
}

void BlockedAliases::grantAccessToBlockedAlias() {
    if (!m_blockedAlias) return;
    const QString message =
        translate("BlockedAliases", "“%1” points at %2.\n\n"
                                    "Choose that folder, or a folder above it — picking a parent grants "
                                    "everything inside it at once, so other aliases on the same drive "
                                    "will not need asking again.")
            .arg(shown(m_blockedAlias->alias.filename()), shown(m_blockedAlias->target));
    const platform::FileChooser::Question question{
        .message = message, .accept = translate("BlockedAliases", "Grant Access"), .start = m_blockedAlias->target};
    m_with.chooser.ask(this, question, [this](const std::vector<std::filesystem::path>& picked) {
        if (picked.empty()) return;
        m_with.storage.grantAccess(picked.front());
        m_granted = shown(picked.front().filename());
        m_with.refresh();
        findBlockedAliases();
    });
}

} // namespace quillary
