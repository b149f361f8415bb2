import QtQuick
import Quillary.Controls
import Quillary.Model

/// How far a batch of files is; no height while there is none.
Item {
    id: progress

    required property ImportQueue queue

    height: queue.importing ? 34 : 0
    visible: queue.importing

    Divider {
        width: parent.width
    }
    Label {
        id: counts

        Accessible.name: text
        Accessible.role: Accessible.StaticText
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        secondary: true
        small: true
        text: qsTr("%1 of %2").arg(progress.queue.done).arg(progress.queue.total)
    }
    ProgressBar {
        anchors.left: counts.right
        anchors.leftMargin: Theme.gap
        anchors.right: stop.left
        anchors.rightMargin: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        spokenName: qsTr("Import")
        to: Math.max(1, progress.queue.total)
        value: progress.queue.done
    }
    TextButton {
        id: stop

        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        objectName: "stopImport"
        text: qsTr("Stop")

        onClicked: progress.queue.stop()
    }
}
