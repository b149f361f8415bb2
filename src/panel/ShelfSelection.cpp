#include "panel/ShelfSelection.h"

#include "base/FileUrl.h"
#include "panel/ItemListModel.h"

#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

ShelfSelection::ShelfSelection(ItemListModel& list, QObject* parent) : QObject(parent), m_list(list) {}

bool ShelfSelection::holds(int row) const {
    return row >= 0 && row < m_list.count() && contains(m_list.item(row).url);
}

std::vector<fs::path> ShelfSelection::files() const {
    std::vector<fs::path> found;
    found.reserve(m_files.size());
    for (int row = 0; row < m_list.count() && found.size() < m_files.size(); ++row)
        if (const auto& url = m_list.item(row).url; m_files.contains(url)) found.push_back(url);
    return found;
}

QStringList ShelfSelection::urls() const {
    QStringList found;
    for (const fs::path& file : files()) found.append(QString::fromLatin1(fileUrl(file)));
    return found;
}

void ShelfSelection::toggle(int row, int modifiers) {
    if (row < 0 || row >= m_list.count()) return;
    const FileLocation& clicked = m_list.item(row).url;
    const auto held = Qt::KeyboardModifiers::fromInt(modifiers);
    const int anchor = m_anchor ? m_list.rowOf(*m_anchor) : -1;
    Files files = m_files;
    if (held.testFlag(Qt::ShiftModifier) && anchor >= 0) {
        addRange(files, anchor, row);
        set(std::move(files));
        return;
    }
    if (!held.testFlag(Qt::ControlModifier))
        files = {clicked};
    else if (files.erase(clicked) == 0)
        files.insert(clicked);
    m_anchor = clicked;
    m_kept = files;
    set(std::move(files));
}

void ShelfSelection::extend(int from, int row) {
    if (std::min(from, row) < 0 || std::max(from, row) >= m_list.count()) return;
    int anchor = m_anchor ? m_list.rowOf(*m_anchor) : -1;
    if (anchor < 0) {
        anchor = from;
        m_anchor = m_list.item(from).url;
        m_kept = m_files;
    }
    Files files = m_kept;
    addRange(files, anchor, row);
    set(std::move(files));
}

void ShelfSelection::selectAll() {
    Files files;
    addRange(files, 0, m_list.count() - 1);
    m_kept = files;
    set(std::move(files));
}

void ShelfSelection::clear() {
    m_anchor.reset();
    m_kept.clear();
    set({});
}

void ShelfSelection::prune() {
    if (m_files.empty()) return;
    Files visible;
    for (int row = 0; row < m_list.count() && visible.size() < m_files.size(); ++row)
        if (const auto& url = m_list.item(row).url; m_files.contains(url)) visible.insert(url);
    if (visible.size() == m_files.size()) return;
    std::erase_if(m_kept, [&](const FileLocation& file) { return !visible.contains(file); });
    set(std::move(visible));
}

void ShelfSelection::follow(std::span<const Relocation> relocations) {
    const auto moveIn = [&](Files& files) {
        for (const auto& [from, to] : relocations)
            if (files.erase(from) > 0) files.insert(to);
    };
    moveIn(m_files);
    moveIn(m_kept);
    for (const auto& [from, to] : relocations)
        if (m_anchor == from) m_anchor = to;
}

void ShelfSelection::set(Files files) {
    if (files == m_files) return;
    m_files = std::move(files);
    m_list.selectionChanged();
    Q_EMIT changed();
}

void ShelfSelection::addRange(Files& files, int from, int to) const {
    for (int row = std::min(from, to); row <= std::max(from, to) && row >= 0 && row < m_list.count(); ++row)
        files.insert(m_list.item(row).url);
}

} // namespace quillary
