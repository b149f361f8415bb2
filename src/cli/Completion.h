#pragma once

#include <string>

namespace CLI {
class App;
}

namespace quillary::cli {

enum class Shell { bash, zsh, fish };

/// The script that teaches a shell the program's words, made from the grammar itself: commands, options, the values
/// that are enumerated, and files where files are read.
std::string completionScript(Shell shell, const CLI::App& program);

} // namespace quillary::cli
