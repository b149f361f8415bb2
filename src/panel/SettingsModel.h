#pragma once

#include "panel/CopyJob.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqml.h>
#include <filesystem>
#include <functional>
#include <optional>

namespace quillary {

class AppSettings;
class Storage;

namespace platform {
class FileChooser;
class FileManager;
} // namespace platform

/// What the Settings sheet shows and changes. The values are read from the store at every use; a change by someone else
/// is announced by the next `refresh`. Main thread.
class SettingsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")

    /// How many files Recent keeps; 0 means all.
    Q_PROPERTY(int recentLimit READ recentLimit NOTIFY recentLimitChanged FINAL)
    /// The limit that waits for the user's confirmation; 0 while none does.
    Q_PROPERTY(int pendingLimit READ pendingLimit NOTIFY pendingLimitChanged FINAL)
    Q_PROPERTY(QList<int> recentLimits READ recentLimits CONSTANT FINAL)
    /// Pixels of a rasterised vector's longer side.
    Q_PROPERTY(int vectorLongEdge READ vectorLongEdge WRITE setVectorLongEdge NOTIFY vectorLongEdgeChanged FINAL)
    Q_PROPERTY(QList<int> vectorLongEdges READ vectorLongEdges CONSTANT FINAL)
    Q_PROPERTY(bool openOnLibrary READ openOnLibrary WRITE setOpenOnLibrary NOTIFY openOnLibraryChanged FINAL)
    /// What texts call the editor that files are dragged into. An empty name stands for the first of those offered.
    Q_PROPERTY(QString editorName READ editorName WRITE setEditorName NOTIFY editorNameChanged FINAL)
    Q_PROPERTY(QStringList editorNames READ editorNames CONSTANT FINAL)
    Q_PROPERTY(bool keepAbove READ keepAbove WRITE setKeepAbove NOTIFY keepAboveChanged FINAL)
    /// The path of the ONNX file that finds subjects; empty for none.
    Q_PROPERTY(QString subjectModel READ subjectModel WRITE setSubjectModel NOTIFY subjectModelChanged FINAL)
    /// The root in use as a text, the home folder written "~". Empty when there is none.
    Q_PROPERTY(QString libraryPath READ libraryPath NOTIFY locationChanged FINAL)
    /// Whether the library was named for this run alone: no choice is stored that the run would not follow.
    Q_PROPERTY(bool locationGiven READ locationGiven CONSTANT FINAL)
    Q_PROPERTY(bool hasChosenFolder READ hasChosenFolder NOTIFY locationChanged FINAL)
    Q_PROPERTY(bool chosenFolderUnavailable READ chosenFolderUnavailable NOTIFY locationChanged FINAL)
    /// Why the folder that was picked last is not used; empty when it is.
    Q_PROPERTY(QString locationProblem READ locationProblem NOTIFY locationChanged FINAL)
    Q_PROPERTY(quillary::CopyJob* copyJob READ copyJob CONSTANT FINAL)

public:
    /// All outlive the model.
    struct Services {
        AppSettings& settings;
        Storage& storage;
        platform::FileChooser& chooser;
        platform::FileManager& fileManager;
        QThreadPool& work;
        FileJobs& jobs;
    };
    explicit SettingsModel(const Services& with, QObject* parent = nullptr);

    int recentLimit() const;
    int pendingLimit() const { return m_pendingLimit.value_or(0); }
    /// What the sheet offers, in its order.
    static QList<int> recentLimits() { return {0, 500, 1000, 2000, 5000}; }
    int vectorLongEdge() const;
    void setVectorLongEdge(int pixels);
    static QList<int> vectorLongEdges() { return {1024, 2048, 4096, 8192}; }
    bool openOnLibrary() const;
    void setOpenOnLibrary(bool on);
    QString editorName() const;
    void setEditorName(const QString& name);
    /// What the sheet offers, in its order.
    static QStringList editorNames();
    bool keepAbove() const;
    void setKeepAbove(bool on);
    QString subjectModel() const;
    void setSubjectModel(const QString& file);

    const QString& libraryPath() const { return m_libraryPath; }
    bool locationGiven() const;
    bool hasChosenFolder() const;
    bool chosenFolderUnavailable() const;
    const QString& locationProblem() const { return m_locationProblem; }
    CopyJob* copyJob() { return &m_copyJob; }

    /// A limit's text in the picker.
    Q_INVOKABLE static QString recentLimitLabel(int limit);

    /// 0 is stored at once, any other limit becomes pending. The limit in force asks nothing.
    Q_INVOKABLE void chooseRecentLimit(int limit);
    /// Drops the pending limit; the stored one stays.
    Q_INVOKABLE void keepNeverDelete();
    /// Stores the pending limit. It takes effect when the next file goes into Recent.
    Q_INVOKABLE void setALimit();

    /// Lets the user pick the folder that is to hold the library. One that cannot be used leaves everything as it was.
    /// Once the library lies elsewhere, `copyJob` offers to copy its files. Nothing while a copy runs, and nothing where
    /// the location is given.
    Q_INVOKABLE void chooseLocation();
    /// Shows the library's folder in the desktop's program for files.
    Q_INVOKABLE void showInFiles();
    Q_INVOKABLE void chooseSubjectModel();
    /// Forgets the chosen folder. Nothing is moved or deleted; files are offered for copying likewise.
    Q_INVOKABLE void useDefaultLocation();

    /// Asks for the root again, drops a pending limit and announces everything; for a sheet that opens.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void recentLimitChanged();
    void pendingLimitChanged();
    void vectorLongEdgeChanged();
    void openOnLibraryChanged();
    void editorNameChanged();
    void keepAboveChanged();
    void subjectModelChanged();
    void locationChanged();
    /// The library lies elsewhere now: what was listed is void.
    void rootChanged();

private:
    void setPendingLimit(std::optional<int> limit);
    void readLocation();
    void useFolder(const std::filesystem::path& folder);
    /// Changes the place of the library, and offers to copy what the old place holds.
    void relocate(const std::function<void()>& change);

    AppSettings& m_settings;
    Storage& m_storage;
    platform::FileChooser& m_chooser;
    platform::FileManager& m_fileManager;
    std::optional<int> m_pendingLimit;
    QString m_libraryPath;
    QString m_locationProblem;
    CopyJob m_copyJob;
};

} // namespace quillary
