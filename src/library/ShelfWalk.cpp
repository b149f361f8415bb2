#include "library/ShelfWalk.h"

#include "base/Text.h"
#include "library/Storage.h"
#include "platform/PendingFile.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

namespace quillary {

namespace {

using platform::OpenFolder;
using Kind = OpenFolder::Kind;

constexpr int deepestLinks = 4;
constexpr std::size_t longestExtension = 8;

/// Up to eight bytes in one number, capital letters as small ones.
std::uint64_t packed(std::string_view extension) {
    std::uint64_t number = 0;
    for (const char c : extension) {
        const auto byte = static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
        number = number << 8U | byte;
    }
    return number;
}

bool onOwnPath(const ShelfNode* node, const platform::FileIdentity& identity) {
    while (node && node->identity != identity) node = node->parent;
    return node != nullptr;
}

bool sameContents(const ShelfNode::File& a, const ShelfNode::File& b) {
    return a.modified == b.modified && a.format == b.format;
}

/// Whether a new file is still growing. Neither a date that is set nor a writer that idles keeps it back.
bool isGrowing(ShelfNode& node, std::string_view name, std::uint64_t size) {
    const auto entry = node.incoming.find(name);
    if (entry == node.incoming.end()) return false;
    ShelfNode::Incoming& file = entry->second;
    if (!file.written && size > 0) return false;
    const auto now = ShelfNode::Incoming::Clock::now();
    if (file.size == size) return now - file.since < ShelfWalk::stillness;
    file.size = size;
    file.since = now;
    return true;
}

bool isListed(const FileLocation::Folder& text, const std::vector<ShelfNode::File>& files, std::string_view name) {
    return std::ranges::any_of(files, [&](const ShelfNode::File& file) {
        return std::string_view(text.names).substr(file.offset, file.length) == name;
    });
}

std::optional<QString> collectionBelow(const ShelfNode& parent, const char* name) {
    // Blanks at its edges tell no name from another.
    const QString text = QString::fromUtf8(name).trimmed();
    if (text.isEmpty()) return parent.collection;
    return parent.collection ? *parent.collection + collectionSeparator.toString() + text : text;
}

} // namespace

ShelfWalk::ShelfWalk(std::span<const std::string_view> extensions, Depth depth, ShelfNodeObserver* observer)
    : m_depth(depth), m_sourceFormat(Storage::sourceAttribute), m_observer(observer) {
    for (const std::string_view extension : extensions) m_extensions.push_back(packed(extension));
}

bool ShelfWalk::wanted(std::string_view name) const {
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || name.size() - dot - 1 > longestExtension) return false;
    return std::ranges::find(m_extensions, packed(name.substr(dot + 1))) != m_extensions.end();
}

std::uint32_t ShelfWalk::formatNumber(std::string_view bytes) {
    if (bytes.empty()) return 0;
    if (m_formatBytes[m_lastFormat] == bytes) return m_lastFormat;
    auto known = std::ranges::find(m_formatBytes, bytes);
    if (known == m_formatBytes.end()) {
        m_formats.emplace_back(QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())));
        known = m_formatBytes.insert(m_formatBytes.end(), std::string(bytes));
    }
    return m_lastFormat = static_cast<std::uint32_t>(known - m_formatBytes.begin());
}

std::unique_ptr<ShelfNode> ShelfWalk::readTree(const std::filesystem::path& folder) {
    auto node = std::make_unique<ShelfNode>();
    node->text = std::make_shared<const FileLocation::Folder>(folder.native(), std::string());
    if (const auto opened = OpenFolder::open(folder)) enter(*node, *opened);
    return node;
}

void ShelfWalk::enter(ShelfNode& node, const OpenFolder& folder) {
    node.identity = folder.identity();
    if (m_observer) m_observer->entered(node);
    readEntries(node, folder);
    if (m_observer) m_observer->wasRead(node);
}

bool ShelfWalk::readAgain(ShelfNode& node) {
    const auto folder = OpenFolder::open(node.text->path);
    bool changed = false;
    if (folder) {
        if (m_observer && node.watch < 0) m_observer->entered(node);
        changed = readEntries(node, *folder);
    } else {
        changed = !node.files.empty() || !node.folders.empty();
        for (const auto& below : node.folders) leave(*below);
        node.files.clear();
        node.folders.clear();
    }
    if (m_observer) m_observer->wasRead(node);
    return changed;
}

std::unique_ptr<ShelfNode> ShelfWalk::readFolder(ShelfNode& parent, const OpenFolder& above, const char* name,
                                                 bool throughLink) {
    const int links = parent.linksAbove + (throughLink ? 1 : 0);
    if (links > deepestLinks) return {};
    const auto folder = above.openFolder(name);
    // What may not be opened is still a collection, an empty one.
    if (folder && links > 0 && onOwnPath(&parent, folder->identity())) return {};
    auto node = std::make_unique<ShelfNode>();
    node->text = std::make_shared<const FileLocation::Folder>(above.path() + '/' + name, std::string());
    node->name = name;
    node->collection = collectionBelow(parent, name);
    node->parent = &parent;
    node->depth = parent.depth + 1;
    node->linksAbove = links;
    node->missing = !folder;
    if (folder) enter(*node, *folder);
    return node;
}

/// The folders met while a folder's files were read.
struct ShelfWalk::Folders {
    struct Met {
        std::uint32_t offset; ///< of the name in the node's text
        bool throughLink;
        bool missing = false;
    };
    std::unordered_map<std::string_view, std::unique_ptr<ShelfNode>> known; ///< from the reading before
    std::vector<Met> met;

    bool isThere(std::string_view name) const {
        const auto folder = known.find(name);
        return folder != known.end() && !folder->second->missing;
    }
};

bool ShelfWalk::readEntries(ShelfNode& node, const OpenFolder& folder) {
    folder.read(m_entries);
    if (m_entries.temporaryFiles) platform::removeAbandonedFiles(node.text->path);

    Folders folders;
    for (auto& below : std::exchange(node.folders, {})) folders.known.emplace(below->name, std::move(below));
    const bool filesDiffer = readFiles(node, folder, folders);
    const bool foldersDiffer = m_depth.recursive && readFolders(node, folder, folders);
    node.changed.clear();
    node.allChanged = false;
    return filesDiffer || foldersDiffer;
}

bool ShelfWalk::readFiles(ShelfNode& node, const OpenFolder& folder, Folders& folders) {
    const auto oldText = std::exchange(
        node.text, std::make_shared<const FileLocation::Folder>(node.text->path, std::string(m_entries.text)));
    const auto oldFiles = std::exchange(node.files, {});
    std::unordered_map<std::string_view, const ShelfNode::File*> known;
    if (!node.allChanged) known.reserve(oldFiles.size());
    for (std::size_t i = 0; !node.allChanged && i < oldFiles.size(); ++i)
        known.emplace(std::string_view(oldText->names).substr(oldFiles[i].offset, oldFiles[i].length), &oldFiles[i]);

    bool different = false;
    node.restless = false;
    node.files.reserve(m_entries.list.size());
    std::vector<std::string_view> held;
    std::array<char, 64> value{};
    for (const OpenFolder::Entry& entry : m_entries.list) {
        const char* name = m_entries.name(entry);
        const std::string_view text(name, entry.length);
        const bool isLink = entry.kind == Kind::link;
        if (entry.kind == Kind::folder || (isLink && node.unchanged(text) && folders.isThere(text))) {
            folders.met.push_back({entry.offset, isLink});
            continue;
        }
        if (entry.kind == Kind::other || (!isLink && !wanted(text))) continue;
        if (!isLink && !m_depth.details) {
            node.files.push_back({entry.offset, entry.length});
            continue;
        }
        const auto before = known.find(text);
        if (!isLink && node.unchanged(text) && before != known.end()) {
            node.files.push_back(*before->second);
            node.files.back().offset = entry.offset;
            continue;
        }
        const auto status = folder.status(name);
        if (status && isLink && status->kind == Kind::folder) {
            folders.met.push_back({entry.offset, true});
            continue;
        }
        node.restless = node.restless || isLink;
        // A link without an extension that leads nowhere is taken for one to a folder on a drive that is away.
        if (!status && isLink && text.find('.') == std::string_view::npos) folders.met.push_back({entry.offset, true, true});
        // A file that may not be asked is one without a date.
        if (!status || (isLink && status->kind != Kind::file) || !wanted(text)) continue;
        if (isGrowing(node, text, status->size) && !isListed(*oldText, oldFiles, text)) {
            held.push_back(text);
            continue;
        }
        const auto format = formatNumber(folder.attribute(name, m_sourceFormat, value));
        const ShelfNode::File file{entry.offset, entry.length, format, status->modified};
        different = different || before == known.end() || !sameContents(*before->second, file);
        node.files.push_back(file);
    }
    std::erase_if(node.incoming, [&](const auto& entry) { return std::ranges::find(held, entry.first) == held.end(); });
    return different || node.files.size() != oldFiles.size();
}

bool ShelfWalk::readFolders(ShelfNode& node, const OpenFolder& folder, Folders& folders) {
    bool different = false;
    for (const auto& [offset, throughLink, missing] : folders.met) {
        const char* name = node.text->names.c_str() + offset;
        if (node.unchanged(name) && (!throughLink || missing || folders.isThere(name))) {
            if (auto known = folders.known.extract(name)) {
                node.folders.push_back(std::move(known.mapped()));
                continue;
            }
        }
        if (auto below = readFolder(node, folder, name, throughLink)) {
            node.folders.push_back(std::move(below));
            different = true;
        }
    }
    for (const auto& [name, gone] : folders.known) {
        leave(*gone);
        different = true;
    }
    return different;
}

void ShelfWalk::leave(ShelfNode& node) {
    for (const auto& below : node.folders) leave(*below);
    if (m_observer) m_observer->leaves(node);
}

} // namespace quillary
