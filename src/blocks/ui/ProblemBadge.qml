import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// Over a tile's picture: that something is wrong with the block's media. A click lists them.
T.AbstractButton {
    id: badge

    /// Whether something is missing.
    required property bool grave
    /// The files that it is about.
    required property string files

    Accessible.description: files
    Accessible.name: qsTr("Media: %1").arg(text)
    Accessible.role: Accessible.Button
    Accessible.onPressAction: if (enabled) clicked()
    focusPolicy: Qt.NoFocus
    implicitHeight: 16
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: 4
    rightPadding: 5

    ToolTip {
        hushed: badge.down
        shown: badge.hovered
        text: badge.files
    }

    background: Rectangle {
        color: Theme.caption
        radius: 4
    }
    contentItem: Row {
        spacing: 4

        Symbol {
            anchors.verticalCenter: parent?.verticalCenter
            color: badge.grave ? Theme.pictureDanger : Theme.pictureWarning
            name: "exclamationmark.triangle.fill"
            size: 11
            width: 11
        }
        Label {
            Accessible.ignored: true
            anchors.verticalCenter: parent?.verticalCenter
            color: Theme.accentInk
            font.pixelSize: 10
            text: badge.text
        }
    }
}
