<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>AliasBanner</name>
    <message numerus="yes">
        <source>Allow %n folder(s)</source>
        <translation>
            <numerusform>Allow folder</numerusform>
            <numerusform>Allow %n folders</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>AudioFooter</name>
    <message numerus="yes">
        <source>reading %n</source>
        <translation>
            <numerusform>reading %n</numerusform>
            <numerusform>reading %n</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BatchSave</name>
    <message numerus="yes">
        <source>Saved %n</source>
        <comment>images</comment>
        <translation>
            <numerusform>Saved %n</numerusform>
            <numerusform>Saved %n</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n video(s) to Videos</source>
        <translation>
            <numerusform>%n video to Videos</numerusform>
            <numerusform>%n videos to Videos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n sound(s) to Audio</source>
        <translation>
            <numerusform>%n sound to Audio</numerusform>
            <numerusform>%n sounds to Audio</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n already in your library</source>
        <translation>
            <numerusform>%n already in your library</numerusform>
            <numerusform>%n already in your library</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>couldn&apos;t read %n</source>
        <translation>
            <numerusform>couldn&apos;t read %n</numerusform>
            <numerusform>couldn&apos;t read %n</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n block(s) to Blocks</source>
        <translation>
            <numerusform>%n block to Blocks</numerusform>
            <numerusform>%n blocks to Blocks</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>couldn&apos;t save %n</source>
        <translation>
            <numerusform>couldn&apos;t save %n</numerusform>
            <numerusform>couldn&apos;t save %n</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n left out: no shelf takes it</source>
        <translation>
            <numerusform>%n left out: no shelf takes it</numerusform>
            <numerusform>%n left out: no shelf takes them</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n left out: no shelf takes %1</source>
        <translation>
            <numerusform>%n left out: no shelf takes %1</numerusform>
            <numerusform>%n left out: no shelf takes %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>stopped before %n file(s)</source>
        <translation>
            <numerusform>stopped before %n file</numerusform>
            <numerusform>stopped before %n files</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BlockMenu</name>
    <message numerus="yes">
        <source>Delete %n blocks</source>
        <translation>
            <numerusform>Delete %n blocks</numerusform>
            <numerusform>Delete %n blocks</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BlockedAliases</name>
    <message numerus="yes">
        <source>Access granted — %1, %n more folder(s) to allow</source>
        <translation>
            <numerusform>Access granted — %1, %n more folder to allow</numerusform>
            <numerusform>Access granted — %1, %n more folders to allow</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Blocks</name>
    <message numerus="yes">
        <source>Saved %n block(s)</source>
        <translation>
            <numerusform>Saved %n block</numerusform>
            <numerusform>Saved %n blocks</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n layer(s)</source>
        <translation>
            <numerusform>%n layer</numerusform>
            <numerusform>%n layers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n file</numerusform>
            <numerusform>%n files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n missing</source>
        <translation>
            <numerusform>%n missing</numerusform>
            <numerusform>%n missing</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n moved</source>
        <translation>
            <numerusform>%n moved</numerusform>
            <numerusform>%n moved</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n incomplete</source>
        <translation>
            <numerusform>%n incomplete</numerusform>
            <numerusform>%n incomplete</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ChooserSheet</name>
    <message numerus="yes">
        <source>%1 · %n file(s)</source>
        <translation>
            <numerusform>%1 · %n file</numerusform>
            <numerusform>%1 · %n files</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ContextBar</name>
    <message numerus="yes">
        <source>%n match(es)</source>
        <translation>
            <numerusform>%n match</numerusform>
            <numerusform>%n matches</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CopyRow</name>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n file</numerusform>
            <numerusform>%n files</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FolderGrid</name>
    <message numerus="yes">
        <source>%n more</source>
        <comment>folders</comment>
        <translation>
            <numerusform>%n more</numerusform>
            <numerusform>%n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ImportSummary</name>
    <message numerus="yes">
        <source>Show %n file(s)</source>
        <translation>
            <numerusform>Show %n file</numerusform>
            <numerusform>Show %n files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) were not saved</source>
        <translation>
            <numerusform>%n file was not saved</numerusform>
            <numerusform>%n files were not saved</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>LibraryView</name>
    <message numerus="yes">
        <source>Browse %n built-in icons</source>
        <translation>
            <numerusform>Browse %n built-in icons</numerusform>
            <numerusform>Browse %n built-in icons</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SelectionBar</name>
    <message numerus="yes">
        <source>%n selected</source>
        <translation>
            <numerusform>%n selected</numerusform>
            <numerusform>%n selected</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message numerus="yes">
        <source>%n image(s)</source>
        <translation>
            <numerusform>%n images</numerusform>
            <numerusform>%n images</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Shelf</name>
    <message numerus="yes">
        <source>Added %n sound(s)</source>
        <translation>
            <numerusform>Added %n sound</numerusform>
            <numerusform>Added %n sounds</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> · %n image(s)</source>
        <translation>
            <numerusform> · %n images</numerusform>
            <numerusform> · %n images</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> · %n could not be changed</source>
        <translation>
            <numerusform> · %n could not be changed</numerusform>
            <numerusform> · %n could not be changed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Added %n video(s)</source>
        <translation>
            <numerusform>Added %n video</numerusform>
            <numerusform>Added %n videos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> · and %n more</source>
        <translation>
            <numerusform> · and %n more</numerusform>
            <numerusform> · and %n more</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n file</numerusform>
            <numerusform>%n files</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Storage</name>
    <message numerus="yes">
        <source>Copied %n file(s)</source>
        <translation>
            <numerusform>Copied %n file</numerusform>
            <numerusform>Copied %n files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>, skipped %n already there</source>
        <translation>
            <numerusform>, skipped %n already there</numerusform>
            <numerusform>, skipped %n already there</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>, %n could not be copied</source>
        <translation>
            <numerusform>, %n could not be copied</numerusform>
            <numerusform>, %n could not be copied</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Unfinished</name>
    <message numerus="yes">
        <source>%n file(s) did not get into your library</source>
        <translation>
            <numerusform>%n file did not get into your library</numerusform>
            <numerusform>%n files did not get into your library</numerusform>
        </translation>
    </message>
</context>
</TS>
