<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>AliasBanner</name>
    <message>
        <source>An alias here points outside your library folder</source>
        <translation>Ein Alias hier führt aus dem Mediathek-Ordner hinaus</translation>
    </message>
    <message numerus="yes">
        <source>Allow %n folder(s)</source>
        <translation>
            <numerusform>Ordner erlauben</numerusform>
            <numerusform>%n Ordner erlauben</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>AudioFooter</name>
    <message>
        <source>Drop audio files, or add them in the Finder</source>
        <translation>Audiodateien hier ablegen oder im Finder hinzufügen</translation>
    </message>
    <message>
        <source>Click to play · drag the waveform to scrub · drag the handle into Final Cut</source>
        <translation>Klicken: abspielen · Wellenform ziehen: suchen · Griff in Final Cut ziehen</translation>
    </message>
    <message numerus="yes">
        <source>reading %n</source>
        <translation>
            <numerusform>noch %n</numerusform>
            <numerusform>noch %n</numerusform>
        </translation>
    </message>
    <message>
        <source>Preview volume</source>
        <translation>Lautstärke der Vorschau</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
</context>
<context>
    <name>AudioRow</name>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Remove from Favorites</source>
        <translation>Aus Favoriten entfernen</translation>
    </message>
    <message>
        <source>Add to Favorites</source>
        <translation>Zu Favoriten hinzufügen</translation>
    </message>
    <message>
        <source>Drag into Final Cut</source>
        <translation>In Final Cut ziehen</translation>
    </message>
</context>
<context>
    <name>AudioView</name>
    <message>
        <source>you already keep them in — subfolders become collections.</source>
        <translation>in denen sie schon liegen – Unterordner werden Sammlungen.</translation>
    </message>
    <message>
        <source>Drop sound effects here, or point Library/Audio at the folders</source>
        <translation>Soundeffekte hier ablegen oder Library/Audio auf die Ordner zeigen lassen,</translation>
    </message>
    <message>
        <source>No audio yet</source>
        <translation>Noch kein Audio</translation>
    </message>
    <message>
        <source>folders</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Audio dropped in while this collection is selected is filed here.</source>
        <translation>Audio, das bei gewählter Sammlung abgelegt wird, kommt hierher.</translation>
    </message>
    <message>
        <source>New audio collection</source>
        <translation>Neue Audio-Sammlung</translation>
    </message>
    <message>
        <source>Rename sound</source>
        <translation>Sound umbenennen</translation>
    </message>
    <message>
        <source>Sort</source>
        <translation>Sortieren</translation>
    </message>
</context>
<context>
    <name>BatchSave</name>
    <message numerus="yes">
        <source>Saved %n</source>
        <comment>images</comment>
        <translation>
            <numerusform>%n gesichert</numerusform>
            <numerusform>%n gesichert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n video(s) to Videos</source>
        <translation>
            <numerusform>%n Video zu Videos</numerusform>
            <numerusform>%n Videos zu Videos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n sound(s) to Audio</source>
        <translation>
            <numerusform>%n Sound zu Audio</numerusform>
            <numerusform>%n Sounds zu Audio</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n already in your library</source>
        <translation>
            <numerusform>%n schon in der Mediathek</numerusform>
            <numerusform>%n schon in der Mediathek</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>couldn&apos;t read %n</source>
        <translation>
            <numerusform>%n nicht lesbar</numerusform>
            <numerusform>%n nicht lesbar</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing to save.</source>
        <translation>Nichts zu sichern.</translation>
    </message>
    <message>
        <source>No shelf takes “%1”.</source>
        <translation>Keine Ablage nimmt „%1“ auf.</translation>
    </message>
    <message>
        <source>No shelf takes files of the kind “.%1”.</source>
        <translation>Keine Ablage nimmt Dateien der Art „.%1“ auf.</translation>
    </message>
    <message numerus="yes">
        <source>%n block(s) to Blocks</source>
        <translation>
            <numerusform>%n Block zu Blöcke</numerusform>
            <numerusform>%n Blöcke zu Blöcke</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>couldn&apos;t save %n</source>
        <translation>
            <numerusform>%n nicht gesichert</numerusform>
            <numerusform>%n nicht gesichert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n left out: no shelf takes it</source>
        <translation>
            <numerusform>%n ausgelassen: Keine Ablage nimmt sie auf</numerusform>
            <numerusform>%n ausgelassen: Keine Ablage nimmt sie auf</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n left out: no shelf takes %1</source>
        <translation>
            <numerusform>%n ausgelassen: Keine Ablage nimmt %1 auf</numerusform>
            <numerusform>%n ausgelassen: Keine Ablage nimmt %1 auf</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>stopped before %n file(s)</source>
        <translation>
            <numerusform>vor %n Datei angehalten</numerusform>
            <numerusform>vor %n Dateien angehalten</numerusform>
        </translation>
    </message>
    <message>
        <source>Stopped before it was reached.</source>
        <translation>Angehalten, bevor sie an der Reihe war.</translation>
    </message>
</context>
<context>
    <name>BlockMenu</name>
    <message>
        <source>Remove from Favorites</source>
        <translation>Aus Favoriten entfernen</translation>
    </message>
    <message>
        <source>Add to Favorites</source>
        <translation>Zu Favoriten hinzufügen</translation>
    </message>
    <message>
        <source>Replace poster frame</source>
        <translation>Standbild ersetzen</translation>
    </message>
    <message>
        <source>Paste poster frame</source>
        <translation>Standbild einsetzen</translation>
    </message>
    <message>
        <source>Remove poster frame</source>
        <translation>Standbild entfernen</translation>
    </message>
    <message>
        <source>Move to…</source>
        <translation>Bewegen nach …</translation>
    </message>
    <message numerus="yes">
        <source>Delete %n blocks</source>
        <translation>
            <numerusform>%n Block löschen</numerusform>
            <numerusform>%n Blöcke löschen</numerusform>
        </translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Rename…</source>
        <translation>Umbenennen …</translation>
    </message>
    <message>
        <source>Export for…</source>
        <translation>Exportieren für …</translation>
    </message>
    <message>
        <source>Media…</source>
        <translation>Medien …</translation>
    </message>
</context>
<context>
    <name>BlockTile</name>
    <message>
        <source>%1. %2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>Glidemark preset</source>
        <translation>Glidemark-Vorlage</translation>
    </message>
    <message>
        <source>Drag a block onto the timeline, then ⇧⌘G to break it apart</source>
        <translation>Block auf die Timeline ziehen, dann mit ⇧⌘G auflösen</translation>
    </message>
    <message>
        <source>Media: %1</source>
        <translation>Medien: %1</translation>
    </message>
</context>
<context>
    <name>BlockedAliases</name>
    <message numerus="yes">
        <source>Access granted — %1, %n more folder(s) to allow</source>
        <translation>
            <numerusform>Zugriff erlaubt – %1, noch %n Ordner zu erlauben</numerusform>
            <numerusform>Zugriff erlaubt – %1, noch %n Ordner zu erlauben</numerusform>
        </translation>
    </message>
    <message>
        <source>Access granted — %1</source>
        <translation>Zugriff erlaubt – %1</translation>
    </message>
    <message>
        <source>“%1” points at %2.

Choose that folder, or a folder above it — picking a parent grants everything inside it at once, so other aliases on the same drive will not need asking again.</source>
        <translation>„%1“ führt zu %2.

Wählen Sie diesen Ordner oder einen darüber – ein übergeordneter Ordner erlaubt auf einmal alles, was darin liegt, sodass für andere Aliasse auf demselben Laufwerk keine Nachfrage mehr nötig ist.</translation>
    </message>
    <message>
        <source>Grant Access</source>
        <translation>Zugriff erlauben</translation>
    </message>
</context>
<context>
    <name>Blocks</name>
    <message>
        <source>Couldn’t copy the media for “%1”</source>
        <translation>Die Medien für „%1“ konnten nicht kopiert werden</translation>
    </message>
    <message>
        <source>“%1” is already saved</source>
        <translation>„%1“ ist bereits gesichert</translation>
    </message>
    <message>
        <source>That isn’t a Final Cut clip</source>
        <translation>Das ist kein Final-Cut-Clip</translation>
    </message>
    <message>
        <source>%1 is not a block.</source>
        <translation>%1 ist kein Block.</translation>
    </message>
    <message>
        <source>Couldn’t read that image</source>
        <translation>Dieses Bild konnte nicht gelesen werden</translation>
    </message>
    <message>
        <source>Not enough memory</source>
        <translation>Nicht genug Speicher</translation>
    </message>
    <message>
        <source>Could not read %1: %2</source>
        <translation>%1 konnte nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>not a file</source>
        <translation>keine Datei</translation>
    </message>
    <message>
        <source>The document is too large.</source>
        <translation>Das Dokument ist zu groß.</translation>
    </message>
    <message numerus="yes">
        <source>%n layer(s)</source>
        <translation>
            <numerusform>%n Ebene</numerusform>
            <numerusform>%n Ebenen</numerusform>
        </translation>
    </message>
    <message>
        <source> · %1s</source>
        <comment>seconds</comment>
        <translation> · %1 s</translation>
    </message>
    <message>
        <source>That drag carried no Final Cut clip</source>
        <translation>Darin war kein Final-Cut-Clip</translation>
    </message>
    <message numerus="yes">
        <source>Saved %n block(s)</source>
        <translation>
            <numerusform>%n Block gesichert</numerusform>
            <numerusform>%n Blöcke gesichert</numerusform>
        </translation>
    </message>
    <message>
        <source>Saving…</source>
        <translation>Wird gesichert …</translation>
    </message>
    <message>
        <source>No image on the clipboard — take a screenshot first (⌘⇧4)</source>
        <translation>Kein Bild in der Zwischenablage – erst ein Bildschirmfoto aufnehmen (⌘⇧4)</translation>
    </message>
    <message>
        <source>Poster set</source>
        <translation>Standbild gesetzt</translation>
    </message>
    <message>
        <source>“%1” is no longer there.</source>
        <translation>„%1“ ist nicht mehr da.</translation>
    </message>
    <message>
        <source>Missing media, named all the same</source>
        <translation>Fehlende Medien, trotzdem genannt</translation>
    </message>
    <message>
        <source>It is the block itself.</source>
        <translation>Es ist der Block selbst.</translation>
    </message>
    <message>
        <source>It is not a regular file.</source>
        <translation>Es ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>Settings that version 1.10 does not know</source>
        <translation>Einstellungen, die Version 1.10 nicht kennt</translation>
    </message>
    <message>
        <source>This block holds more clips within clips than can be laid out flat.</source>
        <translation>Dieser Block enthält mehr Clips in Clips, als sich flach auslegen lassen.</translation>
    </message>
    <message>
        <source>The times in this block are too fine to be kept exactly.</source>
        <translation>Die Zeiten in diesem Block sind zu fein, um genau erhalten zu bleiben.</translation>
    </message>
    <message>
        <source>Titles</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>Untertitel</translation>
    </message>
    <message>
        <source>Transitions</source>
        <translation>Übergänge</translation>
    </message>
    <message>
        <source>Speed changes</source>
        <translation>Geschwindigkeitsänderungen</translation>
    </message>
    <message>
        <source>Frame rate conforming</source>
        <translation>Anpassungen der Bildrate</translation>
    </message>
    <message>
        <source>Video effects</source>
        <translation>Videoeffekte</translation>
    </message>
    <message>
        <source>Video effects with masks</source>
        <translation>Videoeffekte mit Masken</translation>
    </message>
    <message>
        <source>Audio effects</source>
        <translation>Audioeffekte</translation>
    </message>
    <message>
        <source>Crops</source>
        <translation>Beschnitte</translation>
    </message>
    <message>
        <source>Distortions</source>
        <translation>Verzerrungen</translation>
    </message>
    <message>
        <source>Fit and fill settings</source>
        <translation>Einstellungen zum Einpassen</translation>
    </message>
    <message>
        <source>Transforms</source>
        <translation>Transformationen</translation>
    </message>
    <message>
        <source>Opacity and blending</source>
        <translation>Deckkraft und Mischmodus</translation>
    </message>
    <message>
        <source>Stabilization</source>
        <translation>Stabilisierung</translation>
    </message>
    <message>
        <source>Rolling shutter corrections</source>
        <translation>Rolling-Shutter-Korrekturen</translation>
    </message>
    <message>
        <source>360° settings</source>
        <translation>360°-Einstellungen</translation>
    </message>
    <message>
        <source>Cinematic settings</source>
        <translation>Kino-Einstellungen</translation>
    </message>
    <message>
        <source>Color conforming</source>
        <translation>Farbanpassung</translation>
    </message>
    <message>
        <source>Stereo 3D settings</source>
        <translation>Stereo-3D-Einstellungen</translation>
    </message>
    <message>
        <source>Object trackers</source>
        <translation>Objekt-Tracker</translation>
    </message>
    <message>
        <source>Volume changes</source>
        <translation>Lautstärkeänderungen</translation>
    </message>
    <message>
        <source>Panning</source>
        <translation>Panorama</translation>
    </message>
    <message>
        <source>Audio enhancements</source>
        <translation>Audioverbesserungen</translation>
    </message>
    <message>
        <source>Audio channel settings</source>
        <translation>Einstellungen der Audiokanäle</translation>
    </message>
    <message>
        <source>Audio component settings</source>
        <translation>Einstellungen der Audiokomponenten</translation>
    </message>
    <message>
        <source>Silenced ranges</source>
        <translation>Stumme Bereiche</translation>
    </message>
    <message>
        <source>Markers</source>
        <translation>Marker</translation>
    </message>
    <message>
        <source>Chapter markers</source>
        <translation>Kapitelmarker</translation>
    </message>
    <message>
        <source>Analysis markers</source>
        <translation>Analysemarker</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>Schlagwörter</translation>
    </message>
    <message>
        <source>Ratings</source>
        <translation>Bewertungen</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notizen</translation>
    </message>
    <message>
        <source>Metadata</source>
        <translation>Metadaten</translation>
    </message>
    <message>
        <source>Bookmarks</source>
        <translation>Lesezeichen</translation>
    </message>
    <message>
        <source>Locators</source>
        <translation>Verweise</translation>
    </message>
    <message>
        <source>“%1” settings</source>
        <translation>Einstellungen „%1“</translation>
    </message>
    <message>
        <source>Other clips and projects of the document</source>
        <translation>Andere Clips und Projekte des Dokuments</translation>
    </message>
    <message>
        <source>Clips nested too deeply</source>
        <translation>Zu tief verschachtelte Clips</translation>
    </message>
    <message>
        <source>Clips without content</source>
        <translation>Clips ohne Inhalt</translation>
    </message>
    <message>
        <source>Unused angles of multicam clips</source>
        <translation>Unbenutzte Blickwinkel von Multicam-Clips</translation>
    </message>
    <message>
        <source>Alternatives in auditions</source>
        <translation>Alternativen in Hörproben</translation>
    </message>
    <message>
        <source>Clips without media</source>
        <translation>Clips ohne Medien</translation>
    </message>
    <message>
        <source>Generators</source>
        <translation>Generatoren</translation>
    </message>
    <message>
        <source>%1 is missing.</source>
        <translation>%1 fehlt.</translation>
    </message>
    <message>
        <source>There is not enough space: %1 are needed, %2 are free.</source>
        <translation>Der Platz reicht nicht: %1 werden gebraucht, %2 sind frei.</translation>
    </message>
    <message>
        <source>“%1” uses the files that were found</source>
        <translation>„%1“ verwendet die gefundenen Dateien</translation>
    </message>
    <message>
        <source>Choose the folder for the export.</source>
        <translation>Ordner für den Export wählen.</translation>
    </message>
    <message>
        <source>Choose where to make the folder with “%1” and its media.</source>
        <translation>Wählen, wo der Ordner mit „%1“ und seinen Medien angelegt werden soll.</translation>
    </message>
    <message>
        <source>Use Folder</source>
        <translation>Ordner verwenden</translation>
    </message>
    <message>
        <source>%1 · %2 · FCPXML %3</source>
        <translation>%1 · %2 · FCPXML %3</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n Datei</numerusform>
            <numerusform>%n Dateien</numerusform>
        </translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Fehlt</translation>
    </message>
    <message>
        <source>Missing from %1</source>
        <translation>Fehlt in %1</translation>
    </message>
    <message>
        <source>Found in %1</source>
        <translation>Gefunden in %1</translation>
    </message>
    <message>
        <source>There is another copy in the library</source>
        <translation>In der Mediathek gibt es eine weitere Kopie</translation>
    </message>
    <message numerus="yes">
        <source>%n missing</source>
        <translation>
            <numerusform>%n fehlt</numerusform>
            <numerusform>%n fehlen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n moved</source>
        <translation>
            <numerusform>%n verschoben</numerusform>
            <numerusform>%n verschoben</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 more</source>
        <comment>files</comment>
        <translation>%1 weitere</translation>
    </message>
    <message>
        <source>%1 and %2 are missing.</source>
        <comment>files</comment>
        <translation>%1 und %2 fehlen.</translation>
    </message>
    <message>
        <source>Incomplete media, named all the same</source>
        <translation>Unvollständige Medien, trotzdem genannt</translation>
    </message>
    <message>
        <source>The document does not tell its version of FCPXML, so it cannot be brought to version 1.10.</source>
        <translation>Das Dokument nennt seine FCPXML-Version nicht und lässt sich deshalb nicht auf Version 1.10 bringen.</translation>
    </message>
    <message>
        <source>FCPXML %1 cannot be brought to version 1.10.</source>
        <translation>FCPXML %1 lässt sich nicht auf Version 1.10 bringen.</translation>
    </message>
    <message>
        <source>Two resources of the document are called “%1”, so it cannot be brought to version 1.10.</source>
        <translation>Zwei Ressourcen des Dokuments heißen „%1“; es lässt sich deshalb nicht auf Version 1.10 bringen.</translation>
    </message>
    <message>
        <source>A timeline refers to the format “%1”, which the document does not have, so it cannot be brought to version 1.10.</source>
        <translation>Eine Timeline verweist auf das Format „%1“, das im Dokument fehlt; es lässt sich deshalb nicht auf Version 1.10 bringen.</translation>
    </message>
    <message>
        <source>References to what the document does not have</source>
        <translation>Verweise auf das, was im Dokument fehlt</translation>
    </message>
    <message>
        <source>Parts of clips beyond the end of their media</source>
        <translation>Teile von Clips hinter dem Ende ihrer Medien</translation>
    </message>
    <message>
        <source>Markers outside of their clips</source>
        <translation>Marker außerhalb ihrer Clips</translation>
    </message>
    <message>
        <source>A file without a name</source>
        <translation>Eine Datei ohne Namen</translation>
    </message>
    <message numerus="yes">
        <source>%n incomplete</source>
        <translation>
            <numerusform>%n unvollständig</numerusform>
            <numerusform>%n unvollständig</numerusform>
        </translation>
    </message>
    <message>
        <source>Only a part of it is in %1</source>
        <translation>Nur ein Teil davon liegt in %1</translation>
    </message>
    <message>
        <source>Block</source>
        <translation>Block</translation>
    </message>
</context>
<context>
    <name>BlocksView</name>
    <message>
        <source>drag it from the browser onto this panel, then ⌘Z to undo the compound.</source>
        <translation>aus der Übersicht auf dieses Fenster ziehen, dann ⌘Z.</translation>
    </message>
    <message>
        <source>In Final Cut: select your clips, press ⌥G to make a compound clip,</source>
        <translation>In Final Cut: Clips auswählen, mit ⌥G zusammensetzen,</translation>
    </message>
    <message>
        <source>No blocks yet</source>
        <translation>Noch keine Blöcke</translation>
    </message>
    <message>
        <source>folders</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Drag a block onto the timeline, then ⇧⌘G to break it apart</source>
        <translation>Block auf die Timeline ziehen, dann mit ⇧⌘G auflösen</translation>
    </message>
    <message>
        <source>Drag a compound clip from Final Cut’s browser</source>
        <translation>Zusammengesetzten Clip aus der Übersicht von Final Cut hierher ziehen</translation>
    </message>
    <message>
        <source>Blocks dropped in while this collection is selected are filed here.</source>
        <translation>Blöcke, die bei gewählter Sammlung abgelegt werden, kommen hierher.</translation>
    </message>
    <message>
        <source>New block collection</source>
        <translation>Neue Block-Sammlung</translation>
    </message>
    <message>
        <source>Rename block</source>
        <translation>Block umbenennen</translation>
    </message>
    <message>
        <source>Saving</source>
        <translation>Wird gesichert</translation>
    </message>
    <message>
        <source>Needs Glidemark</source>
        <translation>Benötigt Glidemark</translation>
    </message>
    <message>
        <source>Screenshot the Final Cut viewer, then click this (or press ⌘V)</source>
        <translation>Bildschirmfoto des Final-Cut-Viewers aufnehmen, dann hier klicken (oder ⌘V)</translation>
    </message>
    <message>
        <source>Replace poster</source>
        <translation>Standbild ersetzen</translation>
    </message>
    <message>
        <source>Paste poster frame</source>
        <translation>Standbild einsetzen</translation>
    </message>
</context>
<context>
    <name>ChooserSheet</name>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>In this folder</source>
        <translation>In diesem Ordner</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message numerus="yes">
        <source>%1 · %n file(s)</source>
        <translation>
            <numerusform>%1 · %n Datei</numerusform>
            <numerusform>%1 · %n Dateien</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CollectionMoveMenu</name>
    <message>
        <source>Move to</source>
        <translation>Bewegen nach</translation>
    </message>
</context>
<context>
    <name>ContextBar</name>
    <message>
        <source> in %1</source>
        <translation> in %1</translation>
    </message>
    <message>
        <source> in Unfiled</source>
        <translation> ohne Sammlung</translation>
    </message>
    <message>
        <source> in Recent</source>
        <translation> in Zuletzt</translation>
    </message>
    <message>
        <source> in all %1</source>
        <translation> in allen (%1)</translation>
    </message>
    <message numerus="yes">
        <source>%n match(es)</source>
        <translation>
            <numerusform>%n Treffer</numerusform>
            <numerusform>%n Treffer</numerusform>
        </translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
</context>
<context>
    <name>CopyRow</name>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n Datei</numerusform>
            <numerusform>%n Dateien</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>CopySheet</name>
    <message>
        <source>Copy your files to the new location?</source>
        <translation>Dateien an den neuen Ort kopieren?</translation>
    </message>
    <message>
        <source>Copying leaves the originals where they are, so switching back later finds everything still there. Files already at the new location are left alone rather than duplicated.

Taking Blocks always brings their media in Final Cut Elements along, even if you leave the rest of that shelf behind — moving one without the other would take them offline.</source>
        <translation>Beim Kopieren bleiben die Originale, wo sie sind; wer später zurückwechselt, findet alles wieder vor. Dateien, die am neuen Ort schon liegen, werden nicht verdoppelt.

Mit den Blöcken kommen immer auch ihre Medien in Final Cut Elements mit, selbst wenn der Rest dieser Ablage zurückbleibt – das eine ohne das andere ginge offline.</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Videos</source>
        <translation>Videos</translation>
    </message>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Blocks</source>
        <translation>Blöcke</translation>
    </message>
    <message>
        <source>Recent</source>
        <translation>Zuletzt</translation>
    </message>
    <message>
        <source>Don&apos;t Copy</source>
        <translation>Nicht kopieren</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
</context>
<context>
    <name>Cutout</name>
    <message>
        <source>The cutout was cancelled.</source>
        <translation>Das Freistellen wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Could not read that image.</source>
        <translation>Dieses Bild konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>No subject found to cut out.</source>
        <translation>Es wurde kein Motiv zum Freistellen gefunden.</translation>
    </message>
    <message>
        <source>This works on a subject against a background — a logo, a product, a person. A flat graphic that already fills the frame has nothing to separate.</source>
        <translation>Das geht mit einem Motiv vor einem Hintergrund – einem Logo, einem Produkt, einer Person. Eine flächige Grafik, die schon das ganze Bild füllt, hat nichts zu trennen.</translation>
    </message>
    <message>
        <source>Could not apply the mask.</source>
        <translation>Die Maske konnte nicht angewendet werden.</translation>
    </message>
    <message>
        <source>Could not render the cutout.</source>
        <translation>Der Freisteller konnte nicht gezeichnet werden.</translation>
    </message>
    <message>
        <source>Flat background</source>
        <translation>Einfarbiger Hintergrund</translation>
    </message>
    <message>
        <source>Subject</source>
        <translation>Motiv</translation>
    </message>
    <message>
        <source>Could not rebuild the image.</source>
        <translation>Das Bild konnte nicht neu aufgebaut werden.</translation>
    </message>
    <message>
        <source>out of memory</source>
        <translation>zu wenig Speicher</translation>
    </message>
    <message>
        <source>Could not look for a subject: %1.</source>
        <translation>Ein Motiv konnte nicht gesucht werden: %1.</translation>
    </message>
    <message>
        <source>The subject model “%1” cannot be used: %2.</source>
        <translation>Das Motiv-Modell „%1“ kann nicht verwendet werden: %2.</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>die Datei gibt es nicht</translation>
    </message>
</context>
<context>
    <name>CutoutButton</name>
    <message>
        <source>Cut Out Again</source>
        <translation>Neu freistellen</translation>
    </message>
    <message>
        <source>Remove Background</source>
        <translation>Freistellen</translation>
    </message>
    <message>
        <source>Cutout method</source>
        <translation>Methode zum Freistellen</translation>
    </message>
    <message>
        <source>Flat background</source>
        <translation>Einfarbiger Hintergrund</translation>
    </message>
    <message>
        <source>Subject (photo)</source>
        <translation>Motiv (Foto)</translation>
    </message>
    <message>
        <source>Clean edge colour</source>
        <translation>Kantenfarbe bereinigen</translation>
    </message>
    <message>
        <source>Also clear enclosed areas</source>
        <translation>Auch Eingeschlossenes entfernen</translation>
    </message>
    <message>
        <source>Trim transparent border</source>
        <translation>Transparenten Rand beschneiden</translation>
    </message>
</context>
<context>
    <name>CutoutRow</name>
    <message>
        <source>Original</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>Cutout</source>
        <translation>Freisteller</translation>
    </message>
    <message>
        <source>Shown picture</source>
        <translation>Gezeigtes Bild</translation>
    </message>
    <message>
        <source>Edge</source>
        <translation>Kante</translation>
    </message>
</context>
<context>
    <name>EdgeLabel</name>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>tighter</source>
        <translation>enger</translation>
    </message>
</context>
<context>
    <name>EditorGroup</name>
    <message>
        <source>The program that you drag into, as it is called in the panel.</source>
        <translation>Das Programm, in das du ziehst, so wie es im Panel heißt.</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>Schnittprogramm</translation>
    </message>
    <message>
        <source>Other…</source>
        <translation>Anderes …</translation>
    </message>
    <message>
        <source>Name of your editor</source>
        <translation>Name deines Schnittprogramms</translation>
    </message>
</context>
<context>
    <name>ExportSheet</name>
    <message>
        <source>Export “%1”</source>
        <translation>„%1“ exportieren</translation>
    </message>
    <message>
        <source>FCPXML 1.10</source>
        <translation>FCPXML 1.10</translation>
    </message>
    <message>
        <source>OpenTimelineIO</source>
        <translation>OpenTimelineIO</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>For editors that read FCPXML up to version 1.10. Titles and effects stay; what only newer versions know is left out.</source>
        <translation>Für Programme, die FCPXML bis Version 1.10 lesen. Titel und Effekte bleiben; was nur neuere Versionen kennen, fällt weg.</translation>
    </message>
    <message>
        <source>Media relative to the export</source>
        <translation>Medien relativ zum Export</translation>
    </message>
    <message>
        <source>Wrote %1</source>
        <translation>%1 geschrieben</translation>
    </message>
    <message>
        <source>Left out:</source>
        <translation>Weggelassen:</translation>
    </message>
    <message>
        <source>Nothing was left out.</source>
        <translation>Nichts wurde weggelassen.</translation>
    </message>
    <message>
        <source>Left out</source>
        <translation>Weggelassen</translation>
    </message>
    <message>
        <source>Show in Files</source>
        <translation>In Dateien anzeigen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>Exportieren …</translation>
    </message>
    <message>
        <source>For editors that read OpenTimelineIO. Flat tracks with one clip for each piece of media. Markers, roles and even speeds stay; titles and effects are left out.</source>
        <translation>Für Schnittprogramme, die OpenTimelineIO lesen. Flache Spuren mit einem Clip für jedes Medium. Marker, Rollen und gleichmäßige Geschwindigkeiten bleiben; Titel und Effekte entfallen.</translation>
    </message>
</context>
<context>
    <name>FileListSheet</name>
    <message>
        <source>Copy List</source>
        <translation>Liste kopieren</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
</context>
<context>
    <name>FileMenu</name>
    <message>
        <source>Remove from Favorites</source>
        <translation>Aus Favoriten entfernen</translation>
    </message>
    <message>
        <source>Add to Favorites</source>
        <translation>Zu Favoriten hinzufügen</translation>
    </message>
    <message>
        <source>Rename…</source>
        <translation>Umbenennen …</translation>
    </message>
    <message>
        <source>Move to…</source>
        <translation>Bewegen nach …</translation>
    </message>
</context>
<context>
    <name>FileRow</name>
    <message>
        <source>Remove from Favorites</source>
        <translation>Aus Favoriten entfernen</translation>
    </message>
    <message>
        <source>Add to Favorites</source>
        <translation>Zu Favoriten hinzufügen</translation>
    </message>
</context>
<context>
    <name>FilterBar</name>
    <message>
        <source>Recent</source>
        <translation>Zuletzt</translation>
    </message>
    <message>
        <source>Unfiled</source>
        <translation>Ohne Sammlung</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Choose a collection</source>
        <translation>Sammlung wählen</translation>
    </message>
    <message>
        <source>Collection: %1</source>
        <translation>Sammlung: %1</translation>
    </message>
    <message>
        <source>Showing favorites only</source>
        <translation>Nur Favoriten werden gezeigt</translation>
    </message>
    <message>
        <source>Show favorites only</source>
        <translation>Nur Favoriten zeigen</translation>
    </message>
</context>
<context>
    <name>Finishing</name>
    <message>
        <source>Quillary is finishing</source>
        <translation>Quillary wird fertig</translation>
    </message>
</context>
<context>
    <name>FinishingView</name>
    <message>
        <source>Finishing %1 of %2…</source>
        <translation>%1 von %2 werden fertiggestellt …</translation>
    </message>
    <message>
        <source>Finishing…</source>
        <translation>Wird fertiggestellt …</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>Wird fertiggestellt</translation>
    </message>
    <message>
        <source>Show Panel</source>
        <translation>Panel zeigen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
</context>
<context>
    <name>FolderGrid</name>
    <message>
        <source>Folders</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message numerus="yes">
        <source>%n more</source>
        <comment>folders</comment>
        <translation>
            <numerusform>%n weiterer</numerusform>
            <numerusform>%n weitere</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FolderMenu</name>
    <message>
        <source>Collections</source>
        <translation>Sammlungen</translation>
    </message>
</context>
<context>
    <name>FolderMenuList</name>
    <message>
        <source>Collections</source>
        <translation>Sammlungen</translation>
    </message>
    <message>
        <source>New Collection…</source>
        <translation>Neue Sammlung …</translation>
    </message>
</context>
<context>
    <name>FormatChip</name>
    <message>
        <source>Only %1</source>
        <translation>Nur %1</translation>
    </message>
</context>
<context>
    <name>HistoryButton</name>
    <message>
        <source>Paste history</source>
        <translation>Verlauf</translation>
    </message>
</context>
<context>
    <name>ImageIntake</name>
    <message>
        <source>Could not read %1.</source>
        <translation>%1 konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>No image on the clipboard.</source>
        <translation>Kein Bild in der Zwischenablage.</translation>
    </message>
    <message>
        <source>That image had no pixels.</source>
        <translation>Dieses Bild hatte keine Pixel.</translation>
    </message>
    <message>
        <source>Copy an image — from a browser, a screenshot, Figma, Slack — then paste again.</source>
        <translation>Ein Bild kopieren – aus dem Browser, ein Bildschirmfoto, aus Figma oder Slack – und dann erneut einsetzen.</translation>
    </message>
    <message>
        <source>Try a PNG, TIFF or JPEG.</source>
        <translation>Ein PNG, TIFF oder JPEG versuchen.</translation>
    </message>
    <message>
        <source>The video may be damaged, or of a kind that can’t be read here.</source>
        <translation>Das Video ist vielleicht beschädigt oder von einer Art, die hier nicht gelesen werden kann.</translation>
    </message>
    <message>
        <source>It is a sound: there is no picture in it.</source>
        <translation>Es ist ein Ton: Ein Bild ist nicht darin.</translation>
    </message>
    <message>
        <source>The document is locked with a password.</source>
        <translation>Das Dokument ist mit einem Passwort geschützt.</translation>
    </message>
    <message>
        <source>%1 is locked with a password.</source>
        <translation>%1 ist mit einem Passwort geschützt.</translation>
    </message>
    <message>
        <source>Save a copy of it without the password, then use that.</source>
        <translation>Sichere eine Kopie ohne Passwort und nimm dann diese.</translation>
    </message>
</context>
<context>
    <name>ImageMenu</name>
    <message>
        <source>Remove from Favorites</source>
        <translation>Aus Favoriten entfernen</translation>
    </message>
    <message>
        <source>Add to Favorites</source>
        <translation>Zu Favoriten hinzufügen</translation>
    </message>
    <message>
        <source>Remove Background…</source>
        <translation>Freistellen …</translation>
    </message>
    <message>
        <source>Rotate &amp; Flip</source>
        <translation>Drehen &amp; Spiegeln</translation>
    </message>
    <message>
        <source>Rotate Left</source>
        <translation>Nach links drehen</translation>
    </message>
    <message>
        <source>Rotate Right</source>
        <translation>Nach rechts drehen</translation>
    </message>
    <message>
        <source>Flip Horizontal</source>
        <translation>Horizontal spiegeln</translation>
    </message>
    <message>
        <source>Flip Vertical</source>
        <translation>Vertikal spiegeln</translation>
    </message>
    <message>
        <source>Rename…</source>
        <translation>Umbenennen …</translation>
    </message>
    <message>
        <source>Save to My Library</source>
        <translation>In meiner Mediathek sichern</translation>
    </message>
    <message>
        <source>Remove from Recent</source>
        <translation>Aus Zuletzt entfernen</translation>
    </message>
    <message>
        <source>Remove from Library</source>
        <translation>Aus der Mediathek entfernen</translation>
    </message>
    <message>
        <source>Move to…</source>
        <translation>Bewegen nach …</translation>
    </message>
</context>
<context>
    <name>ImageTransform</name>
    <message>
        <source>Rotate Left</source>
        <translation>Nach links drehen</translation>
    </message>
    <message>
        <source>Rotate Right</source>
        <translation>Nach rechts drehen</translation>
    </message>
    <message>
        <source>Flip Horizontal</source>
        <translation>Horizontal spiegeln</translation>
    </message>
    <message>
        <source>Flip Vertical</source>
        <translation>Vertikal spiegeln</translation>
    </message>
    <message>
        <source>It is not a regular file</source>
        <translation>Es ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>It may not be written</source>
        <translation>Sie darf nicht beschrieben werden</translation>
    </message>
    <message>
        <source>It is no picture that can be read here</source>
        <translation>Es ist kein Bild, das hier gelesen werden kann</translation>
    </message>
    <message>
        <source>Not enough memory</source>
        <translation>Nicht genug Arbeitsspeicher</translation>
    </message>
    <message>
        <source>It tells no size</source>
        <translation>Sie nennt keine Größe</translation>
    </message>
</context>
<context>
    <name>ImportButton</name>
    <message>
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>Import image files…</source>
        <translation>Bilddateien importieren …</translation>
    </message>
    <message>
        <source>Import sounds…</source>
        <translation>Sounds importieren …</translation>
    </message>
    <message>
        <source>Import video files…</source>
        <translation>Videodateien importieren …</translation>
    </message>
    <message>
        <source>Import blocks…</source>
        <translation>Blöcke importieren …</translation>
    </message>
    <message>
        <source>Import folders…</source>
        <translation>Ordner importieren …</translation>
    </message>
    <message>
        <source>Import files</source>
        <translation>Dateien importieren</translation>
    </message>
</context>
<context>
    <name>ImportProgress</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
</context>
<context>
    <name>ImportSummary</name>
    <message numerus="yes">
        <source>Show %n file(s)</source>
        <translation>
            <numerusform>%n Datei zeigen</numerusform>
            <numerusform>%n Dateien zeigen</numerusform>
        </translation>
    </message>
    <message>
        <source>Keep folders</source>
        <translation>Ordner behalten</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Ausblenden</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) were not saved</source>
        <translation>
            <numerusform>%n Datei wurde nicht gesichert</numerusform>
            <numerusform>%n Dateien wurden nicht gesichert</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ImportTab</name>
    <message>
        <source>Videos, sounds and compound clips from Final Cut can be dragged in here too</source>
        <translation>Auch Videos, Sounds und zusammengesetzte Clips aus Final Cut lassen sich hierher ziehen</translation>
    </message>
</context>
<context>
    <name>IntakeNameField</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
</context>
<context>
    <name>Library</name>
    <message>
        <source>There is no picture of this file.</source>
        <translation>Von dieser Datei gibt es kein Bild.</translation>
    </message>
</context>
<context>
    <name>LibraryShelvesView</name>
    <message>
        <source>Shelf</source>
        <translation>Ablage</translation>
    </message>
</context>
<context>
    <name>LibraryTile</name>
    <message>
        <source>Drag into Final Cut · click to select</source>
        <translation>In Final Cut ziehen · Klick wählt aus</translation>
    </message>
</context>
<context>
    <name>LibraryView</name>
    <message>
        <source>Already have a collection? Point the library at that drive in Settings and move your files into Library/Images. Folders you make there become collections.</source>
        <translation>Gibt es schon eine Sammlung? Die Mediathek in den Einstellungen auf dieses Laufwerk legen und die Dateien nach Library/Images bewegen. Ordner, die dort angelegt werden, sind Sammlungen.</translation>
    </message>
    <message>
        <source>Drop a folder of images here, or save the one you pasted</source>
        <translation>Einen Ordner mit Bildern hier ablegen oder das eingesetzte Bild sichern</translation>
    </message>
    <message>
        <source>Images you move here will show up</source>
        <translation>Hierher bewegte Bilder erscheinen hier</translation>
    </message>
    <message>
        <source>Nothing saved yet</source>
        <translation>Noch nichts gesichert</translation>
    </message>
    <message>
        <source>Collections are folders inside your library, so you can also see them in the Finder.</source>
        <translation>Sammlungen sind Ordner in der Mediathek und damit auch im Finder zu sehen.</translation>
    </message>
    <message>
        <source>New collection</source>
        <translation>Neue Sammlung</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Rename image</source>
        <translation>Bild umbenennen</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alle auswählen</translation>
    </message>
    <message numerus="yes">
        <source>Browse %n built-in icons</source>
        <translation>
            <numerusform>%n mitgeliefertes Symbol ansehen</numerusform>
            <numerusform>%n mitgelieferte Symbole ansehen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>LoadedFooter</name>
    <message>
        <source>Paste</source>
        <translation>Einsetzen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Save to Library</source>
        <translation>In Mediathek sichern</translation>
    </message>
</context>
<context>
    <name>Media</name>
    <message>
        <source>The file couldn’t be read.</source>
        <translation>Die Datei konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Die Datei ist leer.</translation>
    </message>
    <message>
        <source>The file is damaged or of an unknown kind.</source>
        <translation>Die Datei ist beschädigt oder von unbekannter Art.</translation>
    </message>
    <message>
        <source>The file holds no sound.</source>
        <translation>Die Datei enthält keinen Ton.</translation>
    </message>
    <message>
        <source>The file holds no video.</source>
        <translation>Die Datei enthält kein Video.</translation>
    </message>
    <message>
        <source>There is no decoder for this kind of file.</source>
        <translation>Für diese Art von Datei gibt es keinen Decoder.</translation>
    </message>
    <message>
        <source>The file holds nothing to play.</source>
        <translation>Die Datei enthält nichts zum Abspielen.</translation>
    </message>
    <message>
        <source>The decoders are missing; reinstall the program.</source>
        <translation>Die Decoder fehlen; bitte das Programm neu installieren.</translation>
    </message>
    <message>
        <source>Stopped.</source>
        <translation>Angehalten.</translation>
    </message>
    <message>
        <source>There is no sound output.</source>
        <translation>Es gibt keine Tonausgabe.</translation>
    </message>
    <message>
        <source>The sound output doesn’t take this sound.</source>
        <translation>Die Tonausgabe nimmt diesen Sound nicht an.</translation>
    </message>
</context>
<context>
    <name>MediaRow</name>
    <message>
        <source>Present</source>
        <translation>Vorhanden</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Fehlt</translation>
    </message>
    <message>
        <source>Moved</source>
        <translation>Verschoben</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Doppelt</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Incomplete</source>
        <translation>Unvollständig</translation>
    </message>
</context>
<context>
    <name>MediaSheet</name>
    <message>
        <source>Media of “%1”</source>
        <translation>Medien von „%1“</translation>
    </message>
    <message>
        <source>Media</source>
        <translation>Medien</translation>
    </message>
    <message>
        <source>This block uses no media.</source>
        <translation>Dieser Block verwendet keine Medien.</translation>
    </message>
    <message>
        <source>Making the folder</source>
        <translation>Ordner wird angelegt</translation>
    </message>
    <message>
        <source>Made the folder “%1”</source>
        <translation>Ordner „%1“ angelegt</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Use Found Files</source>
        <translation>Gefundene verwenden</translation>
    </message>
    <message>
        <source>Makes a folder with the block and copies of all its media, to be carried elsewhere</source>
        <translation>Legt einen Ordner mit dem Block und Kopien aller seiner Medien an, zum Mitnehmen</translation>
    </message>
    <message>
        <source>Make Portable…</source>
        <translation>Zum Mitnehmen …</translation>
    </message>
    <message>
        <source>Show in Files</source>
        <translation>In Dateien anzeigen</translation>
    </message>
</context>
<context>
    <name>NameSheet</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>Panel</name>
    <message>
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Mediathek</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Videos</source>
        <translation>Videos</translation>
    </message>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Blocks</source>
        <translation>Blöcke</translation>
    </message>
    <message>
        <source>Nothing readable in that drop.</source>
        <translation>Darin war nichts Lesbares.</translation>
    </message>
    <message>
        <source>Drop PNG, TIFF, JPEG, SVG or PDF files.</source>
        <translation>PNG-, TIFF-, JPEG-, SVG- oder PDF-Dateien ablegen.</translation>
    </message>
    <message>
        <source>Could not read that file.</source>
        <translation>Diese Datei konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Try a PNG, TIFF, JPEG, SVG or PDF.</source>
        <translation>Ein PNG, TIFF, JPEG, SVG oder PDF versuchen.</translation>
    </message>
    <message>
        <source>Could not read that image.</source>
        <translation>Dieses Bild konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Choose sounds to add to your library.</source>
        <translation>Sounds für die Mediathek wählen.</translation>
    </message>
    <message>
        <source>Choose video files to add to your library.</source>
        <translation>Videodateien für die Mediathek wählen.</translation>
    </message>
    <message>
        <source>Choose images to add to your library.</source>
        <translation>Bilder für die Mediathek wählen.</translation>
    </message>
    <message>
        <source>Final Cut clips can’t be pasted</source>
        <translation>Final-Cut-Clips lassen sich nicht einsetzen</translation>
    </message>
    <message>
        <source>Drag the compound clip from the browser instead.</source>
        <translation>Den zusammengesetzten Clip stattdessen aus der Übersicht ziehen.</translation>
    </message>
    <message>
        <source>Cutout saved to your library</source>
        <translation>Freisteller in der Mediathek gesichert</translation>
    </message>
    <message>
        <source>Saved to your library</source>
        <translation>In der Mediathek gesichert</translation>
    </message>
    <message>
        <source>cutout · %1</source>
        <translation>freigestellt · %1</translation>
    </message>
    <message>
        <source>Choose FCPXML documents to keep as blocks.</source>
        <translation>FCPXML-Dokumente wählen, die als Blöcke aufgehoben werden.</translation>
    </message>
    <message>
        <source>Choose folders to add to your library.</source>
        <translation>Wähle Ordner für deine Mediathek.</translation>
    </message>
    <message>
        <source>“%1” saved to your library</source>
        <translation>„%1“ in der Mediathek gesichert</translation>
    </message>
    <message>
        <source>“%1” was not saved. %2</source>
        <translation>„%1“ wurde nicht gesichert. %2</translation>
    </message>
</context>
<context>
    <name>PanelView</name>
    <message>
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Mediathek</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Bereich</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>PasteStrip</name>
    <message>
        <source>Paste history</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>%1 · click to stage again, or drag it out</source>
        <translation>%1 · Klick holt es zurück, ziehen geht auch</translation>
    </message>
</context>
<context>
    <name>PastedImage</name>
    <message>
        <source>File · %1</source>
        <translation>Datei · %1</translation>
    </message>
    <message>
        <source>Rasterized from %1</source>
        <translation>Gerastert aus %1</translation>
    </message>
    <message>
        <source>Clipboard bitmap · %1</source>
        <translation>Bitmap aus der Zwischenablage · %1</translation>
    </message>
    <message>
        <source>Small for a 4K timeline — fine at this size on screen, soft if you scale it up.</source>
        <translation>Klein für eine 4K-Timeline – in dieser Größe gut, vergrößert unscharf.</translation>
    </message>
</context>
<context>
    <name>PathBar</name>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
</context>
<context>
    <name>Picker</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>Platform</name>
    <message>
        <source>It is being changed by another program</source>
        <translation>Ein anderes Programm verändert sie gerade</translation>
    </message>
</context>
<context>
    <name>ProblemBadge</name>
    <message>
        <source>Media: %1</source>
        <translation>Medien: %1</translation>
    </message>
</context>
<context>
    <name>RecentLimitAlert</name>
    <message>
        <source>Old projects may stop opening properly</source>
        <translation>Alte Projekte öffnen sich womöglich nicht mehr richtig</translation>
    </message>
    <message>
        <source>Deleting files from Recent cannot be undone. If Final Cut is set to “Leave files in place”, any project using a deleted graphic will show it as missing — often months later.

Keep Never delete if you want old projects to always open. Or set Final Cut → Settings → Import → Files to “Copy to library”, which makes Final Cut keep its own copy of every graphic, and then a limit here is harmless.</source>
        <translation>Das Löschen aus „Zuletzt“ lässt sich nicht rückgängig machen. Steht Final Cut auf „Dateien am Speicherort belassen“, fehlt eine gelöschte Grafik in jedem Projekt, das sie verwendet – oft erst Monate später.

Mit „Nie löschen“ öffnen sich alte Projekte immer. Oder in Final Cut unter Einstellungen → Importieren → Dateien „In Mediathek kopieren“ wählen: Dann behält Final Cut eine eigene Kopie jeder Grafik, und eine Grenze hier schadet nicht.</translation>
    </message>
    <message>
        <source>Set a Limit</source>
        <translation>Grenze setzen</translation>
    </message>
    <message>
        <source>Keep Never Delete</source>
        <translation>Weiterhin nie löschen</translation>
    </message>
</context>
<context>
    <name>RemovalAlert</name>
    <message>
        <source>Remove %1 for good?</source>
        <translation>%1 endgültig entfernen?</translation>
    </message>
    <message>
        <source>That is too much to be brought back afterwards. The trash keeps it until you empty it.</source>
        <translation>Das ist zu viel, um es danach zurückzuholen. Der Papierkorb behält es, bis du ihn leerst.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Move to Trash</source>
        <translation>In den Papierkorb</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>Suche leeren</translation>
    </message>
</context>
<context>
    <name>SelectionBar</name>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message numerus="yes">
        <source>%n selected</source>
        <translation>
            <numerusform>%n ausgewählt</numerusform>
            <numerusform>%n ausgewählt</numerusform>
        </translation>
    </message>
    <message>
        <source>Move to</source>
        <translation>Bewegen nach</translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation>Auswahl aufheben</translation>
    </message>
    <message>
        <source>Drag all selected files</source>
        <translation>Alle ausgewählten Dateien ziehen</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>Never delete</source>
        <translation>Nie löschen</translation>
    </message>
    <message numerus="yes">
        <source>%n image(s)</source>
        <translation>
            <numerusform>%n Bild</numerusform>
            <numerusform>%n Bilder</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose where to keep the Quillary folder. A folder called “Quillary” is created inside whatever you pick.</source>
        <translation>Wählen Sie, wo der Quillary-Ordner liegen soll. Am gewählten Ort wird ein Ordner namens „Quillary“ angelegt.</translation>
    </message>
    <message>
        <source>Use Folder</source>
        <translation>Ordner verwenden</translation>
    </message>
    <message>
        <source>Choose the ONNX file that finds subjects.</source>
        <translation>Wählen Sie die ONNX-Datei, die Motive findet.</translation>
    </message>
    <message>
        <source>Use File</source>
        <translation>Datei verwenden</translation>
    </message>
    <message>
        <source>Models</source>
        <translation>Modelle</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>A folder called “Quillary” is created wherever you choose, with Library/Images, Library/Videos, Library/Blocks and Recent inside it.

If you already have graphics and clips collected somewhere, point this at that drive and move your files into Images and Videos with the Finder — folders you make in there become collections. The panel picks them all up next time it opens. Nothing has to be imported one at a time. Put it on a media drive to keep every graphic for a job in one place — dragging into Final Cut works from anywhere, because a drag carries its own permission with it.</source>
        <translation>Am gewählten Ort wird ein Ordner namens „Quillary“ angelegt, darin Library/Images, Library/Videos, Library/Blocks und Recent.

Liegen schon irgendwo Grafiken und Clips, hier dieses Laufwerk wählen und die Dateien im Finder nach Images und Videos bewegen – dort angelegte Ordner werden Sammlungen. Beim nächsten Öffnen sind sie alle da; nichts muss einzeln importiert werden. Auf einem Medienlaufwerk liegen alle Grafiken eines Auftrags beisammen – in Final Cut ziehen geht von überall, denn ein Drag bringt seine eigene Erlaubnis mit.</translation>
    </message>
    <message>
        <source>Library location</source>
        <translation>Ort der Mediathek</translation>
    </message>
    <message>
        <source>Not available</source>
        <translation>Nicht verfügbar</translation>
    </message>
    <message>
        <source>Library folder</source>
        <translation>Mediathek-Ordner</translation>
    </message>
    <message>
        <source>Your chosen folder is not available — an external drive may be disconnected. Using the default location until it is back.</source>
        <translation>Der gewählte Ordner ist nicht verfügbar – vielleicht ist ein externes Laufwerk nicht angeschlossen. Bis es zurück ist, gilt der Standardort.</translation>
    </message>
    <message>
        <source>Choose the folder that holds the library</source>
        <translation>Ordner wählen, der die Mediathek enthält</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Wählen …</translation>
    </message>
    <message>
        <source>Show in Files</source>
        <translation>In Dateien anzeigen</translation>
    </message>
    <message>
        <source>Use Default</source>
        <translation>Standardort</translation>
    </message>
    <message>
        <source>Copying your files…</source>
        <translation>Dateien werden kopiert …</translation>
    </message>
    <message>
        <source>Everything you drag into Final Cut is saved here automatically, so you can find it again even if you never saved it deliberately. Your Library is never pruned — only Recent is.</source>
        <translation>Alles, was in Final Cut gezogen wird, wird hier von selbst gesichert und findet sich wieder, auch wenn es nie bewusst gesichert wurde. Aufgeräumt wird nur „Zuletzt“, die Mediathek nie.</translation>
    </message>
    <message>
        <source>Keep in Recent</source>
        <translation>In „Zuletzt“ behalten</translation>
    </message>
    <message>
        <source>Before setting a limit, check Final Cut → Settings → Import → Files. If it says “Leave files in place”, your projects point straight at these files and deleting one takes that graphic offline — keep Never delete. Only cap it if Final Cut is set to copy media into your library.</source>
        <translation>Vor einer Grenze in Final Cut unter Einstellungen → Importieren → Dateien nachsehen. Steht dort „Dateien am Speicherort belassen“, verweisen die Projekte auf genau diese Dateien, und jede gelöschte geht offline – dann „Nie löschen“ beibehalten. Eine Grenze nur setzen, wenn Final Cut Medien in die Mediathek kopiert.</translation>
    </message>
    <message>
        <source>Final Cut cannot read SVG or PDF, so they are converted on the way in. 4096 suits artwork that fills the frame; 1024 or 2048 is plenty for icons and keeps a large library much lighter for Final Cut to decode.</source>
        <translation>Final Cut liest weder SVG noch PDF, deshalb werden sie beim Hereinkommen umgewandelt. 4096 passt für Grafiken, die das Bild füllen; 1024 oder 2048 reichen für Symbole und machen eine große Mediathek für Final Cut viel leichter.</translation>
    </message>
    <message>
        <source>Rasterize vectors at</source>
        <translation>Vektoren rastern mit</translation>
    </message>
    <message>
        <source>Subjects are found without any file. A model of your own in an ONNX file that gives a mask of the subject finds them better.</source>
        <translation>Motive werden auch ohne Datei gefunden. Ein eigenes Modell in einer ONNX-Datei, das eine Maske des Motivs liefert, findet sie besser.</translation>
    </message>
    <message>
        <source>Find subjects with</source>
        <translation>Motive finden mit</translation>
    </message>
    <message>
        <source>Use None</source>
        <translation>Keins verwenden</translation>
    </message>
    <message>
        <source>Choose a model</source>
        <translation>Modell wählen</translation>
    </message>
    <message>
        <source>No model</source>
        <translation>Kein Modell</translation>
    </message>
    <message>
        <source>Model that finds subjects</source>
        <translation>Modell, das Motive findet</translation>
    </message>
    <message>
        <source>Import is the default because it is the urgent direction — something is on the clipboard and you want it in Final Cut. The Library is one click away either way.</source>
        <translation>Vorgabe ist Import, weil das die eilige Richtung ist – etwas liegt in der Zwischenablage und soll in Final Cut. Die Mediathek ist so oder so nur einen Klick entfernt.</translation>
    </message>
    <message>
        <source>Open on the Library</source>
        <translation>Mit der Mediathek öffnen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>The last twelve pictures that you pasted or dropped, in a strip under the stage. They lie in your cache folder and go nowhere else. Switching this off forgets them.</source>
        <translation>Die letzten zwölf eingesetzten oder abgelegten Bilder, in einem Streifen unter der Bühne. Sie liegen im Cache-Ordner und kommen nirgendwo sonst hin. Ausschalten vergisst sie.</translation>
    </message>
    <message>
        <source>Keep a paste history</source>
        <translation>Verlauf führen</translation>
    </message>
    <message>
        <source>Clear the paste history</source>
        <translation>Verlauf leeren</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>This panel was started with a library of its own. A place chosen here would not hold for it.</source>
        <translation>Dieses Panel wurde mit einer eigenen Mediathek gestartet. Ein hier gewählter Ort würde für es nicht gelten.</translation>
    </message>
    <message>
        <source>The panel stays in front when you click into the editor.</source>
        <translation>Das Panel bleibt vorn, wenn du ins Schnittprogramm klickst.</translation>
    </message>
    <message>
        <source>This desktop leaves that to you: open the menu of the panel’s title bar, by a right click or Alt+Space, and choose “Always on Top” there.</source>
        <translation>Dieser Desktop überlässt das dir: Öffne das Menü der Titelleiste mit einem Rechtsklick oder Alt+Leertaste und wähle dort „Immer im Vordergrund“.</translation>
    </message>
    <message>
        <source>Keep above other windows</source>
        <translation>Über anderen Fenstern halten</translation>
    </message>
</context>
<context>
    <name>Shelf</name>
    <message>
        <source>Newest</source>
        <translation>Neueste</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Shortest</source>
        <translation>Kürzeste</translation>
    </message>
    <message>
        <source>Longest</source>
        <translation>Längste</translation>
    </message>
    <message>
        <source>%1s</source>
        <comment>seconds</comment>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Nothing readable in that drop</source>
        <translation>Darin war nichts Lesbares</translation>
    </message>
    <message>
        <source>Those aren’t audio files</source>
        <translation>Das sind keine Audiodateien</translation>
    </message>
    <message numerus="yes">
        <source>Added %n sound(s)</source>
        <translation>
            <numerusform>%n Sound hinzugefügt</numerusform>
            <numerusform>%n Sounds hinzugefügt</numerusform>
        </translation>
    </message>
    <message>
        <source>“%1” is not there any more</source>
        <translation>„%1“ ist nicht mehr da</translation>
    </message>
    <message>
        <source>%1 saved to your library</source>
        <translation>%1 in der Mediathek gesichert</translation>
    </message>
    <message numerus="yes">
        <source> · %n image(s)</source>
        <translation>
            <numerusform> · %n Bild</numerusform>
            <numerusform> · %n Bilder</numerusform>
        </translation>
    </message>
    <message>
        <source>“%1” could not be changed</source>
        <translation>„%1“ konnte nicht geändert werden</translation>
    </message>
    <message numerus="yes">
        <source> · %n could not be changed</source>
        <translation>
            <numerusform> · %n nicht geändert</numerusform>
            <numerusform> · %n nicht geändert</numerusform>
        </translation>
    </message>
    <message>
        <source>That drag carried no Final Cut clip</source>
        <translation>Darin war kein Final-Cut-Clip</translation>
    </message>
    <message numerus="yes">
        <source> · and %n more</source>
        <translation>
            <numerusform> · und %n weitere</numerusform>
            <numerusform> · und %n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>Renamed to “%1”</source>
        <translation>Umbenannt in „%1“</translation>
    </message>
    <message>
        <source>Could not create the collection “%1”.</source>
        <translation>Die Sammlung „%1“ konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <source>“%1” is no longer there.</source>
        <translation>„%1“ ist nicht mehr da.</translation>
    </message>
    <message>
        <source>Those aren’t video files</source>
        <translation>Das sind keine Videodateien</translation>
    </message>
    <message numerus="yes">
        <source>Added %n video(s)</source>
        <translation>
            <numerusform>%n Video hinzugefügt</numerusform>
            <numerusform>%n Videos hinzugefügt</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n Datei</numerusform>
            <numerusform>%n Dateien</numerusform>
        </translation>
    </message>
    <message>
        <source>renaming to “%1”</source>
        <translation>Umbenennen in „%1“</translation>
    </message>
    <message>
        <source>moving %1</source>
        <translation>Verschieben von %1</translation>
    </message>
    <message>
        <source>Moved %1 to the trash</source>
        <translation>%1 in den Papierkorb gelegt</translation>
    </message>
    <message>
        <source>moving %1 to the trash</source>
        <translation>Verschieben von %1 in den Papierkorb</translation>
    </message>
    <message>
        <source>adding %1 to favorites</source>
        <translation>Hinzufügen von %1 zu den Favoriten</translation>
    </message>
    <message>
        <source>removing %1 from favorites</source>
        <translation>Entfernen von %1 aus den Favoriten</translation>
    </message>
    <message>
        <source>“%1” was changed by another program since; it stays as it is.</source>
        <translation>„%1“ wurde seither von einem anderen Programm geändert und bleibt, wie es ist.</translation>
    </message>
    <message>
        <source>Could not write “%1”: %2</source>
        <translation>„%1“ konnte nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Undid %1</source>
        <translation>Rückgängig gemacht: %1</translation>
    </message>
    <message>
        <source>Redid %1</source>
        <translation>Wiederholt: %1</translation>
    </message>
    <message>
        <source>Nothing to undo</source>
        <translation>Nichts rückgängig zu machen</translation>
    </message>
    <message>
        <source>Nothing to redo</source>
        <translation>Nichts zu wiederholen</translation>
    </message>
    <message>
        <source>Another file is called “%1” by now; it stays as it is.</source>
        <translation>Inzwischen heißt eine andere Datei „%1“; sie bleibt, wie sie ist.</translation>
    </message>
    <message>
        <source>removing %1</source>
        <translation>Entfernen von %1</translation>
    </message>
    <message>
        <source>Removed %1 · Ctrl+Z undoes it</source>
        <translation>%1 entfernt · Strg+Z holt es zurück</translation>
    </message>
    <message>
        <source>Removed %1 for good</source>
        <translation>%1 endgültig entfernt</translation>
    </message>
    <message>
        <source>Built-in icons can’t be edited — save a copy first</source>
        <translation>Mitgelieferte Symbole lassen sich nicht bearbeiten – sichere zuerst eine Kopie</translation>
    </message>
</context>
<context>
    <name>ShelfItem</name>
    <message>
        <source>%1, favorite</source>
        <translation>%1, Favorit</translation>
    </message>
</context>
<context>
    <name>ShelfMenu</name>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>Pfad kopieren</translation>
    </message>
    <message>
        <source>Show in Files</source>
        <translation>In Dateien anzeigen</translation>
    </message>
    <message>
        <source>Copy Credits</source>
        <translation>Quellenangaben kopieren</translation>
    </message>
    <message>
        <source>Move to Trash</source>
        <translation>In den Papierkorb legen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>ShelfView</name>
    <message>
        <source>Files you move here will show up</source>
        <translation>Hierher bewegte Dateien erscheinen hier</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Everything you drag out is kept here</source>
        <translation>Alles, was herausgezogen wird, bleibt hier erhalten</translation>
    </message>
    <message>
        <source>Nothing matches</source>
        <translation>Keine Treffer</translation>
    </message>
    <message>
        <source>Nothing here yet</source>
        <translation>Hier ist noch nichts</translation>
    </message>
    <message>
        <source>Create</source>
        <translation>Anlegen</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
</context>
<context>
    <name>Stage</name>
    <message>
        <source>Videos, sounds and Final Cut compound clips can be dragged in too</source>
        <translation>Auch Videos, Sounds und zusammengesetzte Clips aus Final Cut lassen sich hierher ziehen</translation>
    </message>
    <message>
        <source>⌘V, or drag one in</source>
        <translation>⌘V oder eines hierher ziehen</translation>
    </message>
    <message>
        <source>Paste an image</source>
        <translation>Bild einsetzen</translation>
    </message>
    <message>
        <source>Reading the image…</source>
        <translation>Bild wird gelesen …</translation>
    </message>
    <message>
        <source>Stop cutting out</source>
        <translation>Freistellen abbrechen</translation>
    </message>
    <message>
        <source>Cutting out…</source>
        <translation>Wird freigestellt …</translation>
    </message>
    <message>
        <source>Back to “%1”</source>
        <translation>Zurück zu „%1“</translation>
    </message>
</context>
<context>
    <name>StagedLine</name>
    <message>
        <source>Staged “%1” in Import</source>
        <translation>„%1“ liegt im Import</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Close this note</source>
        <translation>Hinweis schließen</translation>
    </message>
</context>
<context>
    <name>StagedMenu</name>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>Pfad kopieren</translation>
    </message>
    <message>
        <source>Show in Files</source>
        <translation>In Dateien anzeigen</translation>
    </message>
</context>
<context>
    <name>StagedNotes</name>
    <message>
        <source>Show all notes</source>
        <translation>Alle Hinweise zeigen</translation>
    </message>
</context>
<context>
    <name>StagedPicture</name>
    <message>
        <source>Drag into Final Cut</source>
        <translation>In Final Cut ziehen</translation>
    </message>
</context>
<context>
    <name>Storage</name>
    <message numerus="yes">
        <source>Copied %n file(s)</source>
        <translation>
            <numerusform>%n Datei kopiert</numerusform>
            <numerusform>%n Dateien kopiert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>, skipped %n already there</source>
        <translation>
            <numerusform>, %n schon vorhanden übersprungen</numerusform>
            <numerusform>, %n schon vorhandene übersprungen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>, %n could not be copied</source>
        <translation>
            <numerusform>, %n nicht kopiert</numerusform>
            <numerusform>, %n nicht kopiert</numerusform>
        </translation>
    </message>
    <message>
        <source>Could not write %1: %2</source>
        <translation>%1 konnte nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Could not open the Quillary folder.</source>
        <translation>Der Quillary-Ordner konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Could not encode that image as PNG.</source>
        <translation>Dieses Bild konnte nicht als PNG kodiert werden.</translation>
    </message>
    <message>
        <source>%1 is a folder.</source>
        <translation>%1 ist ein Ordner.</translation>
    </message>
    <message>
        <source>%1 is not in the library.</source>
        <translation>%1 liegt nicht in der Mediathek.</translation>
    </message>
    <message>
        <source>Could not delete %1: %2</source>
        <translation>%1 konnte nicht gelöscht werden: %2</translation>
    </message>
    <message>
        <source>Could not move %1: %2</source>
        <translation>%1 konnte nicht bewegt werden: %2</translation>
    </message>
    <message>
        <source>Recent has no collections.</source>
        <translation>„Zuletzt“ hat keine Sammlungen.</translation>
    </message>
    <message>
        <source>Could not create the folder “%1”: %2</source>
        <translation>Der Ordner „%1“ konnte nicht angelegt werden: %2</translation>
    </message>
    <message>
        <source>Could not read %1.</source>
        <translation>%1 konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Another file is called “%1” by now; both stay as they are.</source>
        <translation>Inzwischen heißt eine andere Datei „%1“; beide bleiben, wie sie sind.</translation>
    </message>
    <message>
        <source>“%1” is no longer there.</source>
        <translation>„%1“ ist nicht mehr da.</translation>
    </message>
    <message>
        <source>There is no trash on the drive of “%1”; the file stays.</source>
        <translation>Das Laufwerk von „%1“ hat keinen Papierkorb; die Datei bleibt.</translation>
    </message>
    <message>
        <source>Could not move “%1” to the trash: %2</source>
        <translation>„%1“ konnte nicht in den Papierkorb gelegt werden: %2</translation>
    </message>
    <message>
        <source>“%1” is not in the trash any more.</source>
        <translation>„%1“ ist nicht mehr im Papierkorb.</translation>
    </message>
    <message>
        <source>Could not take “%1” out of the trash: %2</source>
        <translation>„%1“ konnte nicht aus dem Papierkorb geholt werden: %2</translation>
    </message>
</context>
<context>
    <name>SystemWording</name>
    <message>
        <source>Ctrl+V</source>
        <translation>Strg+V</translation>
    </message>
    <message>
        <source>Print</source>
        <comment>the key that takes a screenshot</comment>
        <translation>Druck</translation>
    </message>
    <message>
        <source>file manager</source>
        <translation>Dateimanager</translation>
    </message>
</context>
<context>
    <name>Unfinished</name>
    <message numerus="yes">
        <source>%n file(s) did not get into your library</source>
        <translation>
            <numerusform>%n Datei kam nicht in deine Mediathek</numerusform>
            <numerusform>%n Dateien kamen nicht in deine Mediathek</numerusform>
        </translation>
    </message>
    <message>
        <source>the copy of your library is not complete</source>
        <translation>die Kopie deiner Mediathek ist nicht vollständig</translation>
    </message>
</context>
<context>
    <name>UnfinishedBar</name>
    <message>
        <source>File Them Now</source>
        <translation>Jetzt aufnehmen</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Ausblenden</translation>
    </message>
</context>
<context>
    <name>VideosView</name>
    <message>
        <source>You can also put files straight into Library/Videos in the Finder.</source>
        <translation>Dateien lassen sich auch im Finder direkt nach Library/Videos legen.</translation>
    </message>
    <message>
        <source>Drop clips here, or drag a single clip out of Final Cut’s browser.</source>
        <translation>Clips hier ablegen oder einen einzelnen Clip aus der Übersicht von Final Cut ziehen.</translation>
    </message>
    <message>
        <source>No videos yet</source>
        <translation>Noch keine Videos</translation>
    </message>
    <message>
        <source>folders</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Drop video files, or drag one clip from Final Cut’s browser</source>
        <translation>Videodateien ablegen oder einen Clip aus der Übersicht von Final Cut ziehen</translation>
    </message>
    <message>
        <source>Drag a clip onto the timeline</source>
        <translation>Clip auf die Timeline ziehen</translation>
    </message>
    <message>
        <source>Videos dropped in while this collection is selected are filed here.</source>
        <translation>Videos, die bei gewählter Sammlung abgelegt werden, kommen hierher.</translation>
    </message>
    <message>
        <source>New video collection</source>
        <translation>Neue Video-Sammlung</translation>
    </message>
    <message>
        <source>Rename video</source>
        <translation>Video umbenennen</translation>
    </message>
</context>
<context>
    <name>Xml</name>
    <message>
        <source>no content</source>
        <translation>kein Inhalt</translation>
    </message>
    <message>
        <source>The document is too large.</source>
        <translation>Das Dokument ist zu groß.</translation>
    </message>
    <message>
        <source>There is not enough memory for the document.</source>
        <translation>Für das Dokument ist nicht genug Speicher da.</translation>
    </message>
    <message>
        <source>Not a well-formed XML document: line %1, %2</source>
        <translation>Kein wohlgeformtes XML-Dokument: Zeile %1, %2</translation>
    </message>
    <message>
        <source>Not a well-formed XML document: %1</source>
        <translation>Kein wohlgeformtes XML-Dokument: %1</translation>
    </message>
</context>
<context>
    <name>quillary::AudioShelf</name>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
</context>
<context>
    <name>quillary::BlocksShelf</name>
    <message>
        <source>Blocks</source>
        <translation>Blöcke</translation>
    </message>
</context>
<context>
    <name>quillary::FileActions</name>
    <message>
        <source>Nothing is known of where this came from</source>
        <translation>Woher das stammt, ist nicht bekannt</translation>
    </message>
</context>
<context>
    <name>quillary::FolderListModel</name>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Unfiled</source>
        <translation>Ohne Sammlung</translation>
    </message>
</context>
<context>
    <name>quillary::ImagesShelf</name>
    <message>
        <source>Recent</source>
        <translation>Zuletzt</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>Bilder</translation>
    </message>
</context>
<context>
    <name>quillary::PanelModel</name>
    <message>
        <source>Image: %1</source>
        <translation>Bild: %1</translation>
    </message>
    <message>
        <source>Page: %1</source>
        <translation>Seite: %1</translation>
    </message>
</context>
<context>
    <name>quillary::VideoShelf</name>
    <message>
        <source>Videos</source>
        <translation>Videos</translation>
    </message>
</context>
</TS>
