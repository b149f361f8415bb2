#include "cli/BlockDescription.h"

#include <QJsonArray>

namespace quillary::cli {

namespace {

QString word(Arrangement::Layer::Kind kind) {
    using Kind = Arrangement::Layer::Kind;
    switch (kind) {
    case Kind::title:
        return QStringLiteral("title");
    case Kind::graphic:
        return QStringLiteral("graphic");
    case Kind::clip:
        return QStringLiteral("clip");
    case Kind::other:
        break;
    }
    return QStringLiteral("other");
}

} // namespace

QJsonObject described(const Arrangement::Summary& summary) {
    QJsonArray layers;
    for (const auto& layer : summary.layers)
        layers.append(QJsonObject{{QStringLiteral("name"), layer.name},
                                  {QStringLiteral("lane"), layer.lane},
                                  {QStringLiteral("kind"), word(layer.kind)}});
    return {{QStringLiteral("seconds"), summary.seconds},
            {QStringLiteral("usesGlidemark"), summary.usesGlidemark},
            {QStringLiteral("layers"), layers}};
}

} // namespace quillary::cli
