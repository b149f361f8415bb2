#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quillary {

/// Where a file lies: an absolute path in a form that a list of 100,000 of them can afford. All files of a folder share
/// its text and each keeps a place in it (24 bytes, no allocation of its own). Converts to and from a path; comparing
/// two of one folder compares the names alone. A value; any thread.
class FileLocation {
public:
    /// The texts of one folder: its path without a closing slash, and names one after another.
    struct Folder {
        std::string path;
        std::string names;
    };

    FileLocation() = default;
    FileLocation(const std::filesystem::path& path) // NOLINT(google-explicit-constructor): it is a path
        : FileLocation(std::make_shared<const Folder>(path.parent_path().native(), path.filename().native()), 0,
                       static_cast<std::uint32_t>(path.filename().native().size())) {}
    /// The name at `offset` in the folder's names.
    FileLocation(std::shared_ptr<const Folder> folder, std::uint32_t offset, std::uint32_t length)
        : m_folder(std::move(folder)), m_offset(offset), m_length(length) {}

    bool empty() const { return !m_folder; }
    std::string_view folderPath() const { return m_folder ? std::string_view(m_folder->path) : std::string_view(); }
    /// The last component.
    std::string_view name() const {
        return m_folder ? std::string_view(m_folder->names).substr(m_offset, m_length) : std::string_view();
    }
    /// The last component without its extension, as std::filesystem splits it.
    std::string_view nameStem() const {
        const std::string_view whole = name();
        const auto dot = whole.rfind('.');
        return dot == 0 || dot == std::string_view::npos || whole == ".." ? whole : whole.substr(0, dot);
    }

    std::string native() const {
        if (!m_folder) return {};
        std::string text;
        text.reserve(m_folder->path.size() + 1 + m_length);
        text += m_folder->path;
        if (!text.empty() && text.back() != '/') text += '/';
        return text.append(name());
    }
    std::filesystem::path path() const { return native(); }
    operator std::filesystem::path() const { return path(); } // NOLINT(google-explicit-constructor): it is a path

    std::filesystem::path filename() const { return name(); }
    std::filesystem::path stem() const { return nameStem(); }
    std::filesystem::path extension() const { return filename().extension(); }
    std::filesystem::path parent_path() const { return folderPath(); }

    friend bool operator==(const FileLocation& a, const FileLocation& b) {
        return a.name() == b.name() && (a.m_folder == b.m_folder || a.folderPath() == b.folderPath());
    }
    friend bool operator==(const FileLocation& a, const std::filesystem::path& b) {
        const std::string_view text = b.native();
        const std::string_view name = a.name();
        const std::string_view folder = a.folderPath();
        if (!text.ends_with(name)) return false;
        const std::string_view rest = text.substr(0, text.size() - name.size());
        if (folder.empty() || folder.ends_with('/')) return rest == folder;
        return rest.size() == folder.size() + 1 && rest.ends_with('/') && rest.starts_with(folder);
    }

private:
    std::shared_ptr<const Folder> m_folder;
    std::uint32_t m_offset = 0;
    std::uint32_t m_length = 0;
};

} // namespace quillary

template <>
struct std::hash<quillary::FileLocation> {
    std::size_t operator()(const quillary::FileLocation& location) const noexcept {
        const std::hash<std::string_view> ofText;
        return ofText(location.folderPath()) * 31 + ofText(location.name());
    }
};
