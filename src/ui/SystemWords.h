#pragma once

#include "platform/SystemWording.h"

#include <QObject>
#include <QString>
#include <QtQmlIntegration>

namespace quillary {

/// `platform::inSystemWords` for views.
class SystemWords : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE static QString in(const QString& text) { return platform::inSystemWords(text); }
};

} // namespace quillary
