import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// A modal sheet in the middle of the panel, with a title; Escape closes it.
T.Popup {
    id: sheet

    required property string title
    property int widest: 300

    closePolicy: T.Popup.CloseOnEscape
    dim: true
    focus: true
    height: Math.min(implicitHeight, (parent?.height ?? 0) - 20)
    implicitHeight: contentHeight + topPadding + bottomPadding
    margins: 8
    modal: true
    padding: 14
    parent: T.Overlay.overlay
    width: Math.min(widest, (parent?.width ?? 0) - 24)
    x: ((parent?.width ?? 0) - width) / 2
    y: ((parent?.height ?? 0) - height) / 2

    T.Overlay.modal: Rectangle {
        color: Theme.shade
    }
    background: Rectangle {
        border.color: Theme.outline
        color: Theme.sheet
        radius: Theme.stageRadius
    }
    contentItem: Body {
        title: sheet.title
    }
    enter: Transition {
        NumberAnimation {
            duration: Theme.fade
            from: 0
            property: "opacity"
            to: 1
        }
    }
    exit: Transition {
        NumberAnimation {
            duration: Theme.quick
            property: "opacity"
            to: 0
        }
    }

    component Body: Column {
        id: body

        required property string title

        Accessible.name: title
        Accessible.role: Accessible.Dialog
        spacing: 10

        Label {
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
            text: body.title
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
}
