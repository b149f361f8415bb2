#pragma once

#include "cli/Command.h"

#include <QString>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace quillary::cli {

/// What the value of an argument or option is; shells complete it accordingly.
enum class Value { text, file, folder };

/// The words that one command takes. A name that begins with "--" makes an option, any other a positional argument
/// whose name is shown in the help; positional arguments are read in the order in which they are declared.
///
/// A short-lived helper while the program's grammar is built up; what it declares lives in the parser.
class Grammar {
public:
    enum class Presence { optional, required };
    using Commands = std::vector<std::pair<CLI::App*, std::unique_ptr<Command>>>;

    Grammar(CLI::App& app, Commands& commands) : m_app(app), m_commands(commands) {}

    void flag(const char* name, bool& into, const char* help);
    // What is stored in an optional may be left out, what is stored plainly is required.
    void text(const char* name, std::optional<QString>& into, const char* valueName, const char* help);
    void text(const char* name, QString& into, const char* valueName, const char* help);
    void choice(const char* name, std::optional<QString>& into, const std::vector<std::string>& values,
                const char* help);
    void choice(const char* name, QString& into, const std::vector<std::string>& values, const char* help);
    /// A text for which shells offer the values, but any other is taken too.
    void suggested(const char* name, std::optional<QString>& into, const std::vector<std::string>& values,
                   const char* help);
    /// Paths are kept as the bytes that were given.
    void path(const char* name, std::optional<std::filesystem::path>& into, Value kind, const char* help);
    void path(const char* name, std::filesystem::path& into, Value kind, const char* help);
    /// Any number of files, or at least one when they are required.
    void files(const char* name, std::vector<std::filesystem::path>& into, const char* help,
               Presence presence = Presence::required);

    /// A command below this one; only the last one named on the command line runs.
    template <typename T>
    Grammar command(const char* name, const char* help) {
        auto command = std::make_unique<T>();
        Grammar grammar = below(name, help);
        static_cast<Command&>(*command).declare(grammar);
        m_commands.emplace_back(&grammar.m_app, std::move(command));
        return grammar;
    }
    /// A word that stands before other commands and means nothing alone.
    Grammar group(const char* name, const char* help);

    const CLI::App& root() const;

private:
    Grammar below(const char* name, const char* help);
    using Store = std::function<void(const std::string&)>;
    CLI::Option& option(const char* name, Presence presence, const Store& store, const std::string& valueName,
                        const char* help);

    CLI::App& m_app;
    Commands& m_commands;
};

} // namespace quillary::cli
