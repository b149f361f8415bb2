#pragma once

#include "platform/FileChooser.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QtQml/qqml.h>
#include <filesystem>
#include <vector>

namespace quillary {

/// The panel's own chooser of folders and files, for desktops that have none: what its sheet shows and does. One
/// question at a time; a newer one calls the older off. Main thread.
class FolderChooser : public QObject, public platform::FileChooser {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(bool active READ active NOTIFY changed FINAL)
    Q_PROPERTY(QString message READ message NOTIFY changed FINAL)
    Q_PROPERTY(QString accept READ accept NOTIFY changed FINAL)
    /// Whether files are picked, not the folder itself.
    Q_PROPERTY(bool picksFiles READ picksFiles NOTIFY changed FINAL)
    /// Of the entries, ascending; always empty where a folder or a single file is picked.
    Q_PROPERTY(QList<int> pickedRows READ pickedRows NOTIFY pickedChanged FINAL)
    /// The folder that is shown, as a path.
    Q_PROPERTY(QString folder READ folder NOTIFY changed FINAL)
    /// What is in it: folders, their names closed by a slash, then, where files are picked, files.
    Q_PROPERTY(QStringList entries READ entries NOTIFY changed FINAL)

public:
    void ask(QObject* context, const Question& question, Answer answer) override;

    bool active() const { return m_answer != nullptr; }
    QString message() const { return m_question.message; }
    QString accept() const { return m_question.accept; }
    bool picksFiles() const { return m_question.kind == Kind::file || m_question.kind == Kind::files; }
    QList<int> pickedRows() const { return m_picked; }
    QString folder() const;
    QStringList entries() const;

    /// Enters a folder. Picks a file, or, where several can be picked, takes it in or out.
    Q_INVOKABLE void open(int row);
    /// Enters a folder, or ends with the picked files and this one.
    Q_INVOKABLE void finishWith(int row);
    Q_INVOKABLE void up();
    /// A folder, or a file to pick, by its path; one that is not there changes nothing and gives false.
    Q_INVOKABLE bool go(const QString& path);
    /// Ends with the folder that is shown, or with the picked files.
    Q_INVOKABLE void pick();
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void changed();
    void pickedChanged();

private:
    bool offers(const std::filesystem::path& file) const;
    bool isFile(int row) const;
    std::vector<std::filesystem::path> pickedFiles() const;
    void enter(std::filesystem::path folder);
    void finish(const std::vector<std::filesystem::path>& picked);

    QPointer<QObject> m_context;
    Question m_question;
    Answer m_answer;
    std::filesystem::path m_folder;
    std::vector<std::filesystem::path> m_folders; ///< names, ascending
    std::vector<std::filesystem::path> m_files;
    QList<int> m_picked;
};

} // namespace quillary
