#include "cli/Commands.h"
#include "cli/Completion.h"

namespace quillary::cli {

namespace {

class CompletionCommand final : public Command {
    void declare(Grammar& grammar) override {
        grammar.choice("SHELL", m_shell, {"bash", "zsh", "fish"}, "Whose");
        m_program = &grammar.root();
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices&, Output& output) override {
        const Shell shell = m_shell == u"zsh" ? Shell::zsh : m_shell == u"fish" ? Shell::fish : Shell::bash;
        output.bytes(QByteArray::fromStdString(completionScript(shell, *m_program)));
        return ExitStatus::done;
    }

    const CLI::App* m_program = nullptr;
    QString m_shell;
};

} // namespace

void declareCompletion(Grammar& root) {
    root.command<CompletionCommand>("completion", "Print the completion script of a shell");
}

} // namespace quillary::cli
