#include "cli/CutoutMethod.h"

#include "base/Try.h"
#include "library/AppSettings.h"

namespace quillary::cli {

const std::vector<std::string>& cutoutMethods() {
    static const std::vector<std::string> words{"auto", "solid", "subject"};
    return words;
}

std::expected<Cutout::Result, CommandError> cutOut(const QImage& image, const std::optional<QString>& method,
                                                   const AppSettings& settings, Output& output) {
    std::optional<Cutout::Method> asked;
    if (method == u"solid") asked = Cutout::Method::solid;
    if (method == u"subject") asked = Cutout::Method::subject;
    Cutout::Result result = TRY(Cutout::remove(image, asked, settings.subjectModel()));
    if (!result.note.isEmpty()) output.talk(result.note);
    return result;
}

} // namespace quillary::cli
