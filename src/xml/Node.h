#pragma once

#include <QByteArray>
#include <optional>
#include <vector>

struct _xmlNode;

namespace quillary::xml {

/// A place in a document: an element, a text, a comment, a processing instruction, a reference to an entity.
///
/// A handle of one pointer that owns nothing: it is good while its document lives and until the node is removed. A
/// default-made node is no node: it is false, has no name, no attributes and no children, and changing it does nothing,
/// so that chains of look-ups need one test at their end. Texts are UTF-8; names are spelled as in the document, prefix
/// included, and attributes are those without a prefix. Any one thread at a time.
class Node {
public:
    Node() = default;
    explicit Node(_xmlNode* node) : m_node(node) {}

    explicit operator bool() const { return m_node != nullptr; }
    bool operator==(const Node&) const = default;

    bool isElement() const;
    /// Empty for what is no element.
    QByteArray name() const;
    bool isNamed(const char* name) const;

    /// Absent when there is none; an empty one is present. References to entities of the document are resolved, up to a
    /// bound that ordinary documents never meet: what is beyond it is left out.
    std::optional<QByteArray> attribute(const char* name) const;
    /// Added behind the others, or changed in its place. What XML cannot hold (control characters) is left out.
    void setAttribute(const char* name, const QByteArray& value);
    void removeAttribute(const char* name);
    /// Of those without a prefix, in document order.
    std::vector<QByteArray> attributeNames() const;

    /// All the text within, resolved like an attribute.
    QByteArray text() const;

    /// The element around it; no node for the root.
    Node parent() const;
    std::vector<Node> children() const; ///< of every kind
    std::vector<Node> elements() const; ///< the elements among the children
    Node firstElement(const char* name) const;
    /// The first element among the children, and the one that follows this node: a walk that makes no lists.
    Node firstElement() const;
    Node nextElement() const;

    /// Makes an element of this one's namespace as the last child.
    Node appendElement(const char* name);
    /// Takes a node of the same document, with all that is in it, from where it stands and makes it the last child. A
    /// node cannot become a child of itself or of what is in it.
    void append(Node child);
    /// Makes a copy of a node of the same document, with all that is in it, the last child, and returns it. No node
    /// when memory is short.
    Node appendCopy(Node original);
    /// Removes it and all that is in it from the document. Handles of these are void afterwards.
    void remove();

private:
    friend class Document;
    _xmlNode* m_node = nullptr;
};

} // namespace quillary::xml
