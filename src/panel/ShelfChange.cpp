#include "panel/ShelfChange.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "platform/RemovedFile.h"

#include <QStringList>
#include <algorithm>
#include <cerrno>

namespace quillary::ShelfChanges {

namespace fs = std::filesystem;
using Relocation = ShelfSelection::Relocation;

namespace {

Files placesOf(const std::vector<Relocation>& moved) {
    Files files;
    for (const Relocation& one : moved) files.push_back(one.to);
    return files;
}

/// A file, and which one it is.
struct Known {
    fs::path file;
    platform::FileIdentity identity;
};

std::vector<Known> known(const Files& files) {
    std::vector<Known> all;
    for (const fs::path& file : files)
        all.emplace_back(file, platform::fileIdentity(file).value_or(platform::FileIdentity()));
    return all;
}

/// Those that are still the very files; the reasons tell of the others.
Files still(const FileVerbs& verbs, const std::vector<Known>& files, QStringList& reasons) {
    Files found;
    for (const auto& [file, identity] : files)
        if (const auto same = isStill(verbs, file, identity))
            found.push_back(file);
        else
            reasons.append(same.error());
    return found;
}

/// The way back of files that moved, and the way forth again.
ShelfChange moving(const FileVerbs& verbs, const QString& name, const std::vector<Relocation>& moved) {
    const auto revert = [verbs, name, moved, files = known(placesOf(moved))]() -> ShelfOutcome {
        ShelfOutcome outcome;
        QStringList reasons;
        for (std::size_t i = 0; i < moved.size(); ++i) {
            const auto& [from, to] = moved[i];
            const auto same = isStill(verbs, to, files[i].identity);
            if (const auto back = same ? verbs.moveBack(to, from) : same)
                outcome.relocations.emplace_back(to, from);
            else
                reasons.append(back.error());
        }
        outcome.problem = told(reasons);
        if (!outcome.relocations.empty()) outcome.change = moving(verbs, name, outcome.relocations);
        return outcome;
    };
    return {.name = name, .revert = revert};
}

/// The way forth again of a verb whose files came back.
template <typename Again>
ShelfChange again(const FileVerbs& verbs, const QString& name, const Files& files, Again verb) {
    return {.name = name, .revert = [verbs, verb, files = known(files)]() -> ShelfOutcome {
                QStringList reasons;
                const Files left = still(verbs, files, reasons);
                ShelfOutcome outcome = left.empty() ? ShelfOutcome() : verb(verbs, left);
                if (!reasons.isEmpty()) outcome.problem = told(reasons);
                return outcome;
            }};
}

ShelfChange trashing(const FileVerbs& verbs, const QString& name, const std::vector<platform::TrashedFile>& trashed,
                     const Files& files) {
    const auto revert = [verbs, name, trashed, files]() -> ShelfOutcome {
        ShelfOutcome outcome;
        QStringList reasons;
        bool any = false;
        for (const platform::TrashedFile& one : trashed) {
            const auto restored = verbs.restore(one);
            any = any || restored;
            if (!restored) reasons.append(restored.error());
        }
        outcome.problem = told(reasons);
        if (any) outcome.change = again(verbs, name, files, trash);
        return outcome;
    };
    return {.name = name, .revert = revert};
}

/// A file with what belongs to it, the file first.
using Removed = std::vector<platform::RemovedFile>;

std::expected<void, QString> putBack(const FileVerbs& verbs, const platform::RemovedFile& file) {
    if (const auto put = file.putBack(); !put) {
        const QString name = shown(file.origin().filename());
        if (put.error().code == EEXIST)
            return std::unexpected(translate("Shelf", "Another file is called “%1” by now; it stays as it is.").arg(name));
        return std::unexpected(translate("Shelf", "Could not write “%1”: %2").arg(name, put.error().description()));
    }
    if (const auto now = platform::fileIdentity(file.origin())) verbs.succession->replaced(file.identity(), *now);
    return {};
}

ShelfChange removing(const FileVerbs& verbs, const Files& files, std::vector<Removed> removed) {
    const QString name = translate("Shelf", "removing %1").arg(named(files));
    int count = 0;
    std::uint64_t bytes = 0;
    for (const Removed& one : removed)
        for (const platform::RemovedFile& file : one) {
            ++count;
            bytes += file.bytes();
        }
    const auto revert = [verbs, name, removed = std::move(removed)]() -> ShelfOutcome {
        ShelfOutcome outcome;
        QStringList reasons;
        Files back;
        for (const Removed& one : removed) {
            std::expected<void, QString> put;
            for (const platform::RemovedFile& file : one)
                if (put) put = putBack(verbs, file);
            if (!put) reasons.append(put.error());
            if (const auto now = platform::fileIdentity(one.front().origin());
                now && *now == verbs.succession->now(one.front().identity()))
                back.push_back(one.front().origin());
        }
        outcome.problem = told(reasons);
        if (!back.empty()) outcome.change = again(verbs, name, back, remove);
        return outcome;
    };
    return {.name = name, .revert = revert, .keptFiles = count, .keptBytes = bytes};
}

} // namespace

QString named(const Files& files) {
    if (files.size() != 1) return translate("Shelf", "%n file(s)", nullptr, files.size());
    return QStringLiteral("“%1”").arg(shownStem(files.front()));
}

std::expected<void, QString> isStill(const FileVerbs& verbs, const fs::path& file,
                                     const platform::FileIdentity& identity) {
    const auto now = platform::fileIdentity(file);
    const QString name = shown(file.filename());
    if (!now) return std::unexpected(translate("Shelf", "“%1” is no longer there.").arg(name));
    if (*now == verbs.succession->now(identity)) return {};
    return std::unexpected(translate("Shelf", "Another file is called “%1” by now; it stays as it is.").arg(name));
}

QString told(const QStringList& reasons) {
    if (reasons.size() < 2) return reasons.value(0);
    const qsizetype others = reasons.size() - 1;
    return reasons.front() + translate("Shelf", " · and %n more", nullptr, others);
}

ShelfOutcome rename(const FileVerbs& verbs, const fs::path& file, const QString& name) {
    const auto renamed = verbs.rename(file, name);
    if (!renamed) return {.problem = renamed.error()};
    ShelfOutcome outcome{.relocations = {{file, *renamed}},
                         .note = translate("Shelf", "Renamed to “%1”").arg(shownStem(*renamed))};
    if (*renamed != file)
        outcome.change =
            moving(verbs, translate("Shelf", "renaming to “%1”").arg(shownStem(*renamed)), outcome.relocations);
    return outcome;
}

ShelfOutcome move(const FileVerbs& verbs, const Files& files, const std::optional<QString>& collection) {
    ShelfOutcome outcome;
    QStringList reasons;
    std::vector<Relocation> moved;
    for (const fs::path& file : files) {
        if (const auto to = verbs.move(file, collection)) {
            outcome.relocations.emplace_back(file, *to);
            if (*to != file) moved.emplace_back(file, *to);
        } else {
            reasons.append(to.error());
        }
    }
    outcome.problem = told(reasons);
    if (!moved.empty())
        outcome.change = moving(verbs, translate("Shelf", "moving %1").arg(named(placesOf(moved))), moved);
    return outcome;
}

ShelfOutcome remove(const FileVerbs& verbs, const Files& files) {
    ShelfOutcome outcome;
    std::vector<Removed> kept;
    int count = 0;
    std::uint64_t bytes = 0;
    for (const fs::path& file : files) {
        Removed all;
        for (const fs::path& part : verbs.withBelongings(file)) {
            auto opened = platform::RemovedFile::of(part);
            // What is gone already has nothing to keep; the verb will say so.
            if (!opened && opened.error().code == ENOENT) break;
            count += 1;
            bytes += opened ? opened->bytes() : 0;
            if (!opened || count > mostKeptFiles || bytes > mostKeptBytes) return {.tooMuch = files};
            all.push_back(*std::move(opened));
        }
        kept.push_back(std::move(all));
    }
    QStringList reasons;
    std::vector<Removed> removed;
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (const auto gone = verbs.remove(files[i]); !gone) {
            reasons.append(gone.error());
        } else {
            outcome.left.push_back(files[i]);
            if (!kept[i].empty()) removed.push_back(std::move(kept[i]));
        }
    }
    outcome.problem = told(reasons);
    if (outcome.left.empty()) return outcome;
    outcome.note = translate("Shelf", "Removed %1 · Ctrl+Z undoes it").arg(named(outcome.left));
    outcome.change = removing(verbs, outcome.left, std::move(removed));
    return outcome;
}

ShelfOutcome removeForGood(const FileVerbs& verbs, const Files& files) {
    ShelfOutcome outcome;
    QStringList reasons;
    for (const fs::path& file : files)
        if (const auto removed = verbs.remove(file); !removed)
            reasons.append(removed.error());
        else
            outcome.left.push_back(file);
    outcome.problem = told(reasons);
    if (!outcome.left.empty()) outcome.note = translate("Shelf", "Removed %1 for good").arg(named(outcome.left));
    return outcome;
}

ShelfOutcome trash(const FileVerbs& verbs, const Files& files) {
    QStringList reasons;
    std::vector<platform::TrashedFile> all;
    Files gone;
    for (const fs::path& file : files) {
        const auto trashed = verbs.trash(file);
        if (trashed) {
            all.insert(all.end(), trashed->begin(), trashed->end());
            gone.push_back(file);
        } else {
            reasons.append(trashed.error());
        }
    }
    ShelfOutcome outcome{.left = gone};
    outcome.problem = told(reasons);
    if (gone.empty()) return outcome;
    outcome.note = translate("Shelf", "Moved %1 to the trash").arg(named(gone));
    outcome.change = trashing(verbs, translate("Shelf", "moving %1 to the trash").arg(named(gone)), all, gone);
    return outcome;
}

ShelfChange stars(const FileVerbs& verbs, Files files, bool given) {
    const QString name =
        (given ? translate("Shelf", "adding %1 to favorites") : translate("Shelf", "removing %1 from favorites"))
            .arg(named(files));
    const auto revert = [verbs, files, given, name]() -> ShelfOutcome {
        verbs.setFavorites(files, !given);
        ShelfOutcome outcome{.starsChanged = true};
        outcome.change =
            ShelfChange{.name = name, .revert = [verbs, files, given] {
                            verbs.setFavorites(files, given);
                            return ShelfOutcome{.starsChanged = true, .change = stars(verbs, files, given)};
                        }};
        return outcome;
    };
    return {.name = name, .revert = revert};
}

ShelfChange rewriting(const FileVerbs& verbs, const QString& name, std::vector<Rewritten> files) {
    const auto revert = [verbs, name, files]() -> ShelfOutcome {
        std::vector<Rewritten> now;
        QStringList reasons;
        for (const auto& [file, before, after] : files) {
            const auto identity = platform::fileIdentity(file);
            auto current = platform::KeptFile::open(file);
            if (!current) {
                reasons.append(translate("Shelf", "“%1” is no longer there.").arg(shown(file.filename())));
            } else if (current->stamp() != after) {
                reasons.append(translate("Shelf", "“%1” was changed by another program since; it stays as it is.")
                                   .arg(shown(file.filename())));
            } else if (const auto put = before->putBack(file); !put) {
                reasons.append(translate("Shelf", "Could not write “%1”: %2")
                                   .arg(shown(file.filename()), put.error().description()));
            } else {
                if (const auto restored = platform::fileIdentity(file); restored && identity)
                    verbs.succession->replaced(*identity, *restored);
                now.emplace_back(file, std::make_shared<const platform::KeptFile>(*std::move(current)),
                                 before->stamp());
            }
        }
        ShelfOutcome outcome{.problem = told(reasons)};
        if (!now.empty()) outcome.change = rewriting(verbs, name, std::move(now));
        return outcome;
    };
    return {.name = name, .revert = revert, .keptFiles = static_cast<int>(files.size())};
}

} // namespace quillary::ShelfChanges
