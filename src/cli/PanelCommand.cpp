#include "base/FileUrl.h"
#include "cli/Commands.h"

#include <QMetaEnum>

namespace quillary::cli {

namespace fs = std::filesystem;

namespace {

/// URLs stay as they are; files become URLs, so that names that are no text survive.
QString urlOf(const fs::path& argument) {
    const std::string& text = argument.native();
    const auto colon = text.find("://");
    if (text.starts_with("file:") || (colon != std::string::npos && colon > 1)) return QString::fromStdString(text);
    std::error_code ignored;
    return QString::fromLatin1(fileUrl(fs::absolute(argument, ignored)));
}

template <typename Enumeration>
std::optional<Enumeration> valueOf(const std::optional<QString>& word) {
    if (!word) return {};
    return static_cast<Enumeration>(QMetaEnum::fromType<Enumeration>().keyToValue(word->toLatin1().constData()));
}

} // namespace

void PanelCommand::declare(Grammar& grammar) {
    grammar.files("FILE|URL", m_arguments, "Taken as if dropped onto the panel", Grammar::Presence::optional);
    grammar.choice("--tab", m_tab, {"import", "library"}, "Which tab shows first");
    grammar.choice("--shelf", m_shelf, {"images", "videos", "audio", "blocks"}, "Which shelf of the library shows");
    grammar.path("--screenshot", m_screenshot, Value::file, "Render the panel once into this PNG and end");
}

std::expected<ExitStatus, CommandError> PanelCommand::run(const CommandServices&, Output&) {
    return std::unexpected(CommandError(QStringLiteral("The panel is opened by the program itself.")));
}

PanelOptions PanelCommand::options() const {
    PanelOptions options;
    for (const fs::path& argument : m_arguments) options.arguments.push_back(urlOf(argument));
    if (m_tab) options.tab = *m_tab == u"import" ? PanelModel::Tab::intake : PanelModel::Tab::library;
    options.shelf = valueOf<PanelModel::LibraryKind>(m_shelf);
    options.screenshot = m_screenshot;
    return options;
}

} // namespace quillary::cli
