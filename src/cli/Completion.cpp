#include "cli/Completion.h"

#include <CLI/CLI.hpp>
#include <functional>

namespace quillary::cli {

namespace {

using Words = std::vector<std::string>;

struct OptionWords {
    std::string name; ///< with its dashes
    std::string help;
    bool takesValue = false;
    bool files = false;
    Words values;
};

/// What may stand after the commands typed so far.
struct Place {
    std::string commands; ///< "/library/use"; empty for the program
    std::vector<const CLI::App*> below;
    std::vector<OptionWords> options;
    Words arguments; ///< enumerated values of positional arguments
    bool files = false;
};

Words split(const std::string& text, char at) {
    Words words;
    std::stringstream stream(text);
    for (std::string word; std::getline(stream, word, at);) words.push_back(word);
    return words;
}

std::string joined(const Words& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

bool namesFiles(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    return type == "FILE" || type == "DIR";
}

Words valuesOf(const CLI::Option& option) {
    const Words values = split(option.get_type_name(), '|');
    return values.size() > 1 ? values : Words();
}

Place placeOf(const CLI::App& app, const std::string& commands) {
    Place place;
    place.commands = commands;
    for (const CLI::Option* option : app.get_options({})) {
        if (option->nonpositional()) {
            const bool takesValue = option->get_items_expected_max() > 0;
            place.options.push_back({"--" + option->get_lnames().front(), option->get_description(), takesValue,
                                     takesValue && namesFiles(*option), takesValue ? valuesOf(*option) : Words()});
        } else {
            place.files = place.files || namesFiles(*option);
            std::ranges::copy(valuesOf(*option), std::back_inserter(place.arguments));
        }
    }
    place.below = app.get_subcommands({});
    return place;
}

std::vector<Place> placesOf(const CLI::App& program) {
    std::vector<Place> places;
    const std::function<void(const CLI::App&, const std::string&)> add = [&](const CLI::App& app,
                                                                             const std::string& at) {
        places.push_back(placeOf(app, at));
        for (const CLI::App* below : app.get_subcommands({})) add(*below, at + '/' + below->get_name());
    };
    add(program, "");
    return places;
}

/// Every word that may come next, options included; the program's own options may stand anywhere.
Words wordsOf(const Place& place, const Place& program) {
    Words words = place.arguments;
    for (const CLI::App* app : place.below) words.push_back(app->get_name());
    for (const OptionWords& option : place.options) words.push_back(option.name);
    if (!place.commands.empty())
        for (const OptionWords& option : program.options)
            if (std::ranges::find(words, option.name) == words.end()) words.push_back(option.name);
    return words;
}

std::string commandPatterns(const std::vector<Place>& places) {
    std::string patterns;
    for (const Place& place : places)
        if (!place.commands.empty()) patterns += (patterns.empty() ? "" : "|") + place.commands;
    return patterns;
}

/// The body that bash and zsh share: `place` becomes the commands typed so far, `next` the words that may follow,
/// `files` what kind of file may. `typed` holds the words before the current one, `previous` the last of them.
std::string decision(const std::vector<Place>& places) {
    std::string text = "    for word in \"${typed[@]}\"; do\n"
                       "        case \"$place/$word\" in\n"
                       "            " +
                       commandPatterns(places) +
                       ") place=\"$place/$word\" ;;\n"
                       "        esac\n"
                       "    done\n"
                       "    case \"$place $previous\" in\n";
    for (const Place& place : places)
        for (const OptionWords& option : place.options) {
            if (!option.takesValue) continue;
            const std::string pattern = place.commands.empty() ? "*" : place.commands;
            text += "        " + pattern + "' " + option.name + "') next='" + joined(option.values) + "'";
            text += std::string(" files=") + (option.files ? "yes" : "") + " ;;\n";
        }
    text += "        *)\n            case \"$place\" in\n";
    for (const Place& place : places)
        text += "                '" + place.commands + "') next='" + joined(wordsOf(place, places.front())) +
                "' files=" + (place.files ? "yes" : "") + " ;;\n";
    return text + "            esac ;;\n    esac\n"
                  "    # Options are offered once a dash is typed.\n"
                  "    [[ $current == -* ]] || { next=\" $next\"; next=${next%% --*}; }\n";
}

std::string bash(const std::vector<Place>& places) {
    return "_quillary() {\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} place= next= files= word\n"
           "    local typed=(\"${COMP_WORDS[@]:1:COMP_CWORD-1}\")\n" +
           decision(places) +
           "    COMPREPLY=()\n"
           "    # Without words of its own the shell offers files.\n"
           "    [[ $files && $current != -* ]] && return\n"
           "    compopt +o default 2>/dev/null\n"
           "    COMPREPLY=($(compgen -W \"$next\" -- \"$current\"))\n"
           "}\n"
           "complete -o default -F _quillary quillary\n";
}

std::string zsh(const std::vector<Place>& places) {
    return "#compdef quillary\n"
           "_quillary() {\n"
           "    local current=${words[CURRENT]} previous=${words[CURRENT-1]} place= next= files= word\n"
           "    local -a typed=(\"${(@)words[2,CURRENT-1]}\")\n" +
           decision(places) +
           "    if [[ -n $files && $current != -* ]]; then\n"
           "        _files\n"
           "    else\n"
           "        compadd -- ${=next}\n"
           "    fi\n"
           "}\n"
           "if [[ $funcstack[1] == _quillary ]]; then _quillary \"$@\"; else compdef _quillary quillary; fi\n";
}

std::string singleQuoted(const std::string& text) {
    std::string escaped;
    for (const char c : text) escaped += c == '\'' || c == '\\' ? std::string{'\\', c} : std::string{c};
    return "'" + escaped + "'";
}

std::string fishOption(const OptionWords& option) {
    std::string text = " -l " + option.name.substr(2);
    if (option.files)
        text += " -rF";
    else if (!option.values.empty())
        text += " -xa " + singleQuoted(joined(option.values));
    else if (option.takesValue)
        text += " -x";
    return text + " -d " + singleQuoted(option.help) + '\n';
}

std::string fish(const std::vector<Place>& places) {
    std::string text = "complete -c quillary -f\n";
    for (const Place& place : places) {
        std::string condition = "__fish_use_subcommand";
        if (!place.commands.empty()) {
            condition.clear();
            for (const std::string& command : split(place.commands.substr(1), '/'))
                condition += (condition.empty() ? "" : "; and ") + ("__fish_seen_subcommand_from " + command);
        }
        const std::string start = "complete -c quillary -n " + singleQuoted(condition);
        for (const CLI::App* app : place.below)
            text += start + " -a " + app->get_name() + " -d " + singleQuoted(app->get_description()) + '\n';
        if (!place.arguments.empty()) text += start + " -a " + singleQuoted(joined(place.arguments)) + '\n';
        if (place.files) text += start + " -F\n";
        // The program's own options may stand anywhere.
        for (const OptionWords& option : place.options)
            text += (place.commands.empty() ? "complete -c quillary" : start) + fishOption(option);
    }
    return text;
}

} // namespace

std::string completionScript(Shell shell, const CLI::App& program) {
    const auto places = placesOf(program);
    switch (shell) {
    case Shell::zsh:
        return zsh(places);
    case Shell::fish:
        return fish(places);
    default:
        return bash(places);
    }
}

} // namespace quillary::cli
