#include "imaging/ImageTransform.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "base/Try.h"
#include "imaging/BitmapDecoder.h"
#include "imaging/PngEncoder.h"
#include "platform/FileAttributes.h"
#include "platform/OpenFile.h"
#include "platform/PendingFile.h"
#include "xml/Document.h"

#include <QColorSpace>
#include <QFile>
#include <QLocale>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <vector>

namespace quillary::ImageTransform {

namespace fs = std::filesystem;
using platform::FileError;

namespace {

struct Names {
    Operation operation;
    QStringView rawValue;
    const char* label;
};
constexpr std::array names{
    Names{Operation::rotateLeft, u"rotateLeft", QT_TRANSLATE_NOOP("ImageTransform", "Rotate Left")},
    Names{Operation::rotateRight, u"rotateRight", QT_TRANSLATE_NOOP("ImageTransform", "Rotate Right")},
    Names{Operation::flipHorizontal, u"flipHorizontal", QT_TRANSLATE_NOOP("ImageTransform", "Flip Horizontal")},
    Names{Operation::flipVertical, u"flipVertical", QT_TRANSLATE_NOOP("ImageTransform", "Flip Vertical")},
};

const Names& namesOf(Operation operation) {
    return *std::ranges::find(names, operation, &Names::operation);
}

/// The file itself, behind links, when it may be written.
std::expected<fs::path, QString> writable(const fs::path& url) {
    std::error_code failed;
    fs::path file = fs::canonical(url, failed);
    if (failed) return std::unexpected(FileError{failed.value()}.description());
    if (!fs::is_regular_file(file, failed))
        return std::unexpected(translate("ImageTransform", "It is not a regular file"));
    if (!platform::mayBeWritten(file)) return std::unexpected(translate("ImageTransform", "It may not be written"));
    return file;
}

std::unexpected<QString> unreadable() {
    return std::unexpected(translate("ImageTransform", "It is no picture that can be read here"));
}

std::expected<void, FileError> replace(const fs::path& file, const QByteArray& bytes) {
    auto pending = TRY(platform::PendingFile::holding(file.parent_path(), bytes));
    TRY(pending.copyAttributesFrom(file));
    TRY(pending.sync());
    return pending.replace(file);
}

Outcome rewrite(const fs::path& file, const QByteArray& bytes) {
    if (bytes.isEmpty()) return std::unexpected(translate("ImageTransform", "Not enough memory"));
    const auto replaced = replace(file, bytes);
    if (!replaced) return std::unexpected(replaced.error().description());
    return {};
}

QImage turned(const QImage& image, Operation operation) {
    switch (operation) {
    case Operation::rotateLeft:
        return image.transformed(QTransform().rotate(270));
    case Operation::rotateRight:
        return image.transformed(QTransform().rotate(90));
    case Operation::flipHorizontal:
        return image.mirrored(true, false);
    case Operation::flipVertical:
        break;
    }
    return image.mirrored(false, true);
}

struct Size {
    double width = 0;
    double height = 0;
};

/// The view box's, if it is four numbers.
std::optional<Size> viewBoxSize(const xml::Node& root) {
    const QByteArray text = root.attribute("viewBox").value_or(QByteArray()).replace(',', ' ').simplified();
    std::vector<double> numbers;
    for (const QByteArray& piece : text.split(' ')) {
        bool isNumber = false;
        numbers.push_back(piece.toDouble(&isNumber));
        if (!isNumber) return {};
    }
    if (numbers.size() != 4) return {};
    return Size{numbers[2], numbers[3]};
}

double digits(const std::optional<QByteArray>& text) {
    QByteArray kept;
    for (const char c : text.value_or(QByteArray()))
        if ((c >= '0' && c <= '9') || c == '.') kept += c;
    return kept.toDouble();
}

QByteArray transformText(Operation operation, Size size) {
    switch (operation) {
    case Operation::rotateLeft:
        return "translate(0," + clean(size.width) + ") rotate(-90)";
    case Operation::rotateRight:
        return "translate(" + clean(size.height) + ",0) rotate(90)";
    case Operation::flipHorizontal:
        return "translate(" + clean(size.width) + ",0) scale(-1,1)";
    case Operation::flipVertical:
        break;
    }
    return "translate(0," + clean(size.height) + ") scale(1,-1)";
}

bool staysOutside(const xml::Node& child) {
    return child.isNamed("defs") || child.isNamed("metadata");
}

} // namespace

std::optional<Operation> operation(QStringView rawValue) {
    const auto* found = std::ranges::find(names, rawValue, &Names::rawValue);
    return found == names.end() ? std::nullopt : std::optional(found->operation);
}

QString rawValue(Operation operation) {
    return namesOf(operation).rawValue.toString();
}

QString label(Operation operation) {
    return translate("ImageTransform", namesOf(operation).label);
}

Outcome apply(Operation operation, const fs::path& url) {
    const bool vector = lowercaseExtension(url) == "svg";
    Outcome rewritten = vector ? applyToVector(operation, url) : applyToBitmap(operation, url);
    if (rewritten) platform::clearQuarantine(url);
    return rewritten;
}

Outcome applyToBitmap(Operation operation, const fs::path& url) {
    const fs::path file = TRY(writable(url));
    const QImage image = BitmapDecoder::decodeAsStored(file).value_or(QImage());
    if (image.isNull()) return unreadable();
    QImage result = turned(image, operation);
    result.setColorSpace(image.colorSpace()); // which turning loses
    return rewrite(file, pngData(result));
}

Outcome applyToVector(Operation operation, const fs::path& url) {
    const fs::path file = TRY(writable(url));
    QFile contents;
    if (const auto opened = platform::openForReading(contents, file); !opened)
        return std::unexpected(opened.error().description());
    if (contents.size() > xml::Document::defaultLimit) return unreadable();
    const auto document = xml::Document::parse(contents.readAll());
    if (!document || !document->root().isNamed("svg")) return unreadable();
    xml::Node root = document->root();
    const Size size =
        viewBoxSize(root).value_or(Size{digits(root.attribute("width")), digits(root.attribute("height"))});
    const auto counts = [](double side) { return side > 0 && std::isfinite(side); };
    if (!counts(size.width) || !counts(size.height))
        return std::unexpected(translate("ImageTransform", "It tells no size"));

    const auto children = root.children();
    xml::Node group = root.appendElement("g");
    group.setAttribute("transform", transformText(operation, size));
    for (const xml::Node& child : children)
        if (!staysOutside(child)) group.append(child);
    if (operation == Operation::rotateLeft || operation == Operation::rotateRight) {
        root.setAttribute("viewBox", "0 0 " + clean(size.height) + ' ' + clean(size.width));
        if (root.attribute("width")) {
            root.setAttribute("width", clean(size.height));
            root.setAttribute("height", clean(size.width));
        }
    }
    return rewrite(file, document->serialize());
}

QByteArray clean(double number) {
    constexpr double exact = 0x1p53;
    if (number == std::floor(number) && std::abs(number) < exact)
        return QByteArray::number(static_cast<qint64>(number));
    return QByteArray::number(number, 'g', QLocale::FloatingPointShortest);
}

} // namespace quillary::ImageTransform
