#include "panel/ShelfChange.h"

#include "base/Text.h"
#include "base/Translation.h"

#include <QStringList>
#include <algorithm>

namespace quillary::ShelfChanges {

namespace fs = std::filesystem;
using Relocation = ShelfSelection::Relocation;

namespace {

Files placesOf(const std::vector<Relocation>& moved) {
    Files files;
    for (const Relocation& one : moved) files.push_back(one.to);
    return files;
}

/// The way back of files that moved, and the way forth again.
ShelfChange moving(const FileVerbs& verbs, const QString& name, const std::vector<Relocation>& moved) {
    const auto revert = [verbs, name, moved]() -> ShelfOutcome {
        ShelfOutcome outcome;
        QStringList reasons;
        for (const auto& [from, to] : moved) {
            if (const auto back = verbs.moveBack(to, from))
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
        if (any) outcome.change = ShelfChange{.name = name, .revert = [verbs, files] { return trash(verbs, files); }};
        return outcome;
    };
    return {.name = name, .revert = revert};
}

} // namespace

QString named(const Files& files) {
    if (files.size() != 1) return translate("Shelf", "%n file(s)", nullptr, files.size());
    return QStringLiteral("“%1”").arg(shownStem(files.front()));
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
    QStringList reasons;
    for (const fs::path& file : files)
        if (const auto removed = verbs.remove(file); !removed) reasons.append(removed.error());
    return {.problem = told(reasons)};
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
    ShelfOutcome outcome{.problem = told(reasons)};
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

ShelfChange rewriting(const QString& name, std::vector<Rewritten> files) {
    const auto revert = [name, files]() -> ShelfOutcome {
        std::vector<Rewritten> now;
        QStringList reasons;
        for (const auto& [file, before, after] : files) {
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
                now.emplace_back(file, std::make_shared<const platform::KeptFile>(*std::move(current)),
                                 before->stamp());
            }
        }
        ShelfOutcome outcome{.problem = told(reasons)};
        if (!now.empty()) outcome.change = rewriting(name, std::move(now));
        return outcome;
    };
    return {.name = name, .revert = revert, .keptFiles = static_cast<int>(files.size())};
}

} // namespace quillary::ShelfChanges
