#pragma once

#include "panel/PanelParts.h"
#include "platform/ItemProvider.h"

#include <gtest/gtest.h>

namespace quillary::test {

/// A model over a real library in a folder of its own.
class PanelModelTest : public testing::Test, protected PanelParts {
protected:
    PanelModelTest() { make(); }

    void make() {
        model.reset();
        model = std::make_unique<PanelModel>(collaborators());
    }

    /// Lets everything that is under way come home.
    void settle() {
        for (int i = 0; i < 6; ++i) {
            saves.waitForDone();
            work.waitForDone();
            QCoreApplication::processEvents();
        }
    }
    void stage(const std::filesystem::path& path) {
        model->load(path);
        settle();
    }
    void list(Shelf& shelf) {
        shelf.refresh();
        settle();
    }
    ImagesShelf& images() { return *model->imagesShelf(); }
    AudioShelf& audio() { return *model->audioShelf(); }
    /// A picture on the shelf of images.
    std::filesystem::path shelved(const std::filesystem::path& name, const QImage& image = picture(2, 2)) {
        return file("library/Quillary/Library/Images" / name, image);
    }

    std::unique_ptr<PanelModel> model;
};

} // namespace quillary::test
