#pragma once

#include <QCommandLineParser>
#include <QFile>
#include <QMimeData>
#include <chrono>
#include <thread>

namespace quillary::test {

/// What a tool offers to others: `--data TYPE=FILE`, any number of times, offers the bytes of a file under a type. With
/// `--hang-data` the types are told and their data never comes.
class Offer : public QMimeData {
public:
    static void addOptions(QCommandLineParser& parser) {
        parser.addOption(
            {QStringLiteral("data"), QStringLiteral("Offers a file's bytes."), QStringLiteral("TYPE=FILE")});
        parser.addOption({QStringLiteral("hang-data"), QStringLiteral("Tells types, never gives data.")});
    }

    explicit Offer(const QCommandLineParser& parser) : m_hangs(parser.isSet(QStringLiteral("hang-data"))) {
        for (const QString& pair : parser.values(QStringLiteral("data"))) {
            QFile file(pair.section(u'=', -1));
            if (!file.open(QIODevice::ReadOnly)) qFatal("cannot read %s", qPrintable(file.fileName()));
            setData(pair.section(u'=', 0, -2), file.readAll());
        }
    }

protected:
    QVariant retrieveData(const QString& type, QMetaType kind) const override {
        while (m_hangs) std::this_thread::sleep_for(std::chrono::hours(1));
        return QMimeData::retrieveData(type, kind);
    }

private:
    bool m_hangs;
};

} // namespace quillary::test
