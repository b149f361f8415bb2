#pragma once

#include "PanelStage.h"
#include "base/Translation.h"

#include <QDir>
#include <QGuiApplication>
#include <cstdio>

namespace quillary::test {

/// Where a gallery saves the pictures of its stage.
class GalleryPictures {
public:
    GalleryPictures(PanelStage& stage, const char* folder) : m_stage(stage), m_folder(QString::fromLocal8Bit(folder)) {
        QDir().mkpath(m_folder);
    }
    /// Once everything that moves has come to rest.
    void take(const char* name) {
        PanelStage::wait(500);
        const QString file = m_folder + u'/' + QString::fromLatin1(name) + QStringLiteral(".png");
        if (!m_stage.window.grabWindow().save(file)) std::fprintf(stderr, "Could not write %s.\n", qPrintable(file));
    }

private:
    PanelStage& m_stage;
    QString m_folder;
};

/// A program that makes a `Gallery` of the folder named as its argument, shows its `stage` and lets it take its
/// pictures.
template <typename Gallery>
int runGallery(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    installEnglish();
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    Gallery gallery(argv[1]);
    if (!gallery.stage.show({380, 460})) {
        std::fprintf(stderr, "%s\n", qPrintable(gallery.stage.errors));
        return 1;
    }
    gallery.takeAll();
    return 0;
}

} // namespace quillary::test
