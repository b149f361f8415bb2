#include "cutout/MatteRefiner.h"
#include "panel/PanelModelFixture.h"
#include "support/Jam.h"

#include <QPainter>
#include <QSignalSpy>

namespace quillary::test {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;
using Method = PanelModel::CutoutMethod;
using Progress = PanelModel::CutoutProgress;

namespace {

/// A black disc on white.
QImage logo(int side) {
    QImage image = picture(side, side, Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::black);
    painter.drawEllipse(QRectF(side / 4.0, side / 4.0, side / 2.0, side / 2.0));
    return image;
}

QImage drawn(const fs::path& file) {
    return QImage(QString::fromStdString(file.string())).convertToFormat(QImage::Format_RGBA8888_Premultiplied);
}

} // namespace

class CutoutFlowTest : public PanelModelTest {
protected:
    void cutOut(const QImage& image = logo(120)) {
        stage(file("logo.png", image));
        model->removeBackground();
        settle();
    }
    QImage refined(double amount) const { return MatteRefiner::refine(model->rawCutout(), amount); }
};

TEST_F(CutoutFlowTest, ChoosesRunsAndShows) {
    stage(file("logo.png", logo(120)));
    model->setShowCutout(false);
    {
        const Jam jam(work);
        model->removeBackground();
        EXPECT_EQ(model->cutoutProgress(), Progress::working);
        EXPECT_FALSE(model->hasCutout());
    }
    settle();
    EXPECT_EQ(model->cutoutProgress(), Progress::ready);
    EXPECT_EQ(model->cutoutMethod(), Method::solid);
    EXPECT_TRUE(model->showCutout());
    EXPECT_EQ(model->rawCutout().pixel(0, 0), 0U);
    EXPECT_EQ(model->cutout(), refined(0.3));
    EXPECT_EQ(model->displayImage(), model->cutout());
    EXPECT_EQ(model->stagedBadge(), u"cutout · flat background"_s);
    model->setShowCutout(false);
    EXPECT_EQ(model->stagedBadge(), u"RGBA"_s);
    EXPECT_EQ(model->displayImage().pixelColor(0, 0), QColor(Qt::white));

    model->settings()->setSubjectModel(QString::fromStdString(folder / "gone.onnx"));
    model->removeBackground(Method::subject);
    settle();
    EXPECT_EQ(model->cutoutMethod(), Method::subject);
    EXPECT_TRUE(model->cutoutNote().startsWith(u"The subject model “gone.onnx” cannot be used:"_s));
    model->settings()->setSubjectModel({});
    model->removeBackground(Method::subject);
    settle();
    EXPECT_EQ(model->cutoutNote(), QString());
}

TEST_F(CutoutFlowTest, TouchesUpWhatIsShownAndDragged) {
    QImage ring = logo(120);
    QPainter(&ring).fillRect(QRect(50, 50, 20, 20), Qt::white);
    cutOut(ring);
    const QImage plain = model->cutout();
    EXPECT_EQ(model->edgeBase(), model->rawCutout());
    TouchUpModel& touchUp = *model->touchUp();
    touchUp.setTrim(true);
    settle();
    EXPECT_EQ(model->cutoutFrame(), QRectF(0.25, 0.25, 0.5, 0.5));
    EXPECT_EQ(model->stagedDimensions(), u"60 × 60"_s);
    touchUp.setEnclosed(true);
    // Asked for while the touch is under way, the file is that of the touched picture.
    const QImage dragged = drawn(*model->fileOnDisk());
    EXPECT_EQ(dragged.size(), QSize(60, 60));
    EXPECT_EQ(qAlpha(dragged.pixel(30, 30)), 0);
    EXPECT_EQ(qAlpha(model->edgeBase().pixel(60, 60)), 0);
    EXPECT_EQ(qAlpha(model->rawCutout().pixel(60, 60)), 255);
    model->setEdgeRefine(0.6);
    settle();
    EXPECT_EQ(qAlpha(model->cutout().pixel(30, 30)), 0);
    model->setEdgeRefine(0.3);
    touchUp.setEnclosed(false);
    touchUp.setTrim(false);
    settle();
    EXPECT_EQ(model->cutout(), plain);
    model->setShowCutout(false);
    EXPECT_EQ(model->stagedDimensions(), u"120 × 120"_s);
}

TEST_F(CutoutFlowTest, AFailureTellsWhyAndKeepsWhatWasThere) {
    const auto flat = file("flat.png", picture(64, 40, Qt::blue));
    stage(flat);
    model->removeBackground();
    settle();
    EXPECT_EQ(model->cutoutProgress(), Progress::failed);
    EXPECT_EQ(model->cutoutFailure(), u"No subject found to cut out."_s);
    EXPECT_TRUE(model->cutoutSuggestion().startsWith(u"This works on a subject against a background"_s));
    EXPECT_EQ(model->displayImage().pixelColor(0, 0), QColor(Qt::blue));
    model->removeBackground(Method::solid);
    settle();
    EXPECT_EQ(model->cutoutProgress(), Progress::ready) << "asked for, it is accepted though nothing is left";
    EXPECT_EQ(model->cutoutFailure(), QString());
    EXPECT_EQ(model->cutout().pixel(20, 20), 0U);

    cutOut();
    model->removeBackground(Method::subject);
    model->stopRemoval();
    settle();
    EXPECT_EQ(model->cutoutProgress(), Progress::ready);
    EXPECT_EQ(model->cutoutMethod(), Method::solid);
    stage(flat);
    model->removeBackground();
    model->stopRemoval();
    settle();
    EXPECT_EQ(model->cutoutProgress(), Progress::none);
}

TEST_F(CutoutFlowTest, ABurstOfEdgesLeavesOneStoredResult) {
    model->setEdgeRefine(0.5);
    settle();
    EXPECT_FALSE(model->hasCutout()) << "without a cut-out there is nothing to refine";
    model->setEdgeRefine(0.3);
    cutOut();
    const QSignalSpy stored(model.get(), &PanelModel::displayImageChanged);
    model->setEdgeRefine(0.3005);
    EXPECT_FALSE(model->refining());
    {
        const Jam jam(work);
        for (const double amount : {0.6, 0.8, 0.55}) model->setEdgeRefine(amount);
        EXPECT_TRUE(model->refining());
    }
    settle();
    EXPECT_EQ(stored.count(), 1);
    EXPECT_EQ(model->cutout(), refined(0.55));
    model->setEdgeRefine(0);
    settle();
    EXPECT_EQ(model->cutout(), model->rawCutout());
}

TEST_F(CutoutFlowTest, NothingOfAnOlderImageIsEverShown) {
    const auto other = file("other.png", picture(50, 30, Qt::green));
    const auto away = {+[](PanelModel& panel, const fs::path& next) { panel.load(next); },
                       +[](PanelModel& panel, const fs::path&) { panel.clear(); },
                       +[](PanelModel& panel, const fs::path&) { panel.handleDrop({}); }};
    for (const auto leave : away) {
        cutOut();
        {
            const Jam jam(work);
            model->setEdgeRefine(model->edgeRefine() + 0.1);
            model->removeBackground();
            leave(*model, other);
            EXPECT_FALSE(model->hasCutout());
            EXPECT_TRUE(model->rawCutout().isNull());
            EXPECT_EQ(model->cutoutProgress(), Progress::none);
            if (model->staging()) model->removeBackground();
            EXPECT_EQ(model->cutoutProgress(), Progress::none) << "the image that is going away is not cut out";
        }
        settle();
        EXPECT_FALSE(model->hasCutout());
        EXPECT_EQ(model->cutoutProgress(), Progress::none);
        EXPECT_FALSE(model->imageToExport() && model->imageToExport()->name.endsWith(u"cutout"));
    }
    cutOut();
    model->removeBackground(Method::subject);
    model->setEdgeRefine(0.9);
    model.reset();
}

TEST_F(CutoutFlowTest, WhatIsShownIsSavedAndDragged) {
    cutOut();
    const auto cutout = model->fileOnDisk();
    ASSERT_TRUE(cutout);
    EXPECT_EQ(cutout->filename(), "logo cutout.png");
    EXPECT_EQ(drawn(*cutout).pixel(0, 0), 0U);
    model->setShowCutout(false);
    settle();
    const auto original = model->fileOnDisk();
    EXPECT_EQ(original->filename(), "logo.png");
    EXPECT_EQ(drawn(*original).pixelColor(0, 0), QColor(Qt::white));

    model->setShowCutout(true);
    DragRequest tighter;
    {
        // The whole picture is not refined yet; drag and save begin all the same with the edge that was asked for.
        const Jam jam(work);
        model->setEdgeRefine(1);
        model->offerStaged(&tighter);
        model->saveCurrentToLibrary();
        EXPECT_TRUE(model->refining());
    }
    const auto files = tighter.lateFiles();
    EXPECT_EQ(files, std::vector{root() / "Recent/logo cutout 2.png"});
    EXPECT_EQ(drawn(files.front()), refined(1));
    settle();
    EXPECT_EQ(model->staged(), files.front()) << "what was refined for the drag is what is staged";
    EXPECT_EQ(model->librarySaveNote(), u"Cutout saved to your library"_s);
    EXPECT_EQ(drawn(root() / "Library/Images/logo cutout.png"), refined(1));

    // Brought back from the library, it is staged without its cut-out.
    model->editInIntake(images().library().front());
    settle();
    EXPECT_EQ(model->stagedName(), u"logo cutout"_s);
    EXPECT_FALSE(model->hasCutout());
}

TEST_F(CutoutFlowTest, OddPicturesEndWell) {
    const auto clear = [](int width, int height) {
        QImage image(width, height, QImage::Format_RGBA8888);
        image.fill(Qt::transparent);
        return image;
    };
    for (const QImage& odd :
         {picture(1, 1), picture(1, 8192), clear(30, 20), logo(90).convertToFormat(QImage::Format_RGBA64),
          logo(90).convertToFormat(QImage::Format_Grayscale8)}) {
        stage(file("odd.png", odd));
        ASSERT_EQ(model->stage(), PanelModel::Stage::loaded);
        for (const auto method : {Method::solid, Method::subject}) {
            model->removeBackground(method);
            settle();
            EXPECT_TRUE(model->cutoutProgress() == Progress::ready || model->cutoutProgress() == Progress::failed);
            EXPECT_EQ(model->imageToExport()->image.size(), odd.size());
        }
    }
}

} // namespace quillary::test
