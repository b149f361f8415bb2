#include "library/AppSettings.h"

#include "base/Text.h"
#include "platform/SettingsStore.h"

#include <QVariant>
#include <algorithm>

namespace quillary {

namespace {

constexpr int defaultLongEdge = 4096;
constexpr int shortestLongEdge = 256;
constexpr int longestLongEdge = 8192;
constexpr double defaultVolume = 0.7;
constexpr qsizetype longestEditorName = 40;

/// A stored value that is no number counts as not stored.
int integer(const QVariant& value, int otherwise) {
    bool isNumber = false;
    const qlonglong number = value.toLongLong(&isNumber);
    if (!isNumber) return otherwise;
    return static_cast<int>(
        std::clamp<qlonglong>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

} // namespace

int AppSettings::recentLimit() const {
    return std::max(integer(m_store.value(SettingsKey::recentLimit), 0), 0);
}

int AppSettings::vectorLongEdge() const {
    return std::clamp(integer(m_store.value(SettingsKey::vectorLongEdge), defaultLongEdge), shortestLongEdge,
                      longestLongEdge);
}

double AppSettings::previewVolume() const {
    bool isNumber = false;
    const double volume = m_store.value(SettingsKey::previewVolume).toDouble(&isNumber);
    return isNumber && volume == volume ? std::clamp(volume, 0.0, 1.0) : defaultVolume;
}

bool AppSettings::openOnLibrary() const {
    return m_store.value(SettingsKey::openOnLibrary).toBool();
}

bool AppSettings::favouritesOnly() const {
    return m_store.value(SettingsKey::favouritesOnly).toBool();
}

bool AppSettings::keepAbove() const {
    return m_store.value(SettingsKey::keepAbove).toBool();
}

bool AppSettings::pasteHistory() const {
    const QVariant stored = m_store.value(SettingsKey::pasteHistory);
    return !stored.isValid() || stored.toBool();
}

QString AppSettings::editorName() const {
    const QString name = m_store.value(SettingsKey::editorName).toString().simplified().left(longestEditorName);
    return name.isEmpty() ? QStringLiteral("Final Cut") : name;
}

std::filesystem::path AppSettings::subjectModel() const {
    return pathOf(m_store.value(SettingsKey::subjectModel).toString());
}

} // namespace quillary
