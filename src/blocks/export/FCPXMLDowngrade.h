#pragma once

#include "blocks/FCPXMLDocument.h"
#include "blocks/export/LeftOut.h"

namespace quillary {

/// Makes a document of any version one of version 1.10, for editors that read nothing newer: elements, attributes and
/// values that this version does not know go and are told in `leftOut`; files that older versions name at the asset get
/// a media representation. Times and everything else stay as they are. A bare clip is also put into a project of its
/// own, behind it, since some editors read projects alone.
void bringToVersion110(FCPXMLDocument& document, LeftOut& leftOut);

} // namespace quillary
