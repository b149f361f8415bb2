#include "cli/Output.h"

#include "base/Text.h"

#include <QJsonDocument>
#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace quillary::cli {

namespace {

bool coloursOn(int descriptor) {
    return isatty(descriptor) && qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
}

QString painted(const QString& text, Output::Paint paint) {
    constexpr const char* codes[] = {"", "\033[1m", "\033[2m", "\033[33m", "\033[31m"};
    if (paint == Output::Paint::plain || text.trimmed().isEmpty()) return text;
    return QLatin1StringView(codes[static_cast<int>(paint)]) + text + QLatin1StringView("\033[0m");
}

/// Names are shown, never obeyed: a control character in one must not reach the terminal.
QString harmless(QString text) {
    for (QChar& c : text)
        if (c.category() == QChar::Other_Control) c = QChar::ReplacementCharacter;
    return text;
}

QString padded(const QString& cell, qsizetype width, bool right) {
    const QString blanks(std::max<qsizetype>(0, width - cell.size()), u' ');
    return right ? blanks + cell : cell + blanks;
}

} // namespace

Output::Output(Style style)
    : m_style(style), m_resultColours(coloursOn(STDOUT_FILENO)), m_talkColours(coloursOn(STDERR_FILENO)) {}

bool Output::showsProgress() const {
    return !m_style.quiet && isatty(STDERR_FILENO);
}

void Output::write(const QString& text) {
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
}

void Output::document(const QJsonObject& object) {
    write(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}

void Output::document(const QJsonArray& array) {
    write(QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact)));
}

void Output::line(const QString& text) {
    write(harmless(text));
}

void Output::bytes(const QByteArray& document) {
    std::fwrite(document.constData(), 1, static_cast<std::size_t>(document.size()), stdout);
}

void Output::table(const std::vector<Row>& rows, const std::vector<std::size_t>& numbers,
                   const std::vector<Paint>& paints) {
    std::vector<qsizetype> widths;
    for (const Row& row : rows)
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (column == widths.size()) widths.push_back(0);
            widths[column] = std::max(widths[column], row[column].size());
        }
    for (const Row& row : rows) {
        QString text;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const bool last = column + 1 == row.size();
            const bool right = std::ranges::find(numbers, column) != numbers.end();
            QString cell = harmless(row[column]);
            if (right || !last) cell = padded(cell, widths[column], right);
            if (m_resultColours && column < paints.size()) cell = painted(cell, paints[column]);
            text += cell;
            if (!last) text += QStringLiteral("  ");
        }
        write(text);
    }
}

void Output::talk(const QString& text) {
    if (!m_style.quiet) std::fprintf(stderr, "%s\n", harmless(text).toUtf8().constData());
}

void Output::problem(const QString& text) {
    const QString label = QStringLiteral("quillary:");
    std::fprintf(stderr, "%s %s\n", qUtf8Printable(m_talkColours ? painted(label, Paint::danger) : label),
                 qUtf8Printable(harmless(text)));
}

void Output::failure(const CommandError& error) {
    problem(error.message);
    if (error.suggestion && !m_style.quiet) std::fprintf(stderr, "%s\n", qUtf8Printable(harmless(*error.suggestion)));
    if (json())
        document(QJsonObject{{QStringLiteral("error"), error.message},
                             {QStringLiteral("suggestion"), jsonText(error.suggestion)}});
}

bool Output::finish() {
    return std::fflush(stdout) == 0 && !std::ferror(stdout);
}

QJsonValue jsonPath(const std::filesystem::path& path) {
    return shown(path);
}

QJsonArray jsonPaths(const std::vector<std::filesystem::path>& paths) {
    QJsonArray array;
    for (const auto& path : paths) array.append(jsonPath(path));
    return array;
}

QJsonValue jsonText(const std::optional<QString>& text) {
    return text ? QJsonValue(*text) : QJsonValue();
}

} // namespace quillary::cli
