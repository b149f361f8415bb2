#include "imaging/png/BandEncoder.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <libdeflate.h>
#include <limits>
#include <utility>

namespace quillary::png {

namespace {

/// Words of the machine's order, alpha on top, as four or three samples.
template <std::size_t Pixel, typename Divide>
void spread(const QRgb* from, std::uint8_t* to, std::size_t width, Divide straight) {
    for (std::size_t x = 0; x < width; ++x, to += Pixel) {
        const QRgb pixel = straight(from[x]);
        to[0] = static_cast<std::uint8_t>(qRed(pixel));
        to[1] = static_cast<std::uint8_t>(qGreen(pixel));
        to[2] = static_cast<std::uint8_t>(qBlue(pixel));
        if constexpr (Pixel == 4) to[3] = static_cast<std::uint8_t>(qAlpha(pixel));
    }
}

constexpr auto same = [](QRgb pixel) { return pixel; };
constexpr auto divided = [](QRgb pixel) { return qUnpremultiply(pixel); };
/// For bytes in the order red, green, blue, alpha.
constexpr auto dividedBytes = [](QRgb pixel) {
    const QRgb straight = qUnpremultiply(qFromLittleEndian(pixel));
    return qRgba(qBlue(straight), qGreen(straight), qRed(straight), qAlpha(straight));
};

void dropFourth(const std::uint8_t* from, std::uint8_t* to, std::size_t width) {
    for (std::size_t x = 0; x < width; ++x) std::copy_n(from + 4 * x, 3, to + 3 * x);
}

} // namespace

bool BandEncoder::isDirect(QImage::Format format) {
    constexpr std::array direct{QImage::Format_RGBA8888,
                                QImage::Format_RGBX8888,
                                QImage::Format_RGB888,
                                QImage::Format_RGB32,
                                QImage::Format_ARGB32,
                                QImage::Format_ARGB32_Premultiplied,
                                QImage::Format_RGBA8888_Premultiplied};
    return std::ranges::find(direct, format) != direct.end();
}

BandEncoder::BandEncoder(const QImage& image)
    : m_image(image)
    , m_bytesPerPixel(bytesPerPixel(image))
    , m_rowBytes(static_cast<std::size_t>(image.width()) * m_bytesPerPixel)
    , m_filter(m_rowBytes, m_bytesPerPixel)
    , m_current(m_rowBytes)
    , m_above(m_rowBytes) {}

const std::uint8_t* BandEncoder::samples(int row, std::vector<std::uint8_t>& storage) const {
    const std::uint8_t* line = m_image.constScanLine(row);
    const auto* words = reinterpret_cast<const QRgb*>(line);
    const auto width = static_cast<std::size_t>(m_image.width());
    switch (m_image.format()) {
    case QImage::Format_RGBX8888:
        dropFourth(line, storage.data(), width);
        break;
    case QImage::Format_RGB32:
        spread<3>(words, storage.data(), width, same);
        break;
    case QImage::Format_ARGB32:
        spread<4>(words, storage.data(), width, same);
        break;
    case QImage::Format_ARGB32_Premultiplied:
        spread<4>(words, storage.data(), width, divided);
        break;
    case QImage::Format_RGBA8888_Premultiplied:
        spread<4>(words, storage.data(), width, dividedBytes);
        break;
    default:
        return line;
    }
    return storage.data();
}

void BandEncoder::filterRows(int firstRow, int rows, Method::Filters filters) {
    m_filtered.resize(static_cast<std::size_t>(rows) * (m_rowBytes + 1));
    const std::uint8_t* above = firstRow > 0 ? samples(firstRow - 1, m_above) : nullptr;
    std::uint8_t* out = m_filtered.data();
    for (int row = firstRow; row < firstRow + rows; ++row, out += m_rowBytes + 1) {
        const std::uint8_t* current = samples(row, m_current);
        switch (filters) {
        case Method::Filters::none:
            m_filter.apply(Filter::none, current, above, out);
            break;
        case Method::Filters::up:
            m_filter.apply(Filter::up, current, above, out);
            break;
        case Method::Filters::best:
            m_filter.applyBest(current, above, out);
            break;
        }
        above = current;
        std::swap(m_current, m_above);
    }
}

void BandEncoder::writeRows(int rows, bool matches) {
    m_writer.begin(m_filtered.data());
    if (matches)
        m_matcher.write(m_filtered.data(), static_cast<std::size_t>(rows), static_cast<std::size_t>(m_image.width()),
                        m_bytesPerPixel, m_writer);
    else
        writeRuns(m_filtered.data(), m_filtered.size(), m_writer);
}

BandEncoder::Method BandEncoder::bestMethod(int firstRow, int rows) {
    using enum Method::Filters;
    // Ordered by speed: a slower one must be clearly smaller.
    constexpr std::array methods{Method{none, true}, Method{up, true}, Method{best, false}, Method{best, true}};
    constexpr int sampleRows = 4;
    constexpr double clearly = 0.97;
    const int sampled = std::min(rows, sampleRows);
    const int middle = firstRow + (rows - sampled) / 2;
    Method chosen = methods.front();
    double least = std::numeric_limits<double>::max();
    for (const Method& method : methods) {
        filterRows(middle, sampled, method.filters);
        writeRows(sampled, method.matches);
        m_writer.alignedEnd(false);
        const auto size = static_cast<double>(m_writer.output().size());
        if (size >= least * clearly) continue;
        least = size;
        chosen = method;
    }
    return chosen;
}

const BitWriter& BandEncoder::encode(int firstRow, int rows, bool last) {
    const Method method = bestMethod(firstRow, rows);
    filterRows(firstRow, rows, method.filters);
    writeRows(rows, method.matches);
    m_writer.alignedEnd(last);
    return m_writer.output();
}

std::uint32_t BandEncoder::checksum() const {
    return libdeflate_adler32(1, m_filtered.data(), m_filtered.size());
}

} // namespace quillary::png
