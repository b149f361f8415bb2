#pragma once

#include <filesystem>
#include <memory>
#include <vector>

namespace quillary::platform {

/// The desktop's program for files.
class FileManager {
public:
    virtual ~FileManager() = default;

    /// Shows the files selected in their folder; folders are shown as entries too. Does not wait. Main thread.
    virtual void show(const std::vector<std::filesystem::path>& files) = 0;
};

/// Over the session's bus, else by opening the folder of the first file with whatever opens folders.
std::unique_ptr<FileManager> systemFileManager();

} // namespace quillary::platform
