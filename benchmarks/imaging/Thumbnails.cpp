/// Thumbnails of 220 pixels against QImageReader with a scaled size. Goal: at most 0.9 for JPEG of 12 and PNG of 4
/// megapixels.
///
///     bench_thumbnails [--runs N] [--warm N] [--only TEXT]

#include "imaging/Thumbnail.h"
#include "support/Pictures.h"
#include "support/Rounds.h"

#include <QCoreApplication>
#include <QImageReader>
#include <QTemporaryDir>

int main(int argumentCount, char** arguments) {
    using namespace quillary;
    using namespace quillary::benchmark;
    const QCoreApplication application(argumentCount, arguments);
    const QTemporaryDir folder;
    const struct {
        const char* name;
        int side;
    } files[] = {{"photo.jpg", 3464}, {"photo.png", 2048}};
    for (const auto& file : files) {
        const QString path = folder.filePath(QString::fromLatin1(file.name));
        Pictures::photo(file.side).convertToFormat(QImage::Format_RGB32).save(path);
        Rounds rounds(std::string("thumbnail of ") + file.name, Rounds::options(argumentCount, arguments));
        rounds.add("QImageReader scaled", [&] {
            QImageReader reader(path);
            reader.setScaledSize({Thumbnail::pictureSide, Thumbnail::pictureSide});
            reader.read();
        });
        const std::filesystem::path cache = folder.filePath(QStringLiteral("cache")).toStdString();
        rounds.add("made and kept", [&] {
            std::filesystem::remove_all(cache);
            Thumbnail(cache).load(path.toStdString());
        });
        rounds.add("second start", [&] { Thumbnail(cache).load(path.toStdString()); });
        rounds.print();
    }
}
