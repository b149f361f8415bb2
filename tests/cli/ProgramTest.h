#pragma once

#include "support/TemporaryFolder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace quillary::test {

using namespace Qt::StringLiterals;

/// Runs the program that lies beside this one, in a home of its own and without a display.
class ProgramTest : public testing::Test {
protected:
    struct Ended {
        int status = -1;
        QByteArray out;
        QByteArray err;

        QJsonObject object() const { return QJsonDocument::fromJson(out).object(); }
        QJsonArray array() const { return QJsonDocument::fromJson(out).array(); }
        QString error() const { return object()["error"_L1].toString(); }
    };

    Ended run(const QStringList& words, const QByteArray& input = {}) const { return start(program(), words, input); }
    Ended json(const QStringList& words) const { return run(QStringList{u"--json"_s} + words); }

    Ended start(const QString& command, const QStringList& words, const QByteArray& input = {}) const {
        QProcess process;
        process.setProcessEnvironment(environment());
        process.setWorkingDirectory(text(m_folder.path()));
        process.setChildProcessModifier(m_beforeStart);
        process.start(command, words);
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(longestRun)) {
            process.kill();
            process.waitForFinished();
            ADD_FAILURE() << "hangs: " << words.join(u' ').toStdString();
            return {};
        }
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << words.join(u' ').toStdString();
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }

    static QString program() { return QCoreApplication::applicationDirPath() + u"/quillary"_s; }

    QProcessEnvironment environment() const {
        QProcessEnvironment variables;
        const QString home = text(m_folder / "home");
        variables.insert(u"HOME"_s, home);
        variables.insert(u"XDG_CONFIG_HOME"_s, home + u"/config"_s);
        variables.insert(u"XDG_DATA_HOME"_s, home + u"/data"_s);
        variables.insert(u"XDG_CACHE_HOME"_s, home + u"/cache"_s);
        variables.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
        for (const char* passed : {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"})
            if (qEnvironmentVariableIsSet(passed))
                variables.insert(QString::fromLatin1(passed), qEnvironmentVariable(passed));
        return variables;
    }

    void SetUp() override { std::filesystem::create_directories(m_folder / "home"); }

    static QString text(const std::filesystem::path& path) { return QString::fromStdString(path.native()); }
    QString in(const char* name) const { return text(m_folder / name); }

    /// A picture of one colour, so that different colours make different files.
    QString picture(const char* name, QColor colour = Qt::red, QSize size = {8, 6}, const char* format = "PNG") const {
        const auto file = m_folder / name;
        std::filesystem::create_directories(file.parent_path());
        QImage image(size, colour.alpha() < 255 ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
        image.fill(colour);
        EXPECT_TRUE(image.save(text(file), format));
        return text(file);
    }

    /// Saves a picture and returns where it stands in the library.
    QString saved(const char* name, const QString& collection = {}) const {
        QStringList words{u"save"_s, picture(name)};
        if (!collection.isEmpty()) words += {u"--collection"_s, collection};
        return json(words).object()["saved"_L1].toArray().at(0).toString();
    }

    std::filesystem::path root() const { return m_folder / "home/Movies/Quillary"; }

    TemporaryFolder m_folder;
    std::function<void()> m_beforeStart;      ///< runs in the child
    static constexpr int longestRun = 20'000; ///< ms
};

/// One text of every object of an array.
inline QStringList column(const QJsonArray& array, const char* key) {
    QStringList texts;
    for (const QJsonValue value : array) texts.append(value[QLatin1StringView(key)].toString());
    return texts;
}

inline QStringList operator""_words(const char* text, std::size_t size) {
    return QString::fromUtf8(text, static_cast<qsizetype>(size)).split(u' ');
}

} // namespace quillary::test
