#include "panel/SettingsModel.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "library/AppSettings.h"
#include "library/Storage.h"
#include "platform/FileChooser.h"
#include "platform/FileManager.h"
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

SettingsModel::SettingsModel(const Services& with, QObject* parent)
    : QObject(parent)
    , m_settings(with.settings)
    , m_storage(with.storage)
    , m_chooser(with.chooser)
    , m_fileManager(with.fileManager)
    , m_copyJob(with.storage, with.jobs, with.work) {}

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

QString SettingsModel::editorName() const {
    return m_settings.editorName();
}

void SettingsModel::setEditorName(const QString& name) {
    Q_ASSERT(QThread::currentThread() == thread());
    m_settings.store().setValue(SettingsKey::editorName, name);
    Q_EMIT editorNameChanged();
}

QStringList SettingsModel::editorNames() {
    return {QStringLiteral("Final Cut"), QStringLiteral("Kdenlive"), QStringLiteral("Shotcut"),
            QStringLiteral("DaVinci Resolve"), QStringLiteral("Blender")};
}

bool SettingsModel::keepAbove() const {
    return m_settings.keepAbove();
}

void SettingsModel::setKeepAbove(bool on) {
    Q_ASSERT(QThread::currentThread() == thread());
    m_settings.store().setValue(SettingsKey::keepAbove, on);
    Q_EMIT keepAboveChanged();
}

QString SettingsModel::subjectModel() const {
    return shown(m_settings.subjectModel());
}

void SettingsModel::setSubjectModel(const QString& file) {
    Q_ASSERT(QThread::currentThread() == thread());
    m_settings.store().setValue(SettingsKey::subjectModel, file);
    Q_EMIT subjectModelChanged();
}

bool SettingsModel::locationGiven() const {
    return m_storage.isForThisRun();
}

bool SettingsModel::hasChosenFolder() const {
    return !m_settings.store().value(SettingsKey::rootFolderBookmark).toByteArray().isEmpty();
}

bool SettingsModel::chosenFolderUnavailable() const {
    return m_storage.chosenFolderUnavailable();
}

QString SettingsModel::recentLimitLabel(int limit) {
    return limit == 0 ? translate("Settings", "Never delete") : translate("Settings", "%n image(s)", nullptr, limit);
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
    relocate([this] { m_storage.clearCustomRoot(); });
}

void SettingsModel::chooseLocation() {
    if (m_copyJob.copying() || locationGiven()) return;
    platform::FileChooser::Question question{
        .message =
            translate("Settings", "Choose where to keep the Quillary folder. A folder called “Quillary” is created "
                                  "inside whatever you pick."),
        .accept = translate("Settings", "Use Folder"),
    };
    if (const auto root = m_storage.root()) question.start = root->parent_path();
    m_chooser.ask(this, question, [this](const std::vector<std::filesystem::path>& picked) {
        if (!picked.empty()) useFolder(picked.front());
    });
}

void SettingsModel::useFolder(const std::filesystem::path& folder) {
    if (const auto usable = Storage::tryRoot(folder); !usable) {
        m_locationProblem = usable.error().description();
        Q_EMIT locationChanged();
        return;
    }
    relocate([&] { m_storage.setCustomRoot(folder); });
}

void SettingsModel::relocate(const std::function<void()>& change) {
    if (m_copyJob.copying() || locationGiven()) return;
    const auto before = m_storage.root();
    change();
    m_locationProblem.clear();
    readLocation();
    Q_EMIT rootChanged();
    const auto now = m_storage.root();
    if (before && now && *before != *now) m_copyJob.offer(*before, *now);
}

void SettingsModel::showInFiles() {
    if (const auto root = m_storage.root()) m_fileManager.show({*root});
}

void SettingsModel::chooseSubjectModel() {
    platform::FileChooser::Question question{
        .kind = platform::FileChooser::Kind::file,
        .message = translate("Settings", "Choose the ONNX file that finds subjects."),
        .accept = translate("Settings", "Use File"),
        .filter = translate("Settings", "Models"),
        .extensions = {QStringLiteral("onnx")},
    };
    const std::filesystem::path current = m_settings.subjectModel();
    if (!current.empty()) question.start = current.parent_path();
    m_chooser.ask(this, question, [this](const std::vector<std::filesystem::path>& picked) {
        if (!picked.empty()) setSubjectModel(shown(picked.front()));
    });
}

void SettingsModel::refresh() {
    setPendingLimit({});
    m_locationProblem.clear();
    readLocation();
    Q_EMIT recentLimitChanged();
    Q_EMIT vectorLongEdgeChanged();
    Q_EMIT openOnLibraryChanged();
    Q_EMIT editorNameChanged();
    Q_EMIT keepAboveChanged();
    Q_EMIT subjectModelChanged();
}

void SettingsModel::readLocation() {
    Q_ASSERT(QThread::currentThread() == thread());
    const auto root = m_storage.root();
    m_libraryPath = root ? withTilde(shown(*root)) : QString();
    Q_EMIT locationChanged();
}

} // namespace quillary
