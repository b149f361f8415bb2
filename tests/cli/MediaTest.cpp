#include "samples/Media.h"
#include "cli/ProgramTest.h"

namespace quillary::test {

namespace {

class MediaTest : public ProgramTest {
protected:
    QString sound(const char* name, double seconds) const {
        const auto frames = static_cast<std::int64_t>(seconds * 8000);
        writeFile(m_folder / name, waveFile({.rate = 8000, .channels = 1, .frames = frames}, wobblingTone(200, 8000)));
        return in(name);
    }
};

TEST_F(MediaTest, LengthsPeaksAndFramesAreToldPerFile) {
    const QString one = sound("one.wav", 1.5);
    writeFile(m_folder / "text.wav", "no sound at all");
    const Ended lengths = json({u"audio"_s, u"length"_s, one, in("text.wav")});
    EXPECT_EQ(lengths.status, 1);
    EXPECT_EQ(lengths.array()[0].toObject()["seconds"_L1].toDouble(), 1.5);
    EXPECT_TRUE(lengths.array()[1].toObject()["seconds"_L1].isNull());
    EXPECT_TRUE(lengths.err.contains("text.wav"));

    const QJsonArray peaks = json({u"audio"_s, u"peaks"_s, one, u"--count"_s, u"50"_s}).array();
    ASSERT_EQ(peaks.size(), 50);
    double loudest = 0;
    for (const auto& peak : peaks) loudest = std::max(loudest, peak.toDouble());
    EXPECT_EQ(loudest, 1);
    EXPECT_EQ(json({u"audio"_s, u"peaks"_s, in("text.wav")}).error(), u"The file is damaged or of an unknown kind."_s);
    EXPECT_EQ(json({u"audio"_s, u"peaks"_s, one, u"--count"_s, u"0"_s}).status, 2);

    encode(m_folder / "clip.mp4",
           ClipFile{.muxer = "mp4", .encoder = "libx264", .width = 640, .height = 360, .turn = 90});
    EXPECT_NEAR(json({u"video"_s, u"length"_s, in("clip.mp4")}).array()[0].toObject()["seconds"_L1].toDouble(), 2,
                0.05);
    const QStringList frame{u"video"_s, u"frame"_s, in("clip.mp4"), u"--at"_s, u"1"_s, u"--output"_s, in("frame.png")};
    EXPECT_EQ(json(frame).object()["pixelHeight"_L1].toInt(), 320);
    EXPECT_EQ(QImage(in("frame.png")).size(), QSize(180, 320));
    EXPECT_EQ(run({u"thumbnail"_s, in("clip.mp4"), u"--output"_s, in("tile.png")}).status, 0);
    EXPECT_EQ(QImage(in("tile.png")).size(), QSize(248, 440));
    EXPECT_EQ(json({u"video"_s, u"frame"_s, one, u"--at"_s, u"0"_s, u"--output"_s, in("f.png")}).error(),
              u"The file holds no video."_s);
}

TEST_F(MediaTest, ListsSoundsByLengthAndKeepsTheLengths) {
    const QStringList library{u"--library"_s, in("place")};
    for (const auto& [name, seconds] : {std::pair{"two.wav", 2.0}, {"half.wav", 0.5}, {"one.wav", 1.0}})
        ASSERT_EQ(run(library + QStringList{u"save"_s, sound(name, seconds)}).status, 0);
    writeFile(m_folder / "place/Quillary/Library/Audio/broken.wav", "nothing");

    const auto listed = [&](const QString& sort) {
        QString names;
        for (const auto& entry : json(library + QStringList{u"list"_s, u"audio"_s, u"--sort"_s, sort}).array())
            names += entry.toObject()["name"_L1].toString() + u'=' +
                     QString::number(entry.toObject()["seconds"_L1].toDouble(-1)) + u' ';
        return names;
    };
    EXPECT_EQ(listed(u"shortest"_s), u"half=0.5 one=1 two=2 broken=-1 "_s);
    EXPECT_EQ(listed(u"longest"_s), u"two=2 one=1 half=0.5 broken=-1 "_s);
    const auto kept = m_folder / "place/Quillary/Library/Audio/.audio-durations.json";
    EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(readFile(kept))).object().size(), 3);
    writeFile(kept, "damaged");
    EXPECT_EQ(listed(u"name"_s), u"broken=-1 half=0.5 one=1 two=2 "_s);
    EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(readFile(kept))).object().size(), 3);
}

} // namespace

} // namespace quillary::test
