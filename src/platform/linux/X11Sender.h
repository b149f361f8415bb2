#pragma once

#include <QByteArray>
#include <xcb/xcb.h>

namespace quillary::platform {

/// Answers one program's request for a selection with the bytes, in pieces, over a connection of its own. Returns when
/// all is fetched, or when the receiver is gone or fetches nothing for ten seconds. Any thread.
void sendInPieces(const xcb_selection_request_event_t& request, const QByteArray& bytes);

} // namespace quillary::platform
