#include "cli/Grammar.h"

#include <CLI/CLI.hpp>

namespace quillary::cli {

namespace {

std::string typeName(Value kind) {
    switch (kind) {
    case Value::file:
        return "FILE";
    case Value::folder:
        return "DIR";
    default:
        return "TEXT";
    }
}

std::string joined(const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& value : values) text += (text.empty() ? "" : "|") + value;
    return text;
}

void checkAmong(CLI::Option& option, const std::vector<std::string>& values) {
    const auto among = [values](const std::string& value) {
        const bool known = std::ranges::find(values, value) != values.end();
        return known ? std::string() : "“" + value + "” is none of " + joined(values);
    };
    option.check(CLI::Validator(among, ""));
}

auto textInto(auto& into) {
    return [&into](const std::string& value) { into = QString::fromStdString(value); };
}

auto pathInto(auto& into) {
    return [&into](const std::string& value) { into = std::filesystem::path(value); };
}

} // namespace

CLI::Option& Grammar::option(const char* name, Presence presence, const Store& store, const std::string& valueName,
                             const char* help) {
    auto* option = m_app.add_option_function<std::string>(name, store, help);
    option->type_name(valueName);
    option->required(presence == Presence::required);
    return *option;
}

void Grammar::flag(const char* name, bool& into, const char* help) {
    m_app.add_flag(name, into, help);
}

void Grammar::text(const char* name, std::optional<QString>& into, const char* valueName, const char* help) {
    option(name, Presence::optional, textInto(into), valueName, help);
}

void Grammar::text(const char* name, QString& into, const char* valueName, const char* help) {
    option(name, Presence::required, textInto(into), valueName, help);
}

void Grammar::choice(const char* name, std::optional<QString>& into, const std::vector<std::string>& values,
                     const char* help) {
    checkAmong(option(name, Presence::optional, textInto(into), joined(values), help), values);
}

void Grammar::choice(const char* name, QString& into, const std::vector<std::string>& values, const char* help) {
    checkAmong(option(name, Presence::required, textInto(into), joined(values), help), values);
}

void Grammar::suggested(const char* name, std::optional<QString>& into, const std::vector<std::string>& values,
                        const char* help) {
    option(name, Presence::optional, textInto(into), joined(values), help);
}

void Grammar::path(const char* name, std::optional<std::filesystem::path>& into, Value kind, const char* help) {
    option(name, Presence::optional, pathInto(into), typeName(kind), help);
}

void Grammar::path(const char* name, std::filesystem::path& into, Value kind, const char* help) {
    option(name, Presence::required, pathInto(into), typeName(kind), help);
}

void Grammar::files(const char* name, std::vector<std::filesystem::path>& into, const char* help, Presence presence) {
    auto* option = m_app.add_option_function<std::vector<std::string>>(
        name, [&into](const std::vector<std::string>& values) { into.assign(values.begin(), values.end()); }, help);
    option->type_name(typeName(Value::file));
    option->required(presence == Presence::required);
}

Grammar Grammar::below(const char* name, const char* help) {
    CLI::App& app = *m_app.add_subcommand(name, help);
    app.fallthrough();
    m_app.require_subcommand(0, 1);
    return {app, m_commands};
}

Grammar Grammar::group(const char* name, const char* help) {
    return below(name, help);
}

const CLI::App& Grammar::root() const {
    const CLI::App* app = &m_app;
    while (app->get_parent()) app = app->get_parent();
    return *app;
}

} // namespace quillary::cli
