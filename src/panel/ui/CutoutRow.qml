import QtQuick
import Quillary.Controls
import Quillary.Model

/// What can be set once there is a cut-out: which picture is shown, and how tight its edge lies.
Item {
    id: row

    required property PanelModel model
    /// The edge is being dragged.
    readonly property bool sliding: slider.pressed

    implicitHeight: Theme.controlHeight

    SegmentedControl {
        id: which

        currentIndex: row.model.showCutout ? 1 : 0
        labels: [qsTr("Original"), qsTr("Cutout")]
        spokenName: qsTr("Shown picture")

        onActivated: index => row.model.showCutout = index === 1
    }
    Label {
        id: edge

        Accessible.ignored: true
        anchors.left: which.right
        anchors.leftMargin: Theme.gap + 2
        height: parent.height
        secondary: true
        text: qsTr("Edge")
    }
    Slider {
        id: slider

        anchors.left: edge.right
        anchors.leftMargin: Theme.smallGap
        anchors.right: amount.left
        anchors.rightMargin: Theme.smallGap
        objectName: "edge"
        spokenName: qsTr("Edge")
        value: row.model.edgeRefine

        onMoved: row.model.edgeRefine = value
    }
    EdgeLabel {
        id: amount

        anchors.right: parent.right
        value: row.model.edgeRefine
    }
}
