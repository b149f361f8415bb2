#include "panel/BlockMediaModel.h"

#include "base/Text.h"
#include "base/Translation.h"

#include <QLocale>

namespace quillary {

namespace {

using Health = BlockHealth::State;

int urgency(const BlockHealth::Media& media) {
    switch (media.state) {
    case Health::missing:
        return 0;
    case Health::incomplete:
        return 1;
    case Health::moved:
        return 2;
    case Health::duplicate:
        return 3;
    case Health::present:
        break;
    }
    return 4;
}

} // namespace

std::vector<BlockMediaModel::Row> BlockMediaModel::rowsOf(const BlockHealth& health) {
    std::vector<Row> rows;
    for (const BlockHealth::Media& media : health.media) rows.push_back({rows.size(), media});
    std::ranges::stable_sort(rows, std::less(), [](const Row& row) { return urgency(row.media); });
    return rows;
}

void BlockMediaModel::show(const BlockHealth& health, const std::filesystem::path& root) {
    if (health.block != m_health.block || root != m_root) takeOver(m_rows, {}, std::equal_to());
    m_health = health;
    m_root = root;
    takeOver(m_rows, rowsOf(health),
             [](const Row& a, const Row& b) { return a.place == b.place && a.media.name == b.media.name; });
    Q_EMIT changed();
}

QString BlockMediaModel::name() const {
    return m_health.block.empty() ? QString() : shownStem(m_health.block);
}

QString BlockMediaModel::summary() const {
    if (m_health.block.empty()) return {};
    return translate("Blocks", "%1 · %2 · FCPXML %3")
        .arg(translate("Blocks", "%n file(s)", nullptr, count()),
             QLocale().formattedDataSize(static_cast<qint64>(m_health.bytes)), m_health.version);
}

QString BlockMediaModel::shownFolder(const std::filesystem::path& file) const {
    const auto folder = file.parent_path();
    const auto below = folder.lexically_relative(m_root);
    const bool isBelow = !m_root.empty() && !below.empty() && *below.begin() != "..";
    return shown(isBelow ? below : folder);
}

QVariant BlockMediaModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const BlockHealth::Media& media = m_rows[static_cast<std::size_t>(index.row())].media;
    if (role == NameRole) return media.name;
    if (role == StateRole) return static_cast<int>(media.state);
    if (role != TellingRole) return {};
    const QString folder = shownFolder(media.path);
    switch (media.state) {
    case Health::missing:
        return folder.isEmpty() ? translate("Blocks", "Missing") : translate("Blocks", "Missing from %1").arg(folder);
    case Health::moved:
        return translate("Blocks", "Found in %1").arg(folder);
    case Health::duplicate:
        return translate("Blocks", "There is another copy in the library");
    case Health::incomplete:
        return translate("Blocks", "Only a part of it is in %1").arg(folder);
    case Health::present:
        break;
    }
    return folder;
}

QHash<int, QByteArray> BlockMediaModel::roleNames() const {
    return {{NameRole, "name"}, {StateRole, "state"}, {TellingRole, "telling"}};
}

} // namespace quillary
