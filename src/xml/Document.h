#pragma once

#include "xml/Node.h"
#include "xml/XmlError.h"

#include <QByteArray>
#include <QByteArrayView>
#include <expected>
#include <memory>
#include <vector>

struct _xmlDoc;

namespace quillary::xml {

/// An XML document in memory, which keeps what it does not know: document type, comments, CDATA, references to
/// entities, unknown elements and attributes, white space. Movable; any one thread at a time.
class Document {
public:
    static constexpr qsizetype defaultLimit = 256 * 1024 * 1024;

    /// Reads a well-formed document strictly: nothing is mended. No file and no network is ever read: external entities
    /// and document types stay references. More than `limit` bytes, more than 256 nested elements, a single text or
    /// attribute of more than 10 MB, entities that multiply, and references to entities that only an unread document
    /// type could declare are refused.
    static std::expected<Document, XmlError> parse(QByteArrayView bytes, qsizetype limit = defaultLimit);

    /// Always there.
    Node root() const;

    /// The nodes that an XPath 1.0 expression finds, in document order; `expression` is the program's own. Prefixes
    /// mean nothing in it. `from` is where relative expressions begin, the document unless told.
    std::vector<Node> select(const char* expression, Node from = {}) const;

    enum class Encoding { asDeclared, utf8 };
    /// In the encoding that the document declares, UTF-8 when it declares none, or in UTF-8 whatever it declares;
    /// always with an XML declaration that tells the encoding. Empty only when memory is short.
    QByteArray serialize(Encoding encoding = Encoding::asDeclared) const;

private:
    struct Deleter {
        void operator()(_xmlDoc* document) const;
    };
    explicit Document(_xmlDoc* document) : m_document(document) {}

    std::unique_ptr<_xmlDoc, Deleter> m_document;
};

} // namespace quillary::xml
