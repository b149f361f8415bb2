#pragma once

#include <QString>
#include <QStringList>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

class QObject;

namespace quillary::platform {

/// Lets the user pick folders and files in a window of the desktop's own.
class FileChooser {
public:
    enum class Kind { folder, folders, file, files }; ///< the singular is one, the plural any number

    struct Question {
        Kind kind = Kind::folder;
        QString message = {};             ///< what the user is to pick, shown with the choice
        QString accept = {};              ///< the button's text
        std::filesystem::path start = {}; ///< the folder to begin in; empty: the desktop's choice
        QString filter = {};              ///< what the files to pick from are called, such as "Images"
        QStringList extensions = {};      ///< theirs, in lower case without dots; empty: every file
    };
    /// What was picked; nothing when the user called it off.
    using Answer = std::function<void(const std::vector<std::filesystem::path>&)>;

    virtual ~FileChooser() = default;

    /// Asks without waiting. The answer comes once, on the main thread, while `context` lives. Main thread.
    virtual void ask(QObject* context, const Question& question, Answer answer) = 0;
};

/// The desktop's chooser, through the desktop portal. Without one `otherwise` is asked; it outlives the chooser.
std::unique_ptr<FileChooser> systemFileChooser(FileChooser& otherwise);

} // namespace quillary::platform
