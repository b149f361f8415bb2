#include "base/Text.h"
#include "base/Try.h"
#include "cli/Commands.h"
#include "library/AppSettings.h"
#include "platform/Bookmarks.h"
#include "platform/SettingsStore.h"

#include <QDir>
#include <algorithm>
#include <array>
#include <cmath>

namespace quillary::cli {

namespace {

enum class Kind { whole, fraction, flag, file, name, text, folder, folders, texts };

struct Key {
    QString name;
    Kind kind;
    const char* expected; ///< what a value must be; null for what only the program writes
};

const std::array<Key, 12>& keys() {
    static const std::array<Key, 12> all{{
        {SettingsKey::rootFolderBookmark, Kind::folder, nullptr},
        {SettingsKey::extraScopeBookmarks, Kind::folders, nullptr},
        {SettingsKey::blocksLastRootPath, Kind::text, nullptr},
        {SettingsKey::favouritePaths, Kind::texts, nullptr},
        {SettingsKey::favouritesOnly, Kind::flag, "true or false"},
        {SettingsKey::recentLimit, Kind::whole, "a whole number of files, 0 for all"},
        {SettingsKey::vectorLongEdge, Kind::whole, "a whole number of pixels"},
        {SettingsKey::previewVolume, Kind::fraction, "a number from 0 to 1"},
        {SettingsKey::openOnLibrary, Kind::flag, "true or false"},
        {SettingsKey::pasteHistory, Kind::flag, "true or false"},
        {SettingsKey::editorName, Kind::name, "a name, or an empty text for Final Cut"},
        {SettingsKey::subjectModel, Kind::file, "the path of an ONNX file, or an empty text for none"},
    }};
    return all;
}

QString keyNames() {
    QStringList names;
    for (const Key& key : keys()) names.append(key.name);
    return names.join(QStringLiteral(", "));
}

std::optional<bool> truth(const QString& word) {
    const QString folded = word.toLower();
    const auto isOneOf = [&](std::initializer_list<QStringView> words) {
        return std::ranges::find(words, folded) != words.end();
    };
    if (isOneOf({u"true", u"yes", u"on", u"1"})) return true;
    if (isOneOf({u"false", u"no", u"off", u"0"})) return false;
    return {};
}

/// Invalid when the word is no value of the kind.
QVariant parsed(const QString& word, Kind kind) {
    if (kind == Kind::name) return word.simplified();
    if (kind == Kind::file) return word.isEmpty() ? word : QDir::current().absoluteFilePath(word);
    bool ok = false;
    if (kind == Kind::whole) {
        const int number = word.toInt(&ok);
        return ok ? QVariant(number) : QVariant();
    }
    if (kind == Kind::fraction) {
        const double number = word.toDouble(&ok);
        return ok && std::isfinite(number) ? QVariant(number) : QVariant();
    }
    const auto flag = truth(word);
    return flag ? QVariant(*flag) : QVariant();
}

QJsonValue folder(const QByteArray& bookmark, platform::Bookmarks& bookmarks) {
    const auto resolved = bookmarks.resolve(bookmark);
    return resolved ? jsonPath(resolved->path) : QJsonValue();
}

/// The value that is in force, whatever is stored.
QJsonValue value(const Key& key, const CommandServices& services) {
    const AppSettings& settings = services.settings;
    if (key.name == SettingsKey::recentLimit) return settings.recentLimit();
    if (key.name == SettingsKey::vectorLongEdge) return settings.vectorLongEdge();
    if (key.name == SettingsKey::previewVolume) return settings.previewVolume();
    if (key.name == SettingsKey::openOnLibrary) return settings.openOnLibrary();
    if (key.name == SettingsKey::favouritesOnly) return settings.favouritesOnly();
    if (key.name == SettingsKey::pasteHistory) return settings.pasteHistory();
    if (key.name == SettingsKey::editorName) return settings.editorName();
    if (key.name == SettingsKey::subjectModel)
        return settings.subjectModel().empty() ? QJsonValue() : jsonPath(settings.subjectModel());

    const QVariant stored = settings.store().value(key.name);
    if (key.kind == Kind::texts) return QJsonArray::fromStringList(stored.toStringList());
    if (key.kind == Kind::folders) {
        QJsonArray folders;
        for (const QVariant& bookmark : stored.toList())
            folders.append(folder(bookmark.toByteArray(), services.bookmarks));
        return folders;
    }
    if (!stored.isValid()) return {};
    return key.kind == Kind::folder ? folder(stored.toByteArray(), services.bookmarks) : QJsonValue(stored.toString());
}

QString spelled(const QJsonValue& value) {
    if (!value.isArray()) return value.toVariant().toString();
    QStringList lines;
    for (const QJsonValue element : value.toArray()) lines.append(element.toString());
    return lines.join(QStringLiteral(", "));
}

class Settings final : public Command {
    void declare(Grammar& grammar) override {
        std::vector<std::string> names;
        for (const Key& key : keys()) names.push_back(key.name.toStdString());
        grammar.suggested("KEY", m_key, names, "One setting");
        grammar.text("VALUE", m_value, "VALUE", "Store this value");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        if (!m_key) return showAll(services, output);
        const auto key = std::ranges::find(keys(), *m_key, &Key::name);
        if (key == keys().end())
            return std::unexpected(CommandError::usage(QStringLiteral("There is no setting “%1”.").arg(*m_key),
                                                       QStringLiteral("The settings are ") + keyNames() + u'.'));
        if (m_value) TRY(store(*key, *m_value, services.settings.store()));
        const QJsonValue now = value(*key, services);
        if (output.json())
            output.document(QJsonObject{{key->name, now}});
        else
            output.line(spelled(now));
        return ExitStatus::done;
    }

    static ExitStatus showAll(const CommandServices& services, Output& output) {
        QJsonObject object;
        std::vector<Output::Row> rows;
        for (const Key& key : keys()) {
            const QJsonValue now = value(key, services);
            object.insert(key.name, now);
            rows.push_back({key.name, spelled(now)});
        }
        if (output.json())
            output.document(object);
        else
            output.table(rows, {}, {Output::Paint::faint, Output::Paint::plain});
        return ExitStatus::done;
    }

    static std::expected<void, CommandError> store(const Key& key, const QString& word,
                                                   platform::SettingsStore& store) {
        if (!key.expected)
            return std::unexpected(
                CommandError::usage(QStringLiteral("“%1” is kept by the program itself.").arg(key.name)));
        const QVariant wanted = parsed(word, key.kind);
        if (!wanted.isValid())
            return std::unexpected(
                CommandError::usage(QStringLiteral("“%1” is no value of “%2”.").arg(word, key.name),
                                    QStringLiteral("It takes %1.").arg(QLatin1StringView(key.expected))));
        store.setValue(key.name, wanted);
        return {};
    }

    std::optional<QString> m_key;
    std::optional<QString> m_value;
};

} // namespace

void declareSettings(Grammar& root) {
    root.command<Settings>("settings", "Show or change the settings");
}

} // namespace quillary::cli
