#include "base/Text.h"
#include "base/Try.h"
#include "cli/Commands.h"
#include "cli/ImageFile.h"
#include "cli/MediaHundredths.h"
#include "cli/ProgressBar.h"
#include "media/ClipFrames.h"
#include "media/MediaLength.h"
#include "media/Peaks.h"
#include "media/VideoScrubber.h"

#include <charconv>
#include <cmath>

namespace quillary::cli {

namespace fs = std::filesystem;

namespace {

/// Files are named in messages as they were given.
QString named(const fs::path& file, media::MediaError error) {
    return QStringLiteral("%1: %2").arg(shown(file), media::description(error));
}

template <typename T>
std::expected<T, CommandError> numberIn(const QString& text, const char* what) {
    const std::string bytes = text.toStdString();
    T value{};
    const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), value);
    if (error != std::errc() || end != bytes.data() + bytes.size())
        return std::unexpected(
            CommandError::usage(QStringLiteral("%1: “%2” is no number.").arg(QLatin1StringView(what), text)));
    return value;
}

class Peaks final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FILE", m_file, Value::file, "The sound");
        grammar.text("--count", m_count, "N", "How many values; 2000 unless told");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices&, Output& output) override {
        constexpr int most = 1'000'000;
        const int count = m_count ? TRY(numberIn<int>(*m_count, "--count")) : media::waveformPeaks;
        if (count < 1 || count > most)
            return std::unexpected(CommandError::usage(QStringLiteral("--count takes 1 to %1.").arg(most)));
        BatchProgress progress;
        std::optional<ProgressBar> bar(std::in_place, progress, output);
        const auto peaks = media::readPeaks(m_file, count, {}, hundredths(progress).report);
        bar.reset();
        if (!peaks) return std::unexpected(CommandError(media::description(peaks.error())));
        if (output.json()) {
            QJsonArray array;
            for (const float peak : *peaks) array.append(static_cast<double>(peak));
            output.document(array);
        } else {
            for (const float peak : *peaks) output.line(QString::number(static_cast<double>(peak), 'f', 4));
        }
        return ExitStatus::done;
    }

    fs::path m_file;
    std::optional<QString> m_count;
};

using LengthOf = std::expected<double, media::MediaError> (*)(const fs::path&, std::stop_token);

template <LengthOf lengthOf>
class Length final : public Command {
    void declare(Grammar& grammar) override { grammar.files("FILE", m_files, "The files"); }

    std::expected<ExitStatus, CommandError> run(const CommandServices&, Output& output) override {
        auto status = ExitStatus::done;
        QJsonArray array;
        std::vector<Output::Row> table;
        BatchProgress progress;
        progress.total = static_cast<int>(m_files.size());
        std::optional<ProgressBar> bar(std::in_place, progress, output);
        for (const fs::path& file : m_files) {
            const auto seconds = lengthOf(file, {});
            ++progress.done;
            if (!seconds) {
                output.problem(named(file, seconds.error()));
                status = ExitStatus::failed;
            }
            array.append(QJsonObject{{QStringLiteral("path"), jsonPath(file)},
                                     {QStringLiteral("seconds"), seconds ? QJsonValue(*seconds) : QJsonValue()}});
            table.push_back({seconds ? QString::number(*seconds, 'f', 3) : QStringLiteral("–"), shown(file)});
        }
        bar.reset();
        if (output.json())
            output.document(array);
        else
            output.table(table, {0}, {Output::Paint::strong, Output::Paint::plain});
        return status;
    }

    std::vector<fs::path> m_files;
};

std::expected<QImage, media::MediaError> frameOf(const fs::path& clip, double at) {
    return TRY(media::ClipFrames::open(clip))
        .frame(at, VideoScrubber::tolerance, VideoScrubber::tolerance, VideoScrubber::longestSide);
}

class VideoFrame final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FILE", m_file, Value::file, "The clip");
        grammar.text("--at", m_at, "SECONDS", "The time in the clip");
        grammar.path("--output", m_output, Value::file, "Write the PNG here");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices&, Output& output) override {
        const double at = TRY(numberIn<double>(m_at, "--at"));
        if (!(at >= 0) || !std::isfinite(at))
            return std::unexpected(CommandError::usage(QStringLiteral("--at takes seconds from 0 on.")));
        const auto frame = frameOf(m_file, at);
        if (!frame) return std::unexpected(CommandError(media::description(frame.error())));
        TRY(writePng(*frame, m_output));
        tellSize(*frame, output);
        return ExitStatus::done;
    }

    fs::path m_file;
    fs::path m_output;
    QString m_at;
};

} // namespace

void declareMedia(Grammar& root) {
    Grammar audio = root.group("audio", "Look into sounds");
    audio.command<Peaks>("peaks", "The waveform of a sound");
    audio.command<Length<media::audioLength>>("length", "How long sounds play");
    Grammar video = root.group("video", "Look into clips");
    video.command<Length<media::videoLength>>("length", "How long clips play");
    video.command<VideoFrame>("frame", "Fetch one frame of a clip");
}

} // namespace quillary::cli
