#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>

namespace quillary {

/// The elements and attributes of one version of FCPXML, and where they may stand. Immutable; any thread.
class FCPXMLVocabulary {
public:
    struct Attribute {
        bool isRequired = false;
        QSet<QByteArray> values = {}; ///< those it may have; empty for any
    };
    struct Element {
        QHash<QByteArray, Attribute> attributes;
        QSet<QByteArray> children; ///< elements that may stand directly in it
    };

    /// Version 1.10.
    static const FCPXMLVocabulary& version110();

    /// Null for what the version does not know.
    const Element* element(const QByteArray& name) const;

private:
    FCPXMLVocabulary() = default;

    QHash<QByteArray, Element> m_elements;
};

} // namespace quillary
