import QtQuick
import Quillary.Controls
import Quillary.Model

/// How far a batch of files is; no height while there is none.
Item {
    id: progress

    required property PanelModel model

    height: model.importing ? 34 : 0
    visible: model.importing

    Divider {
        width: parent.width
    }
    Label {
        id: text

        Accessible.ignored: true
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        secondary: true
        small: true
        text: qsTr("%1 of %2").arg(progress.model.importDone).arg(progress.model.importTotal)
    }
    ProgressBar {
        anchors.left: text.right
        anchors.leftMargin: Theme.gap
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        spokenName: qsTr("Import")
        to: Math.max(1, progress.model.importTotal)
        value: progress.model.importDone
    }
}
