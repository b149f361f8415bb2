import QtQuick
import Quillary.Controls
import Quillary.Model

/// Tells, below a shelf, that a picture was staged where nobody looks now, or why it was not; no height while there is
/// nothing to tell.
Item {
    id: line

    required property PanelModel model
    readonly property bool failed: model.stage === PanelModel.Stage.Failed

    height: visible ? 34 : 0
    visible: model.stagedUnseen

    Divider {
        width: parent.width
    }
    NoteLine {
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: show.left
        anchors.rightMargin: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        ink: line.failed ? Theme.warning : Theme.good
        maximumLines: 1
        objectName: "stagedLine"
        symbol: line.failed ? "exclamationmark.triangle.fill" : "checkmark.circle.fill"
        text: line.failed ? line.model.failureMessage : qsTr("Staged “%1” in Import").arg(line.model.stagedName)
    }
    TextButton {
        id: show

        anchors.right: away.left
        anchors.rightMargin: Theme.smallGap
        anchors.verticalCenter: parent.verticalCenter
        objectName: "showStaged"
        text: qsTr("Show")

        onClicked: line.model.tab = PanelModel.Tab.Intake
    }
    IconButton {
        id: away

        anchors.right: parent.right
        anchors.rightMargin: Theme.smallGap
        anchors.verticalCenter: parent.verticalCenter
        help: qsTr("Close this note")
        ink: Theme.secondary
        symbol: "xmark"
        symbolSize: 14

        onClicked: line.model.stagedUnseen = false
    }
}
