pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls
import Quillary.Model
import Quillary.Panel

/// Stands for the strip of the last pictures where there is no room for it; pressed, it shows the strip.
IconButton {
    id: button

    required property PanelModel panel

    help: qsTr("Paste history")
    implicitHeight: 20
    implicitWidth: 22
    objectName: "pasteHistoryButton"
    symbol: "clock.arrow.circlepath"
    symbolSize: 15

    onClicked: shown.open()

    T.Popup {
        id: shown

        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
        focus: true
        height: contentHeight + topPadding + bottomPadding
        margins: Theme.margin
        padding: Theme.smallGap
        width: Math.min(300, (parent?.Window.width ?? 300) - 2 * Theme.margin)
        x: button.width - width
        y: -height - 4

        background: Rectangle {
            border.color: Theme.outline
            color: Theme.sheet
            radius: 8
        }
        contentItem: PasteStrip {
            focus: true
            loaded: true
            panel: button.panel
        }

        Connections {
            function onStagingChanged() {
                shown.close();
            }

            target: button.panel
        }
    }
}
