#pragma once

#include "cli/Command.h"
#include "cli/PanelOptions.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace quillary {

/// The program's arguments: read first, before anything else is made, then run.
///
///     CommandLine commandLine;
///     if (const auto status = commandLine.parse(argc, argv)) return *status;
///     … make the application object and what commands work with …
///     if (!commandLine.panel()) return commandLine.run(services);
///
/// Without a command the panel is asked for. Results go to standard output, talk and errors to standard error. Exit
/// statuses are those of cli::ExitStatus; wrong usage is told by `parse`.
class CommandLine {
public:
    CommandLine();
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    /// Reads the arguments. An exit status when that was all there is to do: help, the version, wrong usage.
    std::optional<int> parse(int argc, const char* const* argv);

    /// The library folder for this run only. `run` opens it first, whatever the command.
    const std::optional<std::filesystem::path>& library() const;
    /// How the panel is to open; null when a command is to run instead.
    const PanelOptions* panel() const;
    bool needsDisplay() const;

    /// Runs the command, prints its result or its error, and returns the exit status.
    int run(const cli::CommandServices& services);
    /// Prints an error as commands do, and returns its exit status.
    int fail(const cli::CommandError& error);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quillary
