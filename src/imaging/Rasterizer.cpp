#include "imaging/Rasterizer.h"

#include "base/Text.h"
#include "imaging/rasterizer/Protocol.h"
#include "platform/HelperProcess.h"
#include "platform/OpenFile.h"
#include "platform/SharedMemory.h"

#include <QCoreApplication>
#include <QFile>
#include <QLoggingCategory>
#include <array>
#include <memory>
#include <optional>
#include <string>

namespace quillary::Rasterizer {

namespace {

using platform::HelperProcess;
using platform::Mapping;
using platform::SharedMemory;
using rasterizer::Reply;
using rasterizer::Stage;

/// A document's descriptor: an opened file, or a sealed copy of pasted bytes.
class Document {
public:
    explicit Document(const Source& source) {
        if (const auto* bytes = std::get_if<QByteArray>(&source)) {
            if (auto memory = SharedMemory::sealed(std::as_bytes(std::span(bytes->constData(), bytes->size()))))
                m_memory.emplace(*std::move(memory));
            return;
        }
        // Told by `descriptor`.
        static_cast<void>(platform::openForReading(m_file, std::get<std::filesystem::path>(source)));
    }

    std::optional<int> descriptor() const {
        if (m_memory) return m_memory->descriptor();
        if (m_file.isOpen()) return m_file.handle();
        return std::nullopt;
    }

private:
    QFile m_file;
    std::optional<SharedMemory> m_memory;
};

QImage imageOn(Mapping memory, const Reply& reply) {
    auto owner = std::make_unique<Mapping>(std::move(memory));
    auto* pixels = reinterpret_cast<uchar*>(owner->data()) + rasterizer::pixelOffset;
    return QImage(
        pixels, static_cast<int>(reply.width), static_cast<int>(reply.height), reply.stride,
        QImage::Format_ARGB32_Premultiplied, [](void* mapping) { delete static_cast<Mapping*>(mapping); },
        owner.release());
}

/// The other process is not trusted: what it says must fit what it left.
bool isConsistent(const Reply& reply, std::size_t size) {
    if (!isDrawable(reply.width, reply.height) || reply.stride != std::uint64_t(reply.width) * 4) return false;
    return size == rasterizer::pixelOffset + std::size_t(reply.stride) * reply.height;
}

std::expected<QImage, Error> result(SharedMemory& pixels, bool ended) {
    if (!pixels.fixSize()) return std::unexpected(Error::unreadable);
    auto memory = Mapping::of(pixels.descriptor(), Mapping::Access::write);
    if (!memory || memory->size() < rasterizer::pixelOffset) return std::unexpected(Error::unreadable);
    const Reply reply = *reinterpret_cast<const Reply*>(memory->data());
    if (reply.stage == Stage::loading) return std::unexpected(Error::unreadable);
    if (reply.stage == Stage::locked) return std::unexpected(Error::locked);
    if (!ended || reply.stage != Stage::done || !isConsistent(reply, memory->size()))
        return std::unexpected(Error::notDrawn);
    return imageOn(std::move(*memory), reply);
}

} // namespace

std::expected<QImage, Error> draw(const Source& source, Format format, RasterRule rule, std::stop_token stop,
                                  std::chrono::milliseconds limit) {
    const Document document(source);
    auto pixels = SharedMemory::create();
    if (!document.descriptor() || !pixels) return std::unexpected(Error::unreadable);

    // The processor's limit only matters when nobody is left to watch the clock.
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(limit).count() + 1;
    const std::array<std::string, 4> arguments{format == Format::pdf ? "pdf" : "svg",
                                               rule.kind == RasterRule::Kind::fit ? "fit" : "enlarge",
                                               std::to_string(rule.longEdge), std::to_string(seconds)};
    const std::array descriptors{*document.descriptor(), pixels->descriptor()};
    const std::filesystem::path program = pathOf(QCoreApplication::applicationDirPath()) / "quillary-rasterizer";
    const auto outcome = HelperProcess{program, arguments, descriptors, limit}.run(stop);
    switch (outcome.end) {
    case HelperProcess::End::notStarted:
        qWarning("%s could not be started.", program.c_str());
        return std::unexpected(Error::unreadable);
    case HelperProcess::End::stopped:
        return std::unexpected(Error::notDrawn);
    default:
        return result(*pixels, outcome.end == HelperProcess::End::exited && outcome.status == 0);
    }
}

} // namespace quillary::Rasterizer
