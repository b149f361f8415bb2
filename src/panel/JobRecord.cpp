#include "panel/JobRecord.h"

#include "base/FileUrl.h"

#include <QList>
#include <QUrl>
#include <array>
#include <charconv>
#include <utility>

namespace quillary {

namespace fs = std::filesystem;

namespace {

constexpr std::array kinds{"batch", "blocks", "copy"};
constexpr std::array shelves{"images", "videos", "audio", "recent"};

QByteArray line(QByteArrayView key, QByteArrayView value) {
    return key.toByteArray() + ' ' + value.toByteArray() + '\n';
}

QByteArray line(QByteArrayView key, const std::optional<QString>& text) {
    return text ? line(key, QUrl::toPercentEncoding(*text)) : QByteArray();
}

QByteArray filesOf(const std::vector<fs::path>& files) {
    QByteArray lines;
    for (const fs::path& file : files) lines += line("file", fileUrl(file));
    return lines;
}

QByteArray lettersOf(const CopySelection& selection) {
    QByteArray letters;
    for (const auto& [on, letter] : {std::pair(selection.images, 'i'), {selection.videos, 'v'}, {selection.audio, 'a'},
                                     {selection.blocks, 'b'}, {selection.recent, 'r'}})
        if (on) letters += letter;
    return letters;
}

CopySelection selectionOf(QByteArrayView letters) {
    return {letters.contains('i'), letters.contains('v'), letters.contains('a'), letters.contains('b'),
            letters.contains('r')};
}

template <typename Words>
std::optional<std::size_t> placeOf(const Words& words, QByteArrayView word) {
    for (std::size_t at = 0; at < words.size(); ++at)
        if (word == words[at]) return at;
    return {};
}

/// Reads the lines one after another.
class Reading {
public:
    void take(QByteArrayView key, QByteArrayView value) {
        const auto text = [&] { return QUrl::fromPercentEncoding(value.toByteArray()); };
        if (key == "kind")
            setKind(value);
        else if (key == "root")
            m_record.root = pathOfFileUrl(value).value_or(fs::path());
        else if (key == "from")
            m_record.from = pathOfFileUrl(value).value_or(fs::path());
        else if (key == "images")
            m_record.target.images = text();
        else if (key == "videos")
            m_record.target.videos = text();
        else if (key == "audio")
            m_record.target.audio = text();
        else if (key == "blocks")
            m_record.target.blocks = text();
        else if (key == "collection")
            m_record.collection = text();
        else if (key == "folders")
            m_record.target.keepFolders = true;
        else if (key == "only")
            setOnly(value);
        else if (key == "selection")
            m_record.selection = selectionOf(value);
        else if (key == "list")
            m_files.clear();
        else if (key == "file")
            m_files.push_back(pathOfFileUrl(value));
        else if (key == "done")
            setDone(value);
    }

    std::optional<JobRecord> finish() {
        for (auto& file : m_files)
            if (file) m_record.files.push_back(*std::move(file));
        const bool copies = m_record.kind == JobRecord::Kind::libraryCopy;
        if (!m_known || (copies ? m_record.from.empty() : m_record.files.empty())) return {};
        return std::move(m_record);
    }

private:
    void setKind(QByteArrayView word) {
        const auto kind = placeOf(kinds, word);
        m_known = kind.has_value();
        if (kind) m_record.kind = static_cast<JobRecord::Kind>(*kind);
    }

    void setOnly(QByteArrayView word) {
        if (const auto shelf = placeOf(shelves, word)) m_record.target.only = static_cast<Storage::Folder>(*shelf);
    }

    void setDone(QByteArrayView number) {
        std::size_t file = m_files.size();
        std::from_chars(number.begin(), number.end(), file);
        if (file < m_files.size()) m_files[file].reset();
    }

    JobRecord m_record;
    std::vector<std::optional<fs::path>> m_files;
    bool m_known = false;
};

} // namespace

QByteArray JobRecord::text() const {
    QByteArray lines = line("kind", kinds.at(static_cast<std::size_t>(kind))) + line("root", fileUrl(root));
    if (!from.empty()) lines += line("from", fileUrl(from)) + line("selection", lettersOf(selection));
    lines += line("images", target.images) + line("videos", target.videos) + line("audio", target.audio);
    lines += line("blocks", target.blocks);
    lines += line("collection", collection);
    if (target.keepFolders) lines += "folders kept\n";
    if (target.only) lines += line("only", shelves.at(static_cast<std::size_t>(*target.only)));
    return lines + filesOf(files);
}

QByteArray JobRecord::listed(const std::vector<fs::path>& files) {
    return "list anew\n" + filesOf(files);
}

QByteArray JobRecord::done(std::size_t file) {
    return line("done", QByteArray::number(static_cast<qulonglong>(file)));
}

std::optional<JobRecord> JobRecord::of(std::string_view text) {
    Reading reading;
    for (std::size_t end = 0; (end = text.find('\n')) != std::string_view::npos; text.remove_prefix(end + 1)) {
        const std::string_view line = text.substr(0, end);
        const std::size_t blank = line.find(' ');
        if (blank == std::string_view::npos) continue;
        const std::string_view key = line.substr(0, blank);
        const std::string_view value = line.substr(blank + 1);
        reading.take(QByteArrayView(key.data(), std::ssize(key)), QByteArrayView(value.data(), std::ssize(value)));
    }
    return reading.finish();
}

} // namespace quillary
