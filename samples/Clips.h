#pragma once

#include <QByteArray>
#include <filesystem>
#include <vector>

namespace quillary::test {

/// Documents as an editor's browser drags them: the resources, then the bare clip.

/// One asset with its file. From version 1.9 on it has a `media-rep` with a bookmark, before it is the asset that
/// carries both.
struct ClipAsset {
    QByteArray id = "r2";
    QByteArray uid = "A1B2C3D4E5F60718293A4B5C6D7E8F90";
    std::filesystem::path file = {};
    QByteArray more = R"( start="0s" duration="5005/1000s" hasVideo="1" format="r1")";
    QByteArray src = {}; ///< instead of the file's URL
};

QByteArray assetElement(const ClipAsset& asset, int minor);

/// A document of version 1.`minor`.
QByteArray fcpxml(int minor, const QByteArray& resources, const QByteArray& clips);

/// A single clip of one asset, with what stands in it.
QByteArray singleClip(const ClipAsset& asset, int minor = 13, const QByteArray& within = {});

/// A compound clip of these assets, one after another, named as given.
QByteArray compound(const QByteArray& name, const std::vector<ClipAsset>& assets, int minor = 13);

/// A compound clip with everything that real ones hold: several frame rates, titles, stills, sounds, connected clips
/// above and below, a synchronised, a multicam and a nested compound clip, transitions, markers, comments, CDATA, an
/// entity of the document's own, effects of every kind. Its six media are made in `folder`.
QByteArray richCompound(const std::filesystem::path& folder, int minor = 13);

} // namespace quillary::test
