import QtQuick
import Quillary.Controls
import Quillary.Model

/// What can be done with the staged image beside dragging it out. Each entry writes it into Recent as a drag does.
Menu {
    id: menu

    required property PanelModel model

    MenuItem {
        symbol: "doc.on.doc"
        text: qsTr("Copy")

        onTriggered: menu.model.copyStaged()
    }
    MenuItem {
        symbol: "link"
        text: qsTr("Copy Path")

        onTriggered: menu.model.copyStagedPath()
    }
    MenuItem {
        symbol: "arrow.up.forward.app"
        text: qsTr("Show in Files")

        onTriggered: menu.model.showStagedInFiles()
    }
}
