#include "cutout/Cutout.h"

#include "cutout/TestPictures.h"

#include <QColor>
#include <QPainter>
#include <gtest/gtest.h>
#include <vector>

namespace quillary {

namespace {

using namespace test;
using Cutout::Method;

Cutout::Expected result(Method method, std::optional<double> fraction = {}) {
    return Cutout::Result{QImage(1, 1, QImage::Format_RGBA8888_Premultiplied), method, fraction, {}};
}

} // namespace

TEST(Cutout, ChoosesTheMethod) {
    const auto solid = Method::solid;
    const auto subject = Method::subject;
    const auto error = BackgroundRemovalError::noImage();
    struct Case {
        std::optional<Method> asked;
        Cutout::Expected ofSolid;
        std::optional<Method> used; ///< none for the error of the flat pass
        std::vector<Method> called;
    };
    const Case cases[] = {
        {{}, result(solid, 0.6), solid, {solid}},
        {{}, result(solid, 0.0201), solid, {solid}},
        {{}, result(solid, 0.9699), solid, {solid}},
        {{}, result(solid, 0.02), subject, {solid, subject}},
        {{}, result(solid, 0.97), subject, {solid, subject}},
        {{}, result(solid, 1.0), subject, {solid, subject}},
        {{}, std::unexpected(error), {}, {solid}},
        {solid, result(solid, 1.0), solid, {solid}},
        {solid, result(solid, 0.0), solid, {solid}},
        {solid, std::unexpected(error), {}, {solid}},
        {subject, result(solid, 0.6), subject, {subject}},
    };
    for (const Case& c : cases) {
        std::vector<Method> called;
        const auto chosen = Cutout::choose(
            c.asked,
            [&] {
                called.push_back(solid);
                return c.ofSolid;
            },
            [&] {
                called.push_back(subject);
                return result(subject);
            });
        const std::size_t row = static_cast<std::size_t>(&c - cases);
        EXPECT_EQ(called, c.called) << row;
        ASSERT_EQ(chosen.has_value(), c.used.has_value()) << row;
        if (chosen) {
            EXPECT_EQ(chosen->method, *c.used) << row;
        } else {
            EXPECT_EQ(chosen.error(), error) << row;
        }
    }
}

TEST(Cutout, UsesTheEnginesOfTheHouse) {
    QImage logo = TestPictures::filled(100, 100, Qt::white);
    QPainter(&logo).fillRect(25, 25, 50, 50, Qt::black);
    const auto flat = Cutout::remove(logo);
    ASSERT_TRUE(flat);
    EXPECT_EQ(flat->method, Method::solid);
    EXPECT_EQ(flat->removedFraction, 0.75);
    EXPECT_EQ(flat->image.pixel(0, 0), 0U); // no colour shines through where nothing is left

    const QImage full = TestPictures::filled(200, 100, QColor(20, 90, 200));
    const auto nothing = Cutout::remove(full);
    ASSERT_FALSE(nothing);
    EXPECT_EQ(nothing.error(), BackgroundRemovalError::noSubjectFound());
    const auto everything = Cutout::remove(full, Method::solid);
    ASSERT_TRUE(everything);
    EXPECT_EQ(everything->removedFraction, 1.0);
}

} // namespace quillary
