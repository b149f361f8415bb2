#pragma once

#include "cli/CommandError.h"
#include "cli/Output.h"

#include <expected>

namespace quillary {

class AppSettings;
class BuiltInLibrary;
class Storage;
class Thumbnail;

namespace platform {
class Bookmarks;
class Desktop;
class SettingsStore;
} // namespace platform

namespace cli {

class Grammar;

/// What commands work with; all of it outlives the run.
struct CommandServices {
    Storage& storage;
    AppSettings& settings;
    BuiltInLibrary& builtIns;
    platform::Bookmarks& bookmarks;
    const platform::Desktop& desktop;
    Thumbnail& thumbnails;
};

/// One command: the words it takes, which the parser stores in its members, and what it does.
class Command {
public:
    virtual ~Command() = default;

    /// Adds the command's arguments and options. What they are stored in lies in this object.
    virtual void declare(Grammar& grammar) = 0;
    /// Does the work and prints its result. An error is printed by the caller.
    virtual std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) = 0;

    /// Whether it talks to the desktop, so that it needs a display.
    virtual bool needsDisplay() const { return false; }
    /// Whether the choice of a library for this run makes no sense for it.
    virtual bool choosesLibrary() const { return false; }
    /// Whether it works on the library of the run, which is opened first then.
    virtual bool usesLibrary() const { return true; }
};

} // namespace cli
} // namespace quillary
