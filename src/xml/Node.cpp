#include "xml/Node.h"

#include <QString>
#include <algorithm>
#include <libxml/tree.h>

namespace quillary::xml {

namespace {

const xmlChar* chars(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

QByteArray bytes(const xmlChar* text) {
    return QByteArray(reinterpret_cast<const char*>(text));
}

/// Collects text with entities resolved. Every step costs, so that entities which multiply end soon.
class TextReader {
public:
    QByteArray read(const xmlNode* first) {
        collect(first, 0);
        return std::move(m_text);
    }

private:
    static constexpr int deepest = 300;

    void collect(const xmlNode* first, int depth) {
        if (depth > deepest) return;
        for (const xmlNode* node = first; node && m_budget > 0; node = node->next) {
            --m_budget;
            switch (node->type) {
            case XML_TEXT_NODE:
            case XML_CDATA_SECTION_NODE:
                take(node->content);
                break;
            case XML_ELEMENT_NODE:
                collect(node->children, depth + 1);
                break;
            case XML_ENTITY_REF_NODE:
                resolve(node, depth);
                break;
            default:
                break;
            }
        }
    }

    void resolve(const xmlNode* reference, int depth) {
        const xmlEntity* entity = xmlGetDocEntity(reference->doc, reference->name);
        if (!entity) return;
        if (entity->etype == XML_INTERNAL_PREDEFINED_ENTITY)
            take(entity->content);
        else
            collect(entity->children, depth + 1);
    }

    void take(const xmlChar* text) {
        if (!text) return;
        const qsizetype length = std::min<qsizetype>(xmlStrlen(text), m_budget);
        m_text.append(reinterpret_cast<const char*>(text), length);
        m_budget -= length;
    }

    QByteArray m_text;
    qsizetype m_budget = 16 * 1024 * 1024;
};

bool isPlain(const QByteArray& value) {
    return std::all_of(value.begin(), value.end(), [](char c) { return c >= 0x20 && c < 0x7f; });
}

/// What XML can hold of a text.
QByteArray holdable(const QByteArray& value) {
    if (isPlain(value)) return value;
    QString text = QString::fromUtf8(value);
    text.removeIf([](QChar c) {
        return (c < u' ' && c != u'\t' && c != u'\n' && c != u'\r') || c == QChar(0xfffe) || c == QChar(0xffff);
    });
    return text.toUtf8();
}

} // namespace

bool Node::isElement() const {
    return m_node && m_node->type == XML_ELEMENT_NODE;
}

QByteArray Node::name() const {
    if (!isElement()) return {};
    if (!m_node->ns || !m_node->ns->prefix) return bytes(m_node->name);
    return bytes(m_node->ns->prefix) + ':' + bytes(m_node->name);
}

bool Node::isNamed(const char* name) const {
    if (!isElement()) return false;
    return xmlStrQEqual(m_node->ns ? m_node->ns->prefix : nullptr, m_node->name, chars(name));
}

std::optional<QByteArray> Node::attribute(const char* name) const {
    if (!isElement()) return {};
    const xmlAttr* attribute = xmlHasNsProp(m_node, chars(name), nullptr);
    // Defaults of the document type stand in a declaration, not in the element.
    if (!attribute || attribute->type != XML_ATTRIBUTE_NODE) return {};
    return TextReader().read(attribute->children);
}

void Node::setAttribute(const char* name, const QByteArray& value) {
    if (isElement()) xmlSetNsProp(m_node, nullptr, chars(name), chars(holdable(value).constData()));
}

void Node::removeAttribute(const char* name) {
    if (isElement()) xmlUnsetNsProp(m_node, nullptr, chars(name));
}

std::vector<QByteArray> Node::attributeNames() const {
    std::vector<QByteArray> names;
    if (!isElement()) return names;
    for (const xmlAttr* attribute = m_node->properties; attribute; attribute = attribute->next)
        if (!attribute->ns) names.push_back(bytes(attribute->name));
    return names;
}

QByteArray Node::text() const {
    if (!m_node) return {};
    if (isElement()) return TextReader().read(m_node->children);
    return m_node->content ? bytes(m_node->content) : QByteArray();
}

Node Node::parent() const {
    return m_node && m_node->parent && m_node->parent->type == XML_ELEMENT_NODE ? Node(m_node->parent) : Node();
}

std::vector<Node> Node::children() const {
    std::vector<Node> nodes;
    if (!isElement()) return nodes;
    for (xmlNode* node = m_node->children; node; node = node->next) nodes.emplace_back(node);
    return nodes;
}

std::vector<Node> Node::elements() const {
    auto nodes = children();
    std::erase_if(nodes, [](const Node& node) { return !node.isElement(); });
    return nodes;
}

Node Node::firstElement(const char* name) const {
    if (!isElement()) return {};
    for (xmlNode* node = m_node->children; node; node = node->next)
        if (Node(node).isNamed(name)) return Node(node);
    return {};
}

Node Node::firstElement() const {
    return isElement() ? Node(xmlFirstElementChild(m_node)) : Node();
}

Node Node::nextElement() const {
    return m_node ? Node(xmlNextElementSibling(m_node)) : Node();
}

Node Node::appendElement(const char* name) {
    return isElement() ? Node(xmlNewChild(m_node, m_node->ns, chars(name), nullptr)) : Node();
}

void Node::append(Node child) {
    if (!isElement() || !child || child.m_node->doc != m_node->doc) return;
    for (const xmlNode* node = m_node; node; node = node->parent)
        if (node == child.m_node) return;
    xmlUnlinkNode(child.m_node);
    // xmlAddChild merges neighbouring texts and frees the one that it was given.
    xmlNode* last = m_node->last;
    child.m_node->parent = m_node;
    child.m_node->prev = last;
    (last ? last->next : m_node->children) = child.m_node;
    m_node->last = child.m_node;
}

Node Node::appendCopy(Node original) {
    if (!isElement() || !original || original.m_node->doc != m_node->doc) return {};
    Node copy(xmlDocCopyNode(original.m_node, m_node->doc, 1));
    append(copy);
    return copy;
}

void Node::remove() {
    if (!m_node) return;
    xmlUnlinkNode(m_node);
    xmlFreeNode(m_node);
    m_node = nullptr;
}

} // namespace quillary::xml
