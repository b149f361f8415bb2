import QtQuick
import Quillary.Controls
import Quillary.Drag
import Quillary.Model
import Quillary.Panel

/// The staged image over its checkerboard; all of it drags the image out as a file. A right click, the Menu key or
/// Return opens what else can be done with it.
Item {
    id: staged

    required property PanelModel model
    required property bool sliding
    readonly property string caption: Wording.forEditor(qsTr("Drag into Final Cut"))

    Accessible.description: caption
    Accessible.name: model.stagedName
    Accessible.role: Accessible.Graphic
    Accessible.onPressAction: openMenu()
    activeFocusOnTab: true

    Keys.onMenuPressed: openMenu()
    Keys.onPressed: event => {
        if (event.key !== Qt.Key_F10 || !(event.modifiers & Qt.ShiftModifier))
            return;
        openMenu();
        event.accepted = true;
    }
    Keys.onReturnPressed: openMenu()
    Keys.onSpacePressed: openMenu()

    function openMenu() {
        menu.openAt(staged, staged.width / 2, staged.height / 2);
    }

    Rectangle {
        anchors.fill: parent
        color: "#2E000000"
        radius: Theme.stageRadius
    }
    Checkerboard {
        anchors.fill: parent
        ink: Theme.ink
        radius: Theme.stageRadius
        square: 9
    }
    EdgePreview {
        id: preview

        active: staged.model.showCutout && (staged.sliding || staged.model.refining)
        amount: staged.model.edgeRefine
        base: staged.model.edgeBase
        frame: staged.model.cutoutFrame
        pixelSize: picture.pixelSize
    }
    PictureView {
        id: picture

        objectName: "stagedPicture"

        anchors.fill: parent
        anchors.margins: 6
        // The picture and its cut-out are compared: one follows the other at once.
        fadeDuration: staged.model.hasCutout ? 0 : Theme.fade
        opacity: staged.model.staging ? 0.4 : 1
        picture: staged.model.displayImage
        standIn: preview.picture

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.fade
            }
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 9
        anchors.horizontalCenter: parent.horizontalCenter
        color: "#8C000000"
        height: 22
        radius: height / 2
        width: row.width + 20

        Row {
            id: row

            anchors.centerIn: parent
            height: parent.height
            spacing: 6

            Symbol {
                color: "#FFFFFF"
                height: parent.height
                name: "arrow.up.and.down.and.arrow.left.and.right"
                size: 14
            }
            Label {
                Accessible.ignored: true
                color: "#FFFFFF"
                height: parent.height
                small: true
                text: staged.caption
            }
        }
    }
    FocusRing {
        anchors.margins: 2
        around: Theme.stageRadius - 4
        shown: staged.activeFocus
    }
    MouseArea {
        acceptedButtons: Qt.RightButton
        anchors.fill: parent

        onClicked: mouse => menu.openAt(staged, mouse.x, mouse.y)
    }
    FileDragSource {
        anchors.fill: parent
        openHandCursor: true
        pixels: staged.model.displayImage
        title: staged.model.stagedName

        onUrlRequested: request => staged.model.offerStaged(request)
    }
    Shortcut {
        enabled: staged.visible
        sequence: "Ctrl+C"

        onActivated: staged.model.copyStaged()
    }
    StagedMenu {
        id: menu

        model: staged.model
        objectName: "stagedMenu"
    }
}
