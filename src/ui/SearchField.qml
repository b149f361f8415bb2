import QtQuick
import Quillary.Controls

/// A field with a magnifying glass; Escape and the cross clear it.
TextField {
    id: control

    placeholderText: qsTr("Search")
    rightPadding: 26
    spokenName: qsTr("Search")
    symbol: "magnifyingglass"

    Keys.onEscapePressed: event => {
        event.accepted = length > 0;
        clear();
    }

    IconButton {
        activeFocusOnTab: false
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        focusPolicy: Qt.NoFocus
        help: qsTr("Clear the search")
        ink: Theme.secondary
        symbol: "xmark.circle.fill"
        symbolSize: 15
        visible: control.length > 0

        onClicked: control.clear()
    }
}
