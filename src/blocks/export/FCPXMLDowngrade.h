#pragma once

#include "blocks/FCPXMLDocument.h"
#include "blocks/export/LeftOut.h"

namespace quillary {

/// Makes a document of version 1.2 to 1.14 one of version 1.10, for editors that read nothing newer: elements,
/// attributes and values that this version does not know go and are told in `leftOut`, and so are references that lead
/// nowhere; a clip that stood there leaves a gap. Files that versions up to 1.8 name at the asset get a media
/// representation; resources that version 1.2 keeps in projects come to the top, and what else it has in them becomes
/// an event. Times and everything else stay as they are. Bare clips are also put into projects of their own, behind
/// them, since some editors read projects alone.
///
/// Fails, with the reason, for other versions and for documents whose references cannot be made sound.
std::expected<void, ArrangementFailure> bringToVersion110(FCPXMLDocument& document, LeftOut& leftOut);

} // namespace quillary
