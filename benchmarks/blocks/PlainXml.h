#pragma once

#include <QByteArray>
#include <libxml/parser.h>
#include <libxml/xpath.h>

namespace quillary::benchmark {

/// The rival: what libxml2 itself takes to read a document, find nodes, and write it again.
class PlainXml {
public:
    explicit PlainXml(const QByteArray& xml)
        : m_document(xmlReadMemory(xml.constData(), static_cast<int>(xml.size()), nullptr, nullptr, XML_PARSE_NONET)) {}
    ~PlainXml() { xmlFreeDoc(m_document); }
    PlainXml(const PlainXml&) = delete;
    PlainXml& operator=(const PlainXml&) = delete;

    int found(const char* expression) const {
        xmlXPathContext* context = xmlXPathNewContext(m_document);
        xmlXPathObject* object = xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(expression), context);
        const int count = object->nodesetval ? object->nodesetval->nodeNr : 0;
        xmlXPathFreeObject(object);
        xmlXPathFreeContext(context);
        return count;
    }

    int serialized() const {
        xmlChar* bytes = nullptr;
        int size = 0;
        xmlDocDumpMemory(m_document, &bytes, &size);
        xmlFree(bytes);
        return size;
    }

private:
    xmlDoc* m_document;
};

} // namespace quillary::benchmark
