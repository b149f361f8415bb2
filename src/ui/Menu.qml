import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// A menu in the panel's look; longer than the window it scrolls.
T.Menu {
    id: control

    property int widest: 260

    implicitHeight: contentHeight + topPadding + bottomPadding
    implicitWidth: Math.min(widest, contentWidth + leftPadding + rightPadding)
    margins: 6
    overlap: 1
    padding: 4

    background: Rectangle {
        border.color: Theme.outline
        color: Theme.sheet
        radius: 8
    }
    contentItem: ListView {
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        currentIndex: control.currentIndex
        implicitHeight: contentHeight
        implicitWidth: {
            let widest = 140;
            for (let row = 0; row < control.count; ++row)
                widest = Math.max(widest, control.itemAt(row).implicitWidth);
            return widest;
        }
        interactive: contentHeight > height
        model: control.contentModel

        T.ScrollBar.vertical: ScrollBar {}
    }
    delegate: MenuItem {}
    enter: Transition {
        NumberAnimation {
            duration: Theme.quick
            from: 0
            property: "opacity"
            to: 1
        }
    }
}
