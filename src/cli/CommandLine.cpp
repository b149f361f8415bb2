#include "cli/CommandLine.h"

#include "cli/Commands.h"
#include "library/Storage.h"

#include <CLI/CLI.hpp>

namespace quillary {

using namespace cli;

struct CommandLine::State {
    State();

    void keepBrackets(CLI::App& app);

    CLI::App app{"Quillary: paste an image, name it, drag it onto the timeline. Without a command it opens the panel.",
                 "quillary"};
    Grammar::Commands commands;
    std::optional<std::string> library;
    std::optional<std::filesystem::path> libraryFolder;
    Output::Style style;
    Command* selected = nullptr;
    std::optional<PanelOptions> panel;
};

namespace {

/// The parser takes "[a,b]" for a list of two. Such a word is marked with a byte that no argument can hold, and each
/// option takes the mark off again.
constexpr char bracketMark = '\0';

std::vector<std::string> prepared(int argc, const char* const* argv) {
    std::vector<std::string> words;
    bool onlyFiles = false;
    for (int i = 1; i < argc; ++i) {
        std::string word = argv[i];
        onlyFiles = onlyFiles || word == "--";
        if (word.starts_with('[') && word.ends_with(']')) word += bracketMark;
        // "--option=" gives the empty text.
        if (!onlyFiles && word.starts_with("--") && word.find('=') == word.size() - 1) {
            words.push_back(word.substr(0, word.size() - 1));
            word.clear();
        }
        words.push_back(std::move(word));
    }
    std::ranges::reverse(words);
    return words;
}

bool asksForJson(int argc, const char* const* argv) {
    return std::ranges::any_of(std::span(argv, static_cast<std::size_t>(argc)),
                               [](const char* word) { return std::string_view(word) == "--json"; });
}

const CLI::App& deepest(const CLI::App& app) {
    const auto parsed = app.get_subcommands();
    return parsed.empty() ? app : deepest(*parsed.front());
}

/// What was typed, such as "quillary recent add".
QString spelled(const CLI::App& app) {
    const QString name = QString::fromStdString(app.get_name());
    return app.get_parent() ? spelled(*app.get_parent()) + u' ' + name : name;
}

CommandError usageError(const CLI::App& app, const QString& message) {
    return CommandError::usage(message, QStringLiteral("Try “%1 --help”.").arg(spelled(deepest(app))));
}

QString wordsOf(const CLI::App& app, const CLI::ParseError& error) {
    if (dynamic_cast<const CLI::ExtrasError*>(&error)) {
        const auto extras = app.remaining(true);
        const QString first = extras.empty() ? QString() : QString::fromStdString(extras.front());
        if (app.get_subcommands().empty() && !first.startsWith(u'-'))
            return QStringLiteral("There is no command “%1”.").arg(first);
        return QStringLiteral("“%1” was not expected.").arg(first);
    }
    return QString::fromUtf8(error.what());
}

} // namespace

CommandLine::State::State() {
    app.set_version_flag("--version", "quillary " QUILLARY_VERSION);
    app.add_option_function<std::string>(
           "--library", [this](const std::string& folder) { library = folder; },
           "Use this library folder, for this run only")
        ->type_name("DIR");
    app.add_flag("--json", style.json, "Print exactly one JSON document");
    app.add_flag("--quiet", style.quiet, "Print results and errors only");
    app.require_subcommand(0, 1);
    app.get_formatter()->column_width(34);

    Grammar root(app, commands);
    root.command<PanelCommand>("panel", "Open the panel");
    declareClipboardAndFiles(root);
    declareCutout(root);
    declareCredits(root);
    declareTransform(root);
    declareSave(root);
    declareListing(root);
    declareMedia(root);
    declareLookingAfter(root);
    declareBlocks(root);
    declareRecent(root);
    declareHistory(root);
    declareLibrary(root);
    declareSettings(root);
    declareCompletion(root);
    keepBrackets(app);
}

void CommandLine::State::keepBrackets(CLI::App& level) {
    const auto takeOff = [](std::string& word) {
        if (word.ends_with(bracketMark)) word.pop_back();
        return std::string();
    };
    for (CLI::Option* option : level.get_options({}))
        if (option->get_items_expected_max() > 0) option->transform(CLI::Validator(takeOff, ""));
    for (CLI::App* below : level.get_subcommands({})) keepBrackets(*below);
}

CommandLine::CommandLine() : m_state(std::make_unique<State>()) {}

CommandLine::~CommandLine() = default;

std::optional<int> CommandLine::parse(int argc, const char* const* argv) {
    State& state = *m_state;
    try {
        state.app.parse(prepared(argc, argv));
    } catch (const CLI::Success& success) {
        return state.app.exit(success);
    } catch (const CLI::ParseError& error) {
        state.style.json = asksForJson(argc, argv);
        return fail(usageError(state.app, wordsOf(state.app, error)));
    }
    if (state.library) {
        if (state.library->empty())
            return fail(usageError(state.app, QStringLiteral("--library: a folder is missing.")));
        std::error_code ignored;
        state.libraryFolder = std::filesystem::absolute(*state.library, ignored);
    }
    const CLI::App& chosen = deepest(state.app);
    if (&chosen == &state.app) {
        state.panel = PanelOptions();
        return {};
    }
    const auto command = std::ranges::find(state.commands, &chosen, [](const auto& entry) { return entry.first; });
    if (command == state.commands.end())
        return fail(usageError(state.app, QStringLiteral("“%1” needs a command after it.").arg(spelled(chosen))));
    state.selected = command->second.get();
    if (state.library && state.selected->choosesLibrary())
        return fail(usageError(
            state.app, QStringLiteral("“--library” stands for a choice that “%1” would store.").arg(spelled(chosen))));
    if (const auto* panel = dynamic_cast<const PanelCommand*>(state.selected)) state.panel = panel->options();
    return {};
}

const std::optional<std::filesystem::path>& CommandLine::library() const {
    return m_state->libraryFolder;
}

const PanelOptions* CommandLine::panel() const {
    const auto& panel = m_state->panel;
    return panel ? &*panel : nullptr;
}

bool CommandLine::needsDisplay() const {
    return panel() || (m_state->selected && m_state->selected->needsDisplay());
}

int CommandLine::run(const CommandServices& services) {
    Output output(m_state->style);
    if (library() && m_state->selected->usesLibrary())
        if (const auto root = services.storage.root(); !root) return fail(root.error());
    const auto status = m_state->selected->run(services, output);
    if (!status) return fail(status.error());
    if (!output.finish()) {
        output.problem(QStringLiteral("Could not write to standard output."));
        return static_cast<int>(ExitStatus::failed);
    }
    return static_cast<int>(*status);
}

int CommandLine::fail(const CommandError& error) {
    Output output(m_state->style);
    output.failure(error);
    output.finish();
    return static_cast<int>(error.status);
}

} // namespace quillary
