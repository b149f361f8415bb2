#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>
#include <span>
#include <string_view>
#include <utility>

namespace quillary {

/// The icons of the panel, by their symbol names, as characters of the embedded icon font.
class Symbols : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The family under which the font is known; empty when it could not be read.
    Q_PROPERTY(QString family READ family CONSTANT FINAL)

public:
    explicit Symbols(QObject* parent = nullptr);

    const QString& family() const { return m_family; }

    /// Empty for an unknown name, which is also told on the log.
    Q_INVOKABLE QString glyph(const QString& name) const;

    /// Every symbol name that there is, ascending, with its code point.
    static std::span<const std::pair<std::string_view, char16_t>> table();

private:
    QString m_family;
};

} // namespace quillary
