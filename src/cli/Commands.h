#pragma once

#include "cli/Grammar.h"
#include "cli/PanelOptions.h"

namespace quillary::cli {

// Each adds the words of one family of commands; the bodies lie in a file of that name.

void declareClipboardAndFiles(Grammar& root); ///< intake, paste, thumbnail
void declareCutout(Grammar& root);
void declareCredits(Grammar& root);
void declareTransform(Grammar& root);
void declareSave(Grammar& root);
void declareListing(Grammar& root);      ///< list, collections
void declareMedia(Grammar& root);        ///< audio, video
void declareLookingAfter(Grammar& root); ///< favorite, move, rename, delete
void declareBlocks(Grammar& root);       ///< block save, xml, media, poster, and what follows
void declareBlockCare(Grammar& block);   ///< block export, portable, check
void declareRecent(Grammar& root);
void declareHistory(Grammar& root);
void declareLibrary(Grammar& root);
void declareSettings(Grammar& root);
void declareCompletion(Grammar& root);

/// The one command that is not run here: it only collects how the panel is to open.
class PanelCommand : public Command {
public:
    void declare(Grammar& grammar) override;
    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override;
    bool needsDisplay() const override { return true; }

    PanelOptions options() const;

private:
    std::vector<std::filesystem::path> m_arguments;
    std::optional<QString> m_tab;
    std::optional<QString> m_shelf;
    std::optional<std::filesystem::path> m_screenshot;
};

} // namespace quillary::cli
