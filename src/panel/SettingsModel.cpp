#include "panel/SettingsModel.h"

#include "base/Text.h"
#include "library/AppSettings.h"
#include "library/Storage.h"
#include "platform/SettingsStore.h"

#include <QDir>
#include <QThread>

namespace quillary {

namespace {

QString withTilde(const QString& path) {
    const QString home = QDir::homePath();
    if (path == home || path.startsWith(home + u'/')) return u'~' + path.sliced(home.size());
    return path;
}

} // namespace

SettingsModel::SettingsModel(AppSettings& settings, Storage& storage, QObject* parent)
    : QObject(parent), m_settings(settings), m_storage(storage) {}

int SettingsModel::recentLimit() const {
    return m_settings.recentLimit();
}

int SettingsModel::vectorLongEdge() const {
    return m_settings.vectorLongEdge();
}

void SettingsModel::setVectorLongEdge(int pixels) {
    Q_ASSERT(QThread::currentThread() == thread());
    m_settings.store().setValue(SettingsKey::vectorLongEdge, pixels);
    Q_EMIT vectorLongEdgeChanged();
}

bool SettingsModel::openOnLibrary() const {
    return m_settings.openOnLibrary();
}

void SettingsModel::setOpenOnLibrary(bool on) {
    Q_ASSERT(QThread::currentThread() == thread());
    m_settings.store().setValue(SettingsKey::openOnLibrary, on);
    Q_EMIT openOnLibraryChanged();
}

QString SettingsModel::subjectModel() const {
    return shown(m_settings.subjectModel());
}

void SettingsModel::setSubjectModel(const QString& file) {
    Q_ASSERT(QThread::currentThread() == thread());
    m_settings.store().setValue(SettingsKey::subjectModel, file);
    Q_EMIT subjectModelChanged();
}

bool SettingsModel::hasChosenFolder() const {
    return !m_settings.store().value(SettingsKey::rootFolderBookmark).toByteArray().isEmpty();
}

bool SettingsModel::chosenFolderUnavailable() const {
    return m_storage.chosenFolderUnavailable();
}

QString SettingsModel::recentLimitLabel(int limit) {
    return limit == 0 ? QStringLiteral("Never delete") : QStringLiteral("%1 images").arg(limit);
}

void SettingsModel::chooseRecentLimit(int limit) {
    Q_ASSERT(QThread::currentThread() == thread());
    if (limit > 0) {
        setPendingLimit(limit == recentLimit() ? std::nullopt : std::optional(limit));
        return;
    }
    setPendingLimit({});
    m_settings.store().setValue(SettingsKey::recentLimit, 0);
    Q_EMIT recentLimitChanged();
}

void SettingsModel::keepNeverDelete() {
    setPendingLimit({});
}

void SettingsModel::setALimit() {
    if (!m_pendingLimit) return;
    m_settings.store().setValue(SettingsKey::recentLimit, *m_pendingLimit);
    setPendingLimit({});
    Q_EMIT recentLimitChanged();
}

void SettingsModel::setPendingLimit(std::optional<int> limit) {
    Q_ASSERT(QThread::currentThread() == thread());
    if (m_pendingLimit == limit) return;
    m_pendingLimit = limit;
    Q_EMIT pendingLimitChanged();
}

void SettingsModel::useDefaultLocation() {
    m_storage.clearCustomRoot();
    readLocation();
    Q_EMIT rootChanged();
}

void SettingsModel::refresh() {
    setPendingLimit({});
    readLocation();
    Q_EMIT recentLimitChanged();
    Q_EMIT vectorLongEdgeChanged();
    Q_EMIT openOnLibraryChanged();
    Q_EMIT subjectModelChanged();
}

void SettingsModel::readLocation() {
    Q_ASSERT(QThread::currentThread() == thread());
    const auto root = m_storage.root();
    m_libraryPath = root ? withTilde(shown(*root)) : QString();
    Q_EMIT locationChanged();
}

} // namespace quillary
