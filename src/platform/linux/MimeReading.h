#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

class QMimeData;

namespace quillary::platform {

/// Whether a type is the window system's own talk (TARGETS and the like) and stands for no data.
bool isBookkeeping(QStringView type);

/// The one of `offered` that `type` means: itself, or another spelling of it. Absent when it is not offered.
std::optional<QString> offeredSpelling(const QStringList& offered, const QString& type);

/// The types that the toolkit's data tells, without bookkeeping and without what the toolkit adds by itself.
QStringList offeredTypes(const QMimeData& from);

/// Reads the toolkit's data while its owner answers. The toolkit waits a bounded time for each type (1 s on Wayland, 5
/// s on X11); after one such wait in vain nothing more is asked. Main thread.
class MimeReader {
public:
    /// Nothing there, not offered or not had in time: absent.
    std::optional<QByteArray> read(const QMimeData& from, const QString& type);

private:
    bool m_gaveUp = false;
};

} // namespace quillary::platform
