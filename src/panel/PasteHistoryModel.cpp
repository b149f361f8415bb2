#include "panel/PasteHistoryModel.h"

#include "base/FileUrl.h"
#include "library/AppSettings.h"
#include "platform/SettingsStore.h"

#include <QThread>

namespace quillary {

PasteHistoryModel::PasteHistoryModel(AppSettings& settings, const std::filesystem::path& cacheFolder, QThreadPool& work,
                                     QObject* parent)
    : RowListModel(parent), m_settings(settings), m_store(cacheFolder), m_reading(work) {}

int PasteHistoryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant PasteHistoryModel::data(const QModelIndex& index, int role) const {
    const PasteHistory::Entry* entry = at(index.row());
    if (!entry) return {};
    if (role == NameRole) return entry->name;
    return role == PreviewRole ? QVariant(QString::fromLatin1(fileUrl(entry->preview()))) : QVariant();
}

QHash<int, QByteArray> PasteHistoryModel::roleNames() const {
    return {{NameRole, "name"}, {PreviewRole, "preview"}};
}

bool PasteHistoryModel::enabled() const {
    return m_settings.pasteHistory();
}

void PasteHistoryModel::setEnabled(bool on) {
    Q_ASSERT(QThread::currentThread() == thread());
    m_settings.store().setValue(SettingsKey::pasteHistory, on);
    Q_EMIT enabledChanged();
    if (!on) clear();
}

const PasteHistory::Entry* PasteHistoryModel::at(int row) const {
    return row >= 0 && row < count() ? &m_entries[static_cast<std::size_t>(row)] : nullptr;
}

void PasteHistoryModel::refresh() {
    m_reading.run([store = m_store](const std::stop_token&) { return store.entries(); },
                  [this](const std::vector<PasteHistory::Entry>& entries) { show(entries); });
}

void PasteHistoryModel::clear() {
    m_reading.run([store = m_store](const std::stop_token&) { return store.clear(); }, [this](int) { refresh(); });
}

void PasteHistoryModel::show(const std::vector<PasteHistory::Entry>& entries) {
    if (entries == m_entries) return;
    takeOver(m_entries, entries, std::equal_to());
    Q_EMIT countChanged();
}

} // namespace quillary
