#include "panel/BlockCare.h"

#include "base/FileUrl.h"
#include "base/Text.h"
#include "base/Translation.h"
#include "blocks/ArrangementStore.h"
#include "blocks/BlockChecks.h"
#include "library/Storage.h"

#include <mutex>
#include <span>

namespace quillary {

namespace fs = std::filesystem;

/// What workers share: one at a time looks.
struct BlockCare::Kept {
    std::mutex mutex;
    BlockChecks checks;
};

BlockCare::BlockCare(Storage& storage, QThreadPool& work, QObject* parent)
    : QObject(parent), m_storage(storage), m_kept(std::make_shared<Kept>()), m_all(work), m_one(work) {}

void BlockCare::follow(std::vector<fs::path> blocks) {
    m_all.run(
        [kept = m_kept, &storage = m_storage, blocks = std::move(blocks)](const std::stop_token& stop) {
            std::unordered_map<std::string, BlockHealth> health;
            const auto root = storage.root();
            const std::scoped_lock looking(kept->mutex);
            kept->checks.keepOnly(blocks);
            if (!root) return health;
            for (auto& checked : kept->checks.check(*root, blocks, stop))
                if (checked) health.insert_or_assign(checked->block.native(), *std::move(checked));
            return health;
        },
        [this](std::unordered_map<std::string, BlockHealth> health) {
            if (health == m_health) return;
            m_health = std::move(health);
            Q_EMIT changed();
        });
}

const BlockHealth* BlockCare::of(const fs::path& block) const {
    const auto found = m_health.find(block.native());
    return found == m_health.end() ? nullptr : &found->second;
}

void BlockCare::show(const QString& url) {
    const auto block = pathOfFileUrl(url.toLatin1());
    if (!block) return;
    const BlockHealth* known = of(*block);
    m_media.show(known ? *known : BlockHealth{.block = *block, .version = {}, .media = {}},
                 m_storage.root().value_or(fs::path()));
    look(*block);
}

void BlockCare::look(const fs::path& block) {
    m_one.run(
        [kept = m_kept, &storage = m_storage, block](const std::stop_token&) -> BlockChecks::Checked {
            const auto root = storage.root();
            if (!root) return std::unexpected(ArrangementFailure(root.error()));
            const std::scoped_lock looking(kept->mutex);
            return kept->checks.check(*root, std::span(&block, 1)).front();
        },
        [this](const BlockChecks::Checked& checked) {
            Q_EMIT lookingChanged();
            if (!checked) {
                Q_EMIT failed(checked.error().description());
                return;
            }
            m_media.show(*checked, m_storage.root().value_or(fs::path()));
            m_health.insert_or_assign(checked->block.native(), *checked);
            Q_EMIT changed();
        });
    Q_EMIT lookingChanged();
}

void BlockCare::useFoundFiles() {
    const fs::path block = m_media.health().block;
    if (block.empty()) return;
    m_one.run([&storage = m_storage,
               block](const std::stop_token&) { return ArrangementStore(storage).useFoundMedia(block); },
              [this, block](const std::expected<int, ArrangementFailure>& changed) {
                  if (changed)
                      Q_EMIT done(translate("Blocks", "“%1” uses the files that were found").arg(shownStem(block)));
                  else
                      Q_EMIT failed(changed.error().description());
                  look(block);
              });
    Q_EMIT lookingChanged();
}

} // namespace quillary
