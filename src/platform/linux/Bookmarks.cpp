#include "platform/Bookmarks.h"

namespace quillary::platform {

namespace fs = std::filesystem;

namespace {

class PathBookmarks final : public Bookmarks {
public:
    std::optional<QByteArray> make(const fs::path& folder) override {
        std::error_code failed;
        const fs::path path = fs::canonical(folder, failed);
        if (failed) return {};
        return QByteArray::fromStdString(path.native());
    }

    std::optional<Resolved> resolve(const QByteArray& data) override {
        const fs::path stored(data.toStdString());
        if (!stored.is_absolute() || data.contains('\0')) return {};
        std::error_code missing;
        const fs::path now = fs::canonical(stored, missing);
        if (missing) return Resolved{stored};
        return Resolved{now, now != stored};
    }

    bool isFenced() const override { return false; }
    bool needsGrant(const fs::path&) const override { return false; }

    bool startAccess(const fs::path&) override { return true; }
    void stopAccess(const fs::path&) override {}
};

} // namespace

std::unique_ptr<Bookmarks> systemBookmarks() {
    return std::make_unique<PathBookmarks>();
}

} // namespace quillary::platform
