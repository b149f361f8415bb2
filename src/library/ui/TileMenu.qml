import QtQuick
import Quillary.Controls
import Quillary.Model

/// What can be done with one image of the browser.
Menu {
    id: menu

    required property PanelModel model
    property string url: ""
    property string name: ""
    property bool star: false
    property bool isBuiltIn: false
    property bool isRecent: false

    signal renameRequested
    signal moveRequested

    MenuItem {
        symbol: menu.star ? "star" : "star.fill"
        text: menu.star ? qsTr("Remove from Favorites") : qsTr("Add to Favorites")

        onTriggered: menu.model.toggleFavoriteOf(menu.url)
    }
    MenuItem {
        symbol: "scissors"
        text: qsTr("Remove Background…")

        onTriggered: menu.model.editItem(menu.url)
    }
    MenuItem {
        symbol: "pencil"
        text: qsTr("Rename…")
        visible: !menu.isBuiltIn

        onTriggered: menu.renameRequested()
    }
    MenuItem {
        symbol: "folder"
        text: qsTr("Move to…")
        visible: !menu.isBuiltIn && !menu.isRecent

        onTriggered: menu.moveRequested()
    }
    MenuSeparator {
        visible: !menu.isRecent
    }
    MenuItem {
        symbol: "square.and.arrow.down"
        text: qsTr("Save to My Library")
        visible: menu.isBuiltIn

        onTriggered: menu.model.saveBuiltInItem(menu.url)
    }
    MenuItem {
        dangerous: true
        symbol: "trash"
        text: qsTr("Remove from Library")
        visible: !menu.isBuiltIn && !menu.isRecent

        onTriggered: menu.model.removeItem(menu.url)
    }
}
