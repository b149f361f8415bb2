import QtQuick
import Quillary.Controls

/// What is shown once the panel's window was closed while files are on their way: how far they are, and at last what
/// could not be done.
Item {
    id: view

    property int done: 0
    property int total: 0
    /// 0 to 1, the file under way included.
    property real fraction: 0
    /// What the work came to when not all went well; empty until then.
    property string problem: ""
    readonly property bool ended: problem.length > 0

    signal stopped
    signal panelWanted
    signal closed

    height: content.height + 2 * Theme.margin
    width: 300

    Column {
        id: content

        anchors.left: parent.left
        anchors.margins: Theme.margin
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: Theme.gap

        Label {
            Accessible.name: text
            Accessible.role: Accessible.StaticText
            text: view.total > 1 ? qsTr("Finishing %1 of %2…").arg(Math.min(view.done + 1, view.total)).arg(view.total) : qsTr("Finishing…")
            visible: !view.ended
            width: parent.width
        }
        ProgressBar {
            spokenName: qsTr("Finishing")
            value: view.fraction
            visible: !view.ended
            width: parent.width
        }
        NoteLine {
            ink: Theme.warning
            maximumLines: 6
            symbol: "exclamationmark.triangle.fill"
            text: view.problem
            width: parent.width
        }
        Item {
            height: Theme.controlHeight
            width: parent.width

            Button {
                objectName: "showPanel"
                text: qsTr("Show Panel")

                onClicked: view.panelWanted()
            }
            Button {
                anchors.right: parent.right
                objectName: "stopFinishing"
                text: view.ended ? qsTr("Close") : qsTr("Stop")

                onClicked: {
                    if (view.ended)
                        view.closed();
                    else
                        view.stopped();
                }
            }
        }
    }
}
