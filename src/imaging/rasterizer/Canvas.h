#pragma once

#include "imaging/RasterSize.h"
#include "imaging/rasterizer/Protocol.h"
#include "platform/SharedMemory.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace quillary::rasterizer {

/// The shared pixels as the rasteriser sees them, transparent until drawn on.
struct Pixels {
    std::uint8_t* data;
    int width;
    int height;
    std::size_t stride;
};

/// The answering side: turns a page's size into pixels to draw on, and tells how far it came.
class Canvas {
public:
    static std::optional<Canvas> of(int descriptor, RasterRule rule);

    /// The document is read; its page measures so many points. Absent when no picture can be made of that.
    std::optional<Pixels> begin(double width, double height);
    void finish();
    /// The document cannot be read without a password.
    void tellLocked();

private:
    Canvas(int descriptor, RasterRule rule) : m_descriptor(descriptor), m_rule(rule) {}
    Reply& reply() { return *reinterpret_cast<Reply*>(m_memory->data()); }
    bool map(std::size_t size);

    int m_descriptor;
    RasterRule m_rule;
    std::optional<platform::Mapping> m_memory;
};

/// Draws a document. False when it cannot be read or drawn; the canvas knows which.
bool drawSvg(std::span<const std::byte> document, Canvas& canvas);

/// The entry of the module that reads PDF, which is large and therefore loaded only for one.
using DrawPdf = bool (*)(std::span<const std::byte> document, Canvas& canvas);
inline constexpr const char* pdfModule = "quillary-pdf.so";
inline constexpr const char* drawPdfSymbol = "quillaryDrawPdf";

} // namespace quillary::rasterizer
