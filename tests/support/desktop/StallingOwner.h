#pragma once

namespace quillary::test {

/// Owns the X server's clipboard, offers image/png, begins to send it in pieces and stops after the first. Runs until
/// it is killed or loses the clipboard.
int ownClipboardAndStall();

} // namespace quillary::test
