// fuzz_seeds FOLDER: writes what the fuzzers begin with, a folder for each below that one.
#include "fuzz/Seeds.h"

#include "fuzz/CacheEntries.h"
#include "samples/Media.h"
#include "samples/Pictures.h"
#include "support/TemporaryFolder.h"

#include <QGuiApplication>

using namespace quillary::test;
namespace fs = std::filesystem;

namespace quillary::fuzz {

namespace {

constexpr auto again = fs::copy_options::recursive | fs::copy_options::overwrite_existing;

void seed(const fs::path& file, const QByteArray& bytes) {
    writeFile(file, bytes);
}

/// No toolkit writes it: four by two pixels of two colours, one of them transparent.
QByteArray gif() {
    return QByteArray::fromHex("474946383961040002008000000000ffffffff21f90405000000002c00000000040002000002044c8e099b"
                               "05003b");
}

/// An entry of the clipboard's fuzzer.
QByteArray offered(int type, const QByteArray& data) {
    QByteArray entry(3, 0);
    entry[0] = static_cast<char>(type);
    entry[1] = static_cast<char>(data.size() & 0xff);
    entry[2] = static_cast<char>(data.size() >> 8);
    return entry + data;
}

} // namespace

void writePictureSeeds(const fs::path& corpora) {
    const QImage rgba = colourful(13, 7);
    const QImage rgb = colourful(48, 32, QImage::Format_RGB888);
    const QImage grey = colourful(9, 16, QImage::Format_Grayscale8);
    const QImage indexed = colourful(16, 9, QImage::Format_Indexed8);
    for (const char* format : {"png", "jpeg", "webp", "bmp", "tiff"}) {
        const fs::path folder = corpora / format;
        int number = 0;
        for (const QImage& image : {rgba, rgb, grey, indexed})
            seed(folder / std::to_string(++number), encoded(image, format));
    }
    seed(corpora / "gif/1", gif());
    seed(corpora / "avif/1", turnedAvif());
    seed(corpora / "heic/1", turnedHeic());
    for (const int orientation : {1, 6, 8})
        seed(corpora / "jpeg" / ("o" + std::to_string(orientation)), orientedJpeg(orientation));
    seed(corpora / "png/header", pngHeader(4, 3));
    for (const char* folder : {"reduced_jpeg", "reduced_png"}) {
        const fs::path from = corpora / (std::string_view(folder).ends_with("jpeg") ? "jpeg" : "png");
        fs::copy(from, corpora / folder, again);
    }
    for (int kind = 0; kind < 5; ++kind)
        seed(corpora / "reduced_png" / ("rows" + std::to_string(kind)), QByteArray(1, static_cast<char>(kind)) +
                                                                            QByteArray("\x40\x20\x30\x41\x21\x21\x01") +
                                                                            QByteArray(400, '\x02'));
}

void writeMediaSeeds(const fs::path& corpora) {
    const Pcm brief{.rate = 8000, .channels = 1, .frames = 1600};
    const Sound tone = wobblingTone(330, brief.rate);
    struct Kind {
        const char* name;
        const char* muxer;
        const char* encoder;
    };
    const fs::path folder = corpora / "media";
    fs::create_directories(folder);
    for (const Pcm& pcm : {brief, Pcm{.rate = 8000, .channels = 2, .frames = 500, .bits = 24},
                           Pcm{.rate = 8000, .channels = 1, .frames = 300, .bits = 32, .floating = true}})
        writeFile(folder / ("wave" + std::to_string(pcm.bits)), waveFile(pcm, tone));
    for (const auto& [name, muxer, encoder] :
         {Kind{"mp3", "mp3", "libmp3lame"}, Kind{"mp2", "mp2", "mp2"}, Kind{"adts", "adts", "aac"},
          Kind{"m4a", "ipod", "aac"}, Kind{"flac", "flac", "flac"}, Kind{"ogg", "ogg", "libvorbis"},
          Kind{"aiff", "aiff", "pcm_s16be"}, Kind{"caf", "caf", "pcm_s16be"}, Kind{"caf alac", "caf", "alac"},
          Kind{"w64", "w64", "pcm_s16le"}, Kind{"mka", "matroska", "flac"}}) {
        Pcm pcm = brief;
        if (std::string_view(encoder).starts_with("lib") || std::string_view(encoder) == "mp2") pcm.rate = 44100;
        encode(folder / name, SoundFile{muxer, encoder, pcm}, tone);
    }
    for (const auto& [name, muxer, encoder] :
         {Kind{"mp4", "mp4", "libx264"}, Kind{"mov", "mov", "libx264"}, Kind{"mkv", "matroska", "mpeg4"},
          Kind{"avi", "avi", "mpeg4"}, Kind{"webm", "webm", "libvpx"}, Kind{"ts", "mpegts", "mpeg2video"}})
        encode(
            folder / name,
            ClipFile{
                .muxer = muxer, .encoder = encoder, .width = 32, .height = 18, .frames = 8, .keyEvery = 4, .turn = 90});
    fs::copy(folder, corpora / "media_headers", again);
}

void writeTextSeeds(const fs::path& corpora) {
    const QByteArray drawing = svg("viewBox='0 0 10 20' width='10'",
                                   "<defs><linearGradient id='g'/></defs><path d='M0 0h5v5z' fill='url(#g)'/>");
    const QByteArray prefixed = "<!DOCTYPE svg [<!ENTITY e 'x'>]><s:svg xmlns:s='http://www.w3.org/2000/svg' "
                                "viewBox='0,0,1.5,2'><s:g>&e;</s:g></s:svg>";
    for (const char* folder : {"svg_transform", "svg_drawing"}) {
        seed(corpora / folder / "1", drawing);
        seed(corpora / folder / "2", svg("width='3in' height='1e1'", "<metadata/><text>t</text><?pi?><!--c-->"));
        seed(corpora / folder / "3", prefixed);
    }
    seed(corpora / "svg_drawing/4",
         svg("width='9' height='9'",
             "<filter id='f'><feGaussianBlur stdDeviation='2'/><feTurbulence/></filter><mask id='m'><use href='#r'/>"
             "</mask><rect id='r' width='5' height='5' filter='url(#f)'/><g mask='url(#m)' clip-path='url(#m)'>"
             "<image href='data:image/png;base64,AAAA'/></g>"));

    enum { text, uris, copied, html, mozilla, svgData, png };
    const fs::path clipboard = corpora / "clipboard";
    seed(clipboard / "1", offered(text, "<p>" + drawing + "</p>"));
    seed(clipboard / "2", offered(uris, "file:///nowhere/a%20b.png\r\nhttps://example.org/c.png?x=1\r\n") +
                              offered(png, encoded(colourful(3, 2), "png")));
    seed(clipboard / "3", offered(copied, "copy\nfile:///nowhere/%C3%BC.svg") + offered(text, "x"));
    seed(clipboard / "4",
         offered(html, "<meta charset='utf-8'><img alt='' src=\"https://example.org/logo%20one.png\">") +
             offered(svgData, drawing));
    seed(clipboard / "5",
         offered(mozilla, QByteArray("h\0t\0t\0p\0:\0/\0/\0a\0/\0b\0", 20)) + offered(png, pngHeader(0, 3)));

    seed(corpora / "durations/1", "{\"/a.wav\\u00010\":1.5,\"/b \xc3\xbc.mp3\\u00010\":2,\"/c\\u00010\":3e2}");
    seed(corpora / "durations/2", "{\"/a.wav\\u00010\":-1,\"/c\\u00010\":\"3\",\"/d\":{\"e\":[null,true,1e400]}}");

    const TemporaryFolder caches;
    const CacheEntries entries(caches.path());
    fs::create_directories(corpora / "caches");
    fs::copy_file(entries.peaks, corpora / "caches/peaks", again);
    fs::copy_file(entries.thumbnail, corpora / "caches/thumbnail", again);
    fs::copy_file(entries.listing, corpora / "caches/listing", again);
}

} // namespace quillary::fuzz

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const QCoreApplication application(argc, argv);
    const fs::path corpora = argv[1];
    quillary::fuzz::writeBlockSeeds(corpora / "blocks");
    quillary::fuzz::writePictureSeeds(corpora);
    quillary::fuzz::writeMediaSeeds(corpora);
    quillary::fuzz::writeTextSeeds(corpora);
    return 0;
}
