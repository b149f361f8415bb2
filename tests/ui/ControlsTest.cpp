#include "ui/PictureScaling.h"
#include "ui/PictureView.h"
#include "ui/Symbols.h"

#include <QDirIterator>
#include <QColor>
#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QRawFont>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace quillary::test {

namespace {

TEST(PictureScalingTest, AveragesHugePicturesInBlocks) {
    using namespace PictureScaling;
    QImage huge(hugeSide + 2, 6, QImage::Format_RGBA8888_Premultiplied);
    huge.fill(Qt::transparent);
    for (int y = 0; y < huge.height(); ++y)
        for (int x = y % 2; x < huge.width(); x += 2) huge.setPixelColor(x, y, Qt::white);
    const QImage small = reduced(huge);
    ASSERT_EQ(small.size(), QSize(hugeSide / 2 + 1, 3));
    EXPECT_EQ(small.pixel(0, 0), qRgba(128, 128, 128, 128));
    EXPECT_EQ(small.pixel(small.width() - 1, 2), qRgba(128, 128, 128, 128));

    const QImage usual(20, 10, QImage::Format_RGB32);
    EXPECT_EQ(reduced(usual).cacheKey(), usual.cacheKey());
    EXPECT_EQ(scaledDown(usual, {10, 5}).size(), QSize(10, 5));
    EXPECT_EQ(scaledDown(usual, {40, 20}).size(), QSize(20, 10)) << "the screen enlarges, not the worker";
    std::stop_source stop;
    stop.request_stop();
    EXPECT_TRUE(reduced(huge, stop.get_token()).isNull());
}

TEST(PictureViewTest, FitsAndCenters) {
    EXPECT_EQ(PictureView::fitted({200, 100}, {100, 100}), QRectF(0, 25, 100, 50));
    EXPECT_EQ(PictureView::fitted({1, 2}, {100, 100}), QRectF(25, 0, 50, 100)) << "small pictures fill the view too";
    EXPECT_TRUE(PictureView::fitted({0, 0}, {100, 100}).isEmpty());
}

double luminance(const QColor& color) {
    const auto linear = [](double part) { return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

TEST(ThemeTest, TextsStandOutFromTheirGrounds) {
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nimport Quillary.Controls\nQtObject { readonly property QtObject theme: Theme }", {});
    const std::unique_ptr<QObject> holder(component.create());
    ASSERT_TRUE(holder) << component.errorString().toStdString();
    auto* theme = holder->property("theme").value<QObject*>();
    const struct {
        const char* ink;
        std::vector<const char*> grounds;
    } rows[] = {
        {"text", {"window", "field", "control", "controlHover", "controlPressed", "segment", "sheet", "accentGround"}},
        {"softText", {"window", "raised", "control", "segment", "sheet", "row"}},
        {"secondary", {"window", "well", "field", "stage", "row", "sheet", "targeted"}},
        {"accentText", {"window", "sheet", "accentGround", "row"}},
        {"accentInk", {"accentFill", "accentFillHover", "accentFillPressed"}},
        {"good", {"window", "sheet"}},
        {"warning", {"window", "sheet", "raised"}},
        {"danger", {"window", "sheet", "control", "dangerHover"}},
    };
    for (const bool dark : {true, false}) {
        theme->setProperty("dark", dark);
        const auto of = [&](const char* name) { return luminance(theme->property(name).value<QColor>()); };
        for (const auto& [ink, grounds] : rows)
            for (const char* ground : grounds) {
                const auto [low, high] = std::minmax({of(ink), of(ground)});
                EXPECT_GE((high + 0.05) / (low + 0.05), 4.5) << ink << " on " << ground << (dark ? ", dark" : ", light");
            }
    }
}

TEST(SymbolsTest, AreInTheFontAndNamedRightEverywhere) {
    const Symbols symbols;
    ASSERT_FALSE(symbols.family().isEmpty());
    const QRawFont font = QRawFont::fromFont(QFont(symbols.family(), 16));
    for (const auto& [name, code] : Symbols::table()) EXPECT_TRUE(font.supportsCharacter(QChar(code))) << name;

    const QRegularExpression text(QStringLiteral("\"([a-z0-9.]+)\""));
    const QRegularExpression use(QStringLiteral("(?:symbol|name): .*\""));
    int found = 0;
    QDirIterator files(QStringLiteral(":/qt/qml/Quillary"), {QStringLiteral("*.qml")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        for (const QByteArray& line : file.readAll().split('\n')) {
            const QString code = QString::fromUtf8(line);
            if (!use.match(code).hasMatch() || code.contains(u"? \"\"")) continue;
            for (const auto& match : text.globalMatch(code)) {
                ++found;
                EXPECT_FALSE(symbols.glyph(match.captured(1)).isEmpty())
                    << file.fileName().toStdString() << line.data();
            }
        }
    }
    EXPECT_GT(found, 15);
}

} // namespace

} // namespace quillary::test
