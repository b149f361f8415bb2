#pragma once

#include "cli/CommandError.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <filesystem>
#include <optional>
#include <vector>

namespace quillary::cli {

/// Where a command's words go: results to standard output, talk and errors to standard error.
///
/// With `json` standard output gets exactly one JSON document and nothing else. Paths are bytes and JSON is text: bytes
/// of a path that are no UTF-8 become U+FFFD there, so such a path cannot be read back from a document.
class Output {
public:
    struct Style {
        bool json = false;
        bool quiet = false; ///< no talk, no progress; results and errors stay
    };
    enum class Paint { plain, strong, faint, star, danger };
    using Row = std::vector<QString>;

    explicit Output(Style style);

    bool json() const { return m_style.json; }
    /// Whether somebody watches who would like to see how far long work is.
    bool showsProgress() const;

    void document(const QJsonObject& object);
    void document(const QJsonArray& array);

    /// One line of a result for people.
    void line(const QString& text);
    /// A result that is a document of its own, as it is.
    void bytes(const QByteArray& document);
    /// Rows whose columns are aligned; the columns named in `numbers` to the right. Not for JSON.
    void table(const std::vector<Row>& rows, const std::vector<std::size_t>& numbers = {},
               const std::vector<Paint>& paints = {});
    /// Remarks beside the result.
    void talk(const QString& text);
    /// One of several things failed; the command goes on.
    void problem(const QString& text);
    /// The command failed: the text, and with `json` the document {"error","suggestion"}.
    void failure(const CommandError& error);

    /// False when standard output did not take everything.
    bool finish();

private:
    void write(const QString& text);

    Style m_style;
    bool m_resultColours;
    bool m_talkColours;
};

/// A path as a JSON value.
QJsonValue jsonPath(const std::filesystem::path& path);
QJsonArray jsonPaths(const std::vector<std::filesystem::path>& paths);
/// A text or null.
QJsonValue jsonText(const std::optional<QString>& text);

} // namespace quillary::cli
