#pragma once

#include <QCoreApplication>
#include <QLocale>

namespace quillary {

/// A text for the user in the language that was installed. `context` is the name of the folder or class that says it,
/// `about` tells translators what they cannot see. With a `count` the text has a form for each kind of number and "%n"
/// stands for it; such a text is looked up in English too. Any thread.
inline QString translate(const char* context, const char* text, const char* about = nullptr, qsizetype count = -1) {
    return QCoreApplication::translate(context, text, about, static_cast<int>(count));
}

/// The English forms of texts that a number decides. Every program installs them first; what it says is then English
/// whatever the desktop speaks. Main thread, once there is an application object.
void installEnglish();

/// The first of the locale's languages that there are texts for. English fills the gaps. Main thread, before the first
/// text is shown.
void installLanguage(const QLocale& locale);

} // namespace quillary
