#pragma once

#include "platform/FileError.h"

#include <expected>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quillary::platform {

/// A small file of notes that belongs to the process that holds it: nobody else can take it until that process lets go
/// of it or ends, be it by a kill. What was noted by then is there for whoever takes it next.
///
/// Any one thread at a time. Dropping it leaves the file; `remove` takes it away.
class HeldFile {
public:
    /// A new one in `folder`, which is made when it is missing, with these bytes and this suffix. It is held before it
    /// can be seen.
    static std::expected<HeldFile, FileError> create(const std::filesystem::path& folder, std::string_view suffix,
                                                     std::string_view contents);
    /// Every file with this suffix in `folder` that nobody holds, oldest first.
    static std::vector<HeldFile> takeAll(const std::filesystem::path& folder, std::string_view suffix);

    HeldFile(HeldFile&& other) noexcept;
    HeldFile& operator=(HeldFile&& other) noexcept;
    ~HeldFile();

    std::string contents() const;
    /// Adds to its end; what cannot be written is left out.
    void append(std::string_view text);
    /// Removes the file; afterwards nothing can be added.
    void remove();

private:
    HeldFile(std::filesystem::path path, int descriptor) : m_path(std::move(path)), m_descriptor(descriptor) {}

    std::filesystem::path m_path;
    int m_descriptor = -1;
};

} // namespace quillary::platform
