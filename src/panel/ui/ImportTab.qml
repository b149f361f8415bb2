import QtQuick
import Quillary.Controls
import Quillary.Model
import Quillary.Panel

/// The staging area for one image: the stage, and below it what can be told of it and done with it.
Item {
    id: tab

    required property PanelModel model
    /// A drag that would be taken is over the panel.
    required property bool targeted
    readonly property bool loaded: model.stage === PanelModel.Stage.Loaded

    Stage {
        anchors.bottom: strip.top
        anchors.bottomMargin: strip.visible ? Theme.smallGap : 0
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.top: parent.top
        anchors.topMargin: Theme.margin
        model: tab.model
        sliding: loadedFooter.sliding
        targeted: tab.targeted

        onRemovalStopped: loadedFooter.focusCutout()
    }
    PasteStrip {
        id: strip

        anchors.bottom: loadedFooter.visible ? loadedFooter.top : hint.top
        anchors.bottomMargin: Theme.gap
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        loaded: tab.loaded
        panel: tab.model
    }
    LoadedFooter {
        id: loadedFooter

        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.margin
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        model: tab.model
        visible: tab.loaded
    }
    Label {
        id: hint

        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.margin
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        height: 30
        horizontalAlignment: Text.AlignHCenter
        secondary: true
        small: true
        text: qsTr("Videos, sounds and compound clips from Final Cut can be dragged in here too")
        visible: !tab.loaded
        wrapMode: Text.Wrap
    }
}
