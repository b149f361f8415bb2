#include "platform/AudioOutput.h"

#include "platform/ModuleEntry.h"

#include <QLoggingCategory>

namespace quillary::platform {

std::unique_ptr<AudioOutput> systemAudioOutput() {
    QString reason;
    const auto entry = reinterpret_cast<SoundModuleEntry>(moduleEntry(soundModule, soundModuleSymbol, reason));
    if (entry) return std::unique_ptr<AudioOutput>(entry());
    qWarning("The sound output could not be loaded.\n%s", qUtf8Printable(reason));
    return nullptr;
}

} // namespace quillary::platform
