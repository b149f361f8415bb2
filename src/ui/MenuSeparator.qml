import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

T.MenuSeparator {
    implicitHeight: visible ? 9 : 0
    implicitWidth: 10

    contentItem: Item {
        Divider {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.outline
            width: parent.width
        }
    }
}
