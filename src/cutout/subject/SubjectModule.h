#pragma once

#include <cstddef>
#include <cstdint>
#include <stop_token>
#include <string>

/// What the modules that find a subject offer. They link large libraries, so each is loaded on first use; this header
/// therefore shows plain types only.
namespace quillary::subject {

/// A picture: four bytes a pixel, red, green, blue and one that is ignored, in rows of `stride` bytes. sRGB.
struct Picture {
    const std::uint8_t* pixels;
    std::size_t stride;
    int width;
    int height;
};

enum class Outcome {
    found,     ///< the mask is filled
    noSubject, ///< nothing stands out; the mask is undefined, as in the cases below
    stopped,
    failed ///< the engine cannot work on this; `reason` tells why, for the user
};

/// Any thread, one call at a time.
class Engine {
public:
    virtual ~Engine() = default;

    /// Fills `mask`, one byte a pixel in rows of `maskStride` bytes: 0 background … 255 subject, soft at the edge.
    virtual Outcome findSubject(const Picture& picture, std::uint8_t* mask, std::size_t maskStride,
                                const std::stop_token& stop, std::string& reason) = 0;
};

/// The modules and their one entry. `modelFile` is a path for the engine that reads a model and null for the other.
/// Null, with a reason, when the engine cannot be made.
inline constexpr const char* classicalModule = "quillary-subject.so";
inline constexpr const char* modelModule = "quillary-subject-model.so";
inline constexpr const char* engineSymbol = "quillarySubjectEngine";
using EngineEntry = Engine* (*)(const char* modelFile, std::string* reason);

} // namespace quillary::subject
