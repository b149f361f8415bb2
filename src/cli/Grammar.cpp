#include "cli/Grammar.h"

#include <CLI/CLI.hpp>

namespace quillary::cli {

namespace {

std::string typeName(Value kind) {
    switch (kind) {
    case Value::file: return "FILE";
    case Value::folder: return "DIR";
    default: return "TEXT";
    }
}

std::string joined(const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& value : values) text += (text.empty() ? "" : "|") + value;
    return text;
}

} // namespace

void Grammar::settle(CLI::Option& option, const std::string& valueName, Presence presence) {
    option.type_name(valueName);
    option.required(presence == Presence::required);
}

void Grammar::flag(const char* name, bool& into, const char* help) { m_app.add_flag(name, into, help); }

void Grammar::text(const char* name, std::optional<QString>& into, const char* valueName, const char* help,
                   Presence presence) {
    auto* option = m_app.add_option_function<std::string>(
        name, [&into](const std::string& value) { into = QString::fromStdString(value); }, help);
    settle(*option, valueName, presence);
}

void Grammar::choice(const char* name, std::optional<QString>& into, std::vector<std::string> values, const char* help,
                     Presence presence) {
    text(name, into, joined(values).c_str(), help, presence);
    m_app.get_option(name)->check(CLI::Validator(
        [values](const std::string& value) {
            const bool known = std::ranges::find(values, value) != values.end();
            return known ? std::string() : "“" + value + "” is none of " + joined(values);
        },
        ""));
}

void Grammar::suggested(const char* name, std::optional<QString>& into, const std::vector<std::string>& values,
                        const char* help) {
    text(name, into, joined(values).c_str(), help);
}

void Grammar::path(const char* name, std::optional<std::filesystem::path>& into, Value kind, const char* help,
                   Presence presence) {
    auto* option = m_app.add_option_function<std::string>(
        name, [&into](const std::string& value) { into = value; }, help);
    settle(*option, typeName(kind), presence);
}

void Grammar::files(const char* name, std::vector<std::filesystem::path>& into, const char* help, Presence presence) {
    auto* option = m_app.add_option_function<std::vector<std::string>>(
        name, [&into](const std::vector<std::string>& values) { into.assign(values.begin(), values.end()); }, help);
    settle(*option, typeName(Value::file), presence);
}

Grammar Grammar::below(const char* name, const char* help) {
    CLI::App& app = *m_app.add_subcommand(name, help);
    app.fallthrough();
    m_app.require_subcommand(0, 1);
    return {app, m_commands};
}

Grammar Grammar::group(const char* name, const char* help) {
    Grammar grammar = below(name, help);
    return grammar;
}

const CLI::App& Grammar::root() const {
    const CLI::App* app = &m_app;
    while (app->get_parent()) app = app->get_parent();
    return *app;
}

} // namespace quillary::cli
