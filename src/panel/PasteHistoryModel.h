#pragma once

#include "base/Background.h"
#include "library/PasteHistory.h"
#include "panel/RowListModel.h"

#include <QtQml/qqml.h>

namespace quillary {

class AppSettings;

/// The strip of pictures that were staged last, the newest first. Main thread; files are read and written elsewhere.
class PasteHistoryModel : public quillary::RowListModel { // qualified: the QML type system looks it up by this name
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)
    /// Whether pictures are kept at all. Off forgets those that were.
    Q_PROPERTY(bool enabled READ enabled WRITE setEnabled NOTIFY enabledChanged FINAL)

public:
    enum Role { NameRole = Qt::UserRole, PreviewRole };

    /// All outlive the model.
    PasteHistoryModel(AppSettings& settings, const std::filesystem::path& cacheFolder, QThreadPool& work,
                      QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return static_cast<int>(m_entries.size()); }
    bool enabled() const;
    void setEnabled(bool on);
    const PasteHistory& store() const { return m_store; }
    /// Null for a row that is not there.
    const PasteHistory::Entry* at(int row) const;

    /// Reads the folder again.
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void clear();

Q_SIGNALS:
    void countChanged();
    void enabledChanged();

private:
    void show(const std::vector<PasteHistory::Entry>& entries);

    AppSettings& m_settings;
    PasteHistory m_store;
    std::vector<PasteHistory::Entry> m_entries;
    Background m_reading;
};

} // namespace quillary
