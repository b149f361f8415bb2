#pragma once

#include <QCoreApplication>
#include <functional>
#include <memory>

namespace quillary {

/// The application object: one without a display, which costs little, or one with. It speaks English.
std::unique_ptr<QCoreApplication> applicationWithoutDisplay(int& argc, char** argv);

/// Where there is no display, or it cannot be reached, `refused` is asked for the exit status and the program ends: the
/// toolkit knows no way back from there.
std::unique_ptr<QCoreApplication> applicationWithDisplay(int& argc, char** argv, const std::function<int()>& refused);

} // namespace quillary
