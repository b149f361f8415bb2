#pragma once

#include "blocks/BlockHealth.h"
#include "values/Arrangement.h"

#include <QList>
#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace quillary {

/// What a block's tile tells beside its name, as its views read it.
struct BlockDetails {
    Q_GADGET
    QML_VALUE_TYPE(blockDetails)
    /// The number of layers and the length, such as "2 layers · 10.0s".
    Q_PROPERTY(QString subtitle MEMBER subtitle FINAL)
    Q_PROPERTY(bool usesGlidemark MEMBER usesGlidemark FINAL)
    /// A file: URL, empty without a poster; the stamp changes with the picture.
    Q_PROPERTY(QString poster MEMBER poster FINAL)
    Q_PROPERTY(QString posterStamp MEMBER posterStamp FINAL)
    /// The kind of each layer (Arrangement::Layer::Kind), from the highest lane down; within a lane in document order.
    /// Of many layers only the highest: a tile shows a few.
    Q_PROPERTY(QList<int> bars MEMBER bars FINAL)

    /// What is wrong with its media, such as "2 missing"; empty while nothing is.
    Q_PROPERTY(QString problem MEMBER problem FINAL)
    /// The files that this is about, by name.
    Q_PROPERTY(QString problemFiles MEMBER problemFiles FINAL)
    /// Whether media are missing or cut short, not merely elsewhere.
    Q_PROPERTY(bool isIncomplete MEMBER isIncomplete FINAL)

public:
    /// `health` may be null.
    static BlockDetails of(const Arrangement& block, const BlockHealth* health = nullptr);

    QString subtitle;
    bool usesGlidemark = false;
    QString poster;
    QString posterStamp;
    QList<int> bars;
    QString problem;
    QString problemFiles;
    bool isIncomplete = false;
};

} // namespace quillary
