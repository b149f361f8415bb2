pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Library
import Quillary.Model

/// The sheet in which the user's settings are changed; every change holds at once. It opens when it is made.
Sheet {
    id: sheet

    required property SettingsModel settings
    required property PasteHistoryModel history
    /// Whether the window system keeps a window in front when it is asked to.
    property bool keepsWindowsAbove: true
    readonly property CopyJob job: settings.copyJob

    function limitLabels(): list<string> {
        const labels = [];
        for (let at = 0; at < settings.recentLimits.length; ++at)
            labels.push(settings.recentLimitLabel(settings.recentLimits[at]));
        return labels;
    }
    /// Moves the group with the keyboard's control into view, of one that is too tall the part with the control.
    function reveal(item: Item) {
        let group = item;
        while (group && group.parent !== groups)
            group = group.parent;
        if (!group)
            return;
        const low = Math.max(0, Math.ceil(group.y + group.height - scroll.height));
        const top = item.mapToItem(groups, 0, 0).y - 2;
        const bottom = Math.ceil(top + item.height + 4 - scroll.height);
        scroll.contentY = Math.max(bottom, Math.min(top, Math.max(low, Math.min(scroll.contentY, group.y))));
    }

    objectName: "settingsSheet"
    title: qsTr("Settings")
    widest: 348

    Component.onCompleted: {
        settings.refresh();
        open();
    }

    Flickable {
        id: scroll

        readonly property Item focused: Window.activeFocusItem
        readonly property real room: (sheet.parent?.height ?? 0) - 36 - sheet.topPadding - sheet.bottomPadding - y
                                     - done.height - 10

        function scrollBy(step: real) {
            contentY = Math.max(0, Math.min(contentHeight - height, contentY + step));
        }

        boundsBehavior: Flickable.StopAtBounds
        clip: true
        contentHeight: groups.implicitHeight
        focus: true
        height: Math.max(60, Math.min(contentHeight, room))
        objectName: "settingsGroups"
        // Focus rings and the bar reach over the edges of what is inside.
        width: parent.width + 12
        x: -2

        T.ScrollBar.vertical: ScrollBar {}

        onFocusedChanged: if (focused)
            sheet.reveal(focused)
        Keys.onDownPressed: scrollBy(40)
        Keys.onUpPressed: scrollBy(-40)
        Keys.onPressed: event => {
            const page = event.key === Qt.Key_PageDown ? 1 : event.key === Qt.Key_PageUp ? -1 : 0;
            event.accepted = page !== 0;
            scrollBy(page * height * 0.9);
        }

        Column {
            id: groups

            bottomPadding: 2
            spacing: 12
            width: sheet.availableWidth
            x: 2

            SettingsGroup {
                explanation: Wording.forEditor(Wording.forSystem(qsTr("A folder called “Quillary” is created wherever you choose, with Library/Images, Library/Videos, Library/Blocks and Recent inside it.\n\nIf you already have graphics and clips collected somewhere, point this at that drive and move your files into Images and Videos with the Finder — folders you make in there become collections. The panel picks them all up next time it opens. Nothing has to be imported one at a time. Put it on a media drive to keep every graphic for a job in one place — dragging into Final Cut works from anywhere, because a drag carries its own permission with it.")))
                title: qsTr("Library location")
                width: parent.width

                TextField {
                    color: Theme.secondary
                    objectName: "libraryPath"
                    placeholderText: qsTr("Not available")
                    readOnly: true
                    spokenName: qsTr("Library folder")
                    symbol: "folder"
                    text: sheet.settings.libraryPath
                    width: parent.width
                }
                NoteLine {
                    ink: Theme.warning
                    maximumLines: 4
                    symbol: "externaldrive.badge.xmark"
                    text: sheet.settings.chosenFolderUnavailable ? qsTr("Your chosen folder is not available — an external drive may be disconnected. Using the default location until it is back.") : ""
                    width: parent.width
                }
                NoteLine {
                    ink: Theme.secondary
                    maximumLines: 3
                    objectName: "locationGiven"
                    symbol: "info.circle"
                    text: sheet.settings.locationGiven ? qsTr("This panel was started with a library of its own. A place chosen here would not hold for it.") : ""
                    width: parent.width
                }
                NoteLine {
                    ink: Theme.warning
                    symbol: "exclamationmark.triangle"
                    text: sheet.settings.locationProblem
                    width: parent.width
                }
                Row {
                    spacing: Theme.smallGap

                    Button {
                        enabled: !sheet.job.copying && !sheet.settings.locationGiven
                        help: qsTr("Choose the folder that holds the library")
                        objectName: "chooseLocation"
                        text: qsTr("Choose…")

                        onClicked: sheet.settings.chooseLocation()
                    }
                    Button {
                        objectName: "showLibrary"
                        text: qsTr("Show in Files")

                        onClicked: sheet.settings.showInFiles()
                    }
                    Button {
                        enabled: sheet.settings.hasChosenFolder && !sheet.job.copying && !sheet.settings.locationGiven
                        objectName: "useDefault"
                        text: qsTr("Use Default")

                        onClicked: sheet.settings.useDefaultLocation()
                    }
                }
                Column {
                    spacing: 6
                    visible: sheet.job.copying
                    width: parent.width

                    Label {
                        Accessible.name: text
                        Accessible.role: Accessible.StaticText
                        small: true
                        text: qsTr("Copying your files…")
                        width: parent.width
                    }
                    ProgressBar {
                        objectName: "copyProgress"
                        spokenName: qsTr("Copying your files…")
                        to: Math.max(1, sheet.job.total)
                        value: sheet.job.done
                        width: parent.width
                    }
                }
                NoteLine {
                    ink: Theme.good
                    objectName: "copyNote"
                    symbol: "checkmark.circle.fill"
                    text: sheet.job.note
                    width: parent.width
                }
            }
            Divider {
                color: Theme.outline
                width: parent.width
            }
            SettingsGroup {
                explanation: Wording.forEditor(qsTr("Everything you drag into Final Cut is saved here automatically, so you can find it again even if you never saved it deliberately. Your Library is never pruned — only Recent is."))
                title: qsTr("Keep in Recent")
                width: parent.width

                control: Picker {
                    choice: sheet.settings.recentLimit
                    choices: sheet.settings.recentLimits
                    label: qsTr("Keep in Recent")
                    labels: sheet.limitLabels()
                    objectName: "recentLimit"
                    text: sheet.settings.recentLimitLabel(sheet.settings.recentLimit)

                    onActivated: limit => sheet.settings.chooseRecentLimit(limit)
                }

                Label {
                    Accessible.name: text
                    Accessible.role: Accessible.StaticText
                    lineHeight: 1.15
                    secondary: true
                    small: true
                    text: qsTr("Before setting a limit, check Final Cut → Settings → Import → Files. If it says “Leave files in place”, your projects point straight at these files and deleting one takes that graphic offline — keep Never delete. Only cap it if Final Cut is set to copy media into your library.")
                    width: parent.width
                    wrapMode: Text.Wrap
                }
            }
            Divider {
                color: Theme.outline
                width: parent.width
            }
            SettingsGroup {
                explanation: qsTr("Final Cut cannot read SVG or PDF, so they are converted on the way in. 4096 suits artwork that fills the frame; 1024 or 2048 is plenty for icons and keeps a large library much lighter for Final Cut to decode.")
                title: qsTr("Rasterize vectors at")
                width: parent.width

                control: Picker {
                    choice: sheet.settings.vectorLongEdge
                    choices: sheet.settings.vectorLongEdges
                    label: qsTr("Rasterize vectors at")
                    objectName: "vectorLongEdge"

                    onActivated: pixels => sheet.settings.vectorLongEdge = pixels
                }
            }
            Divider {
                color: Theme.outline
                width: parent.width
            }
            SettingsGroup {
                explanation: qsTr("Subjects are found without any file. A model of your own in an ONNX file that gives a mask of the subject finds them better.")
                title: qsTr("Find subjects with")
                width: parent.width

                control: Row {
                    spacing: Theme.smallGap

                    Button {
                        objectName: "clearSubjectModel"
                        text: qsTr("Use None")
                        visible: sheet.settings.subjectModel.length > 0

                        onClicked: sheet.settings.subjectModel = ""
                    }
                    Button {
                        objectName: "chooseSubjectModel"
                        spokenName: qsTr("Choose a model")
                        text: qsTr("Choose…")

                        onClicked: sheet.settings.chooseSubjectModel()
                    }
                }

                TextField {
                    color: Theme.secondary
                    objectName: "subjectModel"
                    placeholderText: qsTr("No model")
                    readOnly: true
                    spokenName: qsTr("Model that finds subjects")
                    symbol: "scissors"
                    text: sheet.settings.subjectModel
                    width: parent.width
                }
            }
            Divider {
                color: Theme.outline
                width: parent.width
            }
            SettingsGroup {
                explanation: qsTr("The last twelve pictures that you pasted or dropped, in a strip under the stage. They lie in your cache folder and go nowhere else. Switching this off forgets them.")
                title: qsTr("Keep a paste history")
                width: parent.width

                control: Row {
                    spacing: Theme.smallGap

                    Button {
                        enabled: sheet.history.count > 0
                        objectName: "clearHistory"
                        spokenName: qsTr("Clear the paste history")
                        text: qsTr("Clear")

                        onClicked: sheet.history.clear()
                    }
                    Toggle {
                        anchors.verticalCenter: parent.verticalCenter
                        objectName: "pasteHistory"
                        on: sheet.history.enabled
                        spokenName: qsTr("Keep a paste history")

                        onRequested: on => sheet.history.enabled = on
                    }
                }
            }
            Divider {
                color: Theme.outline
                width: parent.width
            }
            EditorGroup {
                settings: sheet.settings
                width: parent.width
            }
            Divider {
                color: Theme.outline
                width: parent.width
            }
            SettingsGroup {
                explanation: Wording.forEditor(qsTr("Import is the default because it is the urgent direction — something is on the clipboard and you want it in Final Cut. The Library is one click away either way."))
                title: qsTr("Open on the Library")
                width: parent.width

                control: Toggle {
                    objectName: "openOnLibrary"
                    on: sheet.settings.openOnLibrary
                    spokenName: qsTr("Open on the Library")

                    onRequested: on => sheet.settings.openOnLibrary = on
                }
            }
            Divider {
                color: Theme.outline
                width: parent.width
            }
            SettingsGroup {
                explanation: sheet.keepsWindowsAbove ? qsTr("The panel stays in front when you click into the editor.") : qsTr("This desktop leaves that to you: open the menu of the panel’s title bar, by a right click or Alt+Space, and choose “Always on Top” there.")
                title: qsTr("Keep above other windows")
                width: parent.width

                control: Toggle {
                    enabled: sheet.keepsWindowsAbove
                    objectName: "keepAbove"
                    on: sheet.keepsWindowsAbove && sheet.settings.keepAbove
                    spokenName: qsTr("Keep above other windows")
                    visible: sheet.keepsWindowsAbove

                    onRequested: on => sheet.settings.keepAbove = on
                }
            }
        }
    }
    Button {
        id: done

        anchors.right: parent.right
        objectName: "done"
        prominent: true
        text: qsTr("Done")

        onClicked: sheet.close()
    }

    RecentLimitAlert {
        settings: sheet.settings
    }
    CopySheet {
        job: sheet.job
    }
}
