import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Model

/// Removes the background with the method that suits the picture; its end opens a menu of the methods.
Button {
    id: control

    required property PanelModel model
    /// Without its text, where there is little room.
    property bool brief: false
    readonly property string caption: model.hasCutout ? qsTr("Cut Out Again") : qsTr("Remove Background")

    enabled: !model.staging
    help: brief ? caption : ""
    objectName: "removeBackground"
    rightPadding: opener.width + 3
    spokenName: caption
    symbol: "scissors"
    text: brief ? "" : caption

    onClicked: control.model.removeBackground()
    Keys.onDownPressed: methods.open()

    T.AbstractButton {
        id: opener

        Accessible.name: qsTr("Cutout method")
        Accessible.role: Accessible.ButtonMenu
        Accessible.onPressAction: if (enabled) methods.open()
        focusPolicy: Qt.StrongFocus
        height: parent.height
        objectName: "cutoutMethod"
        width: 27
        x: parent.width - width

        onClicked: methods.open()
        Keys.onDownPressed: methods.open()
        Keys.onReturnPressed: methods.open()

        background: Rectangle {
            color: Theme.controlHover
            radius: Theme.controlRadius
            visible: opener.hovered

            FocusRing {
                shown: opener.visualFocus
            }
        }
        contentItem: Symbol {
            color: control.ink
            name: "chevron.down"
        }

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.controlLine
            height: 14
            visible: !opener.hovered
            width: 1
        }
    }
    Menu {
        id: methods

        above: true
        objectName: "cutoutMethods"

        MenuItem {
            text: qsTr("Flat background")

            onTriggered: control.model.removeBackground(PanelModel.CutoutMethod.Solid)
        }
        MenuItem {
            text: qsTr("Subject (photo)")

            onTriggered: control.model.removeBackground(PanelModel.CutoutMethod.Subject)
        }
        MenuSeparator {}
        TouchEntry {
            checked: control.model.touchUp.cleanEdge
            text: qsTr("Clean edge colour")

            onTriggered: control.model.touchUp.cleanEdge = checked
        }
        TouchEntry {
            checked: control.model.touchUp.enclosed
            text: qsTr("Also clear enclosed areas")

            onTriggered: control.model.touchUp.enclosed = checked
        }
        TouchEntry {
            checked: control.model.touchUp.trim
            text: qsTr("Trim transparent border")

            onTriggered: control.model.touchUp.trim = checked
        }
    }

    component TouchEntry: MenuItem {
        Accessible.checkable: true
        Accessible.checked: checked
        checkable: true
    }
}
