#pragma once

#include <QString>
#include <QStringList>
#include <map>
#include <vector>

namespace quillary {

/// What an export could not take along, for the eye: gathered while a document is gone through, then one line for each
/// kind, such as “Titles (2): “Opening”, “Name””. Kinds keep the order in which they came up.
class LeftOut {
public:
    /// One more of a kind, which is a plural such as "Titles"; `name` is shown where there is one.
    void add(const QString& kind, const QString& name = {});
    QStringList texts() const;

private:
    struct Kind {
        QString label;
        int count = 0;
        QStringList names;    ///< each once, the first few
        bool hasMore = false; ///< names beyond these
    };
    std::vector<Kind> m_kinds;
    std::map<QString, std::size_t> m_places;
};

} // namespace quillary
