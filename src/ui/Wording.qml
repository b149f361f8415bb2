pragma Singleton
import QtQuick
import Quillary.Controls

/// How texts are put for the user's editor and system. Both take a text that is translated already.
QtObject {
    /// What the editor that files are dragged into is called; the panel's owner sets it.
    property string editor: "Final Cut"

    /// A text that speaks of the editor as the place that things are dragged into.
    function forEditor(text: string): string {
        return text.split("Final Cut").join(editor);
    }
    /// A text that names keys or the program for files.
    function forSystem(text: string): string {
        return SystemWords.in(text);
    }
}
