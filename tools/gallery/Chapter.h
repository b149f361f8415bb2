#pragma once

#include "media/ClipFrames.h"
#include "support/FakeAudioOutput.h"
#include "ui/PanelStage.h"

#include <QDir>
#include <QKeyEvent>
#include <cstdio>

namespace quillary::gallery {

/// Takes pictures of a stage of its own and saves them in a folder.
class Chapter {
public:
    explicit Chapter(const QString& folder, const std::filesystem::path& builtInSets = {})
        : stage(
              builtInSets, [this] { return std::make_unique<test::FakeAudioOutput>(sound); }, media::clipThumbnail)
        , m_folder(folder) {
        QDir().mkpath(folder);
        if (!stage.show({380, 460})) qFatal("%s", qPrintable(stage.errors));
    }

protected:
    /// Once everything that moves has come to rest.
    void take(const char* name) {
        test::wait(500);
        const QString file = m_folder + u'/' + QString::fromLatin1(name) + QStringLiteral(".png");
        if (!stage.window.grabWindow().save(file)) std::fprintf(stderr, "Could not write %s.\n", qPrintable(file));
    }
    /// In a window of another size.
    void take(const char* name, QSize size) {
        stage.resize(size);
        take(name);
        stage.resize({380, 460});
    }
    void press(Qt::Key key, int times = 1) {
        for (int time = 0; time < times; ++time)
            for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
                QKeyEvent event(type, key, Qt::NoModifier);
                QCoreApplication::sendEvent(&stage.window, &event);
            }
    }

    static constexpr QSize small{320, 400};
    static constexpr QSize large{900, 700};
    test::FakeAudioOutput::Log sound;
    test::PanelStage stage;

private:
    QString m_folder;
};

/// Every state of the panel, from the first paste to the settings.
void takePanel(const QString& folder);
/// The shelves of sounds and clips.
void takeMedia(const QString& folder);

} // namespace quillary::gallery
