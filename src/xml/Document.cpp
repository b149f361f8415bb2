#include "xml/Document.h"

#include "base/Translation.h"

#include <algorithm>
#include <libxml/parser.h>
#include <libxml/xmlsave.h>
#include <libxml/xpath.h>
#include <limits>
#include <optional>

namespace quillary::xml {

namespace {

template <auto Free>
struct FreeWith {
    template <typename T>
    void operator()(T* object) const {
        Free(object);
    }
};
using ParserContext = std::unique_ptr<xmlParserCtxt, FreeWith<xmlFreeParserCtxt>>;
using XPathContext = std::unique_ptr<xmlXPathContext, FreeWith<xmlXPathFreeContext>>;
using XPathObject = std::unique_ptr<xmlXPathObject, FreeWith<xmlXPathFreeObject>>;

/// Once, before the first thread parses.
void initialize() {
    static const bool initialized = [] {
        xmlInitParser();
        return true;
    }();
    static_cast<void>(initialized);
}

XmlError errorOf(const xmlError& error) {
    if (error.code == XML_ERR_NO_MEMORY) return {XmlError::Kind::noMemory};
    const QString reason = error.message ? QString::fromUtf8(error.message).trimmed() : translate("Xml", "no content");
    return {XmlError::Kind::malformed, reason, error.line};
}

/// The parser drops references to unknown entities from attributes with no more than a warning.
void noteLoss(void* userData, xmlError* error) {
    auto& lost = *static_cast<std::optional<XmlError>*>(static_cast<xmlParserCtxt*>(userData)->_private);
    if (error->code == XML_WAR_UNDECLARED_ENTITY && !lost) lost = errorOf(*error);
}

void passOver(void*, xmlError*) {}

/// Gives the next piece of the view behind `bytes`.
int take(void* bytes, char* piece, int length) {
    auto& left = *static_cast<QByteArrayView*>(bytes);
    const qsizetype taken = std::min<qsizetype>(left.size(), length);
    std::copy_n(left.data(), taken, piece);
    left = left.sliced(taken);
    return static_cast<int>(taken);
}

int append(void* bytes, const char* piece, int length) {
    static_cast<QByteArray*>(bytes)->append(piece, length);
    return length;
}

} // namespace

void Document::Deleter::operator()(_xmlDoc* document) const {
    xmlFreeDoc(document);
}

std::expected<Document, XmlError> Document::parse(QByteArrayView bytes, qsizetype limit) {
    if (bytes.size() > limit || bytes.size() > std::numeric_limits<int>::max())
        return std::unexpected(XmlError{XmlError::Kind::tooLarge});
    initialize();
    const ParserContext context(xmlNewParserCtxt());
    if (!context) return std::unexpected(XmlError{XmlError::Kind::noMemory});
    std::optional<XmlError> lost;
    context->_private = &lost;
    context->sax->serror = noteLoss;
    // Piece by piece: of a document in memory that is larger than 10 MB the parser refuses long values near the end.
    // Short texts lie in their nodes. Nothing here changes a text in its place, which that would not allow.
    QByteArrayView left = bytes;
    Document document(
        xmlCtxtReadIO(context.get(), take, nullptr, &left, nullptr, nullptr, XML_PARSE_NONET | XML_PARSE_COMPACT));
    if (!document.m_document || !document.root()) return std::unexpected(errorOf(context->lastError));
    if (lost) return std::unexpected(*std::move(lost));
    return document;
}

Node Document::root() const {
    return Node(xmlDocGetRootElement(m_document.get()));
}

std::vector<Node> Document::select(const char* expression, Node from) const {
    const XPathContext context(xmlXPathNewContext(m_document.get()));
    if (!context) return {};
    context->error = passOver;
    if (from) context->node = from.m_node;
    const XPathObject found(xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(expression), context.get()));
    std::vector<Node> nodes;
    if (!found || found->type != XPATH_NODESET || !found->nodesetval) return nodes;
    nodes.reserve(static_cast<std::size_t>(found->nodesetval->nodeNr));
    for (int i = 0; i < found->nodesetval->nodeNr; ++i) nodes.emplace_back(found->nodesetval->nodeTab[i]);
    return nodes;
}

QByteArray Document::serialize(Encoding encoding) const {
    const auto* declared =
        encoding == Encoding::asDeclared ? reinterpret_cast<const char*>(m_document->encoding) : nullptr;
    QByteArray bytes;
    xmlSaveCtxt* const saving =
        xmlSaveToIO(append, nullptr, &bytes, declared ? declared : "UTF-8", XML_SAVE_AS_XML | XML_SAVE_NO_XHTML);
    if (!saving) return {};
    const bool saved = xmlSaveDoc(saving, m_document.get()) != -1;
    if (xmlSaveClose(saving) == -1 || !saved) return {};
    return bytes;
}

} // namespace quillary::xml
