import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// The help text of its parent, after the pointer has rested on it. It stands below its parent, or `above` it, where
/// there is room, never over it. A press, and whatever takes the keyboard elsewhere, such as a menu, ends it until the
/// pointer comes back.
T.ToolTip {
    id: control

    /// The pointer is on what is explained.
    property bool shown: false
    /// What is explained is being pressed or dragged.
    property bool hushed: false
    property bool above: false
    property bool spent: false

    function place() {
        const space = T.Overlay.overlay;
        if (!parent || !space)
            return;
        const distance = 5;
        const at = parent.mapToItem(space, 0, 0);
        const needed = implicitHeight + distance + margins;
        const fitsAbove = at.y >= needed;
        const fitsBelow = space.height - at.y - parent.height >= needed;
        x = (parent.width - implicitWidth) / 2;
        if (above ? fitsAbove : fitsAbove && !fitsBelow) {
            y = -implicitHeight - distance;
        } else if (fitsBelow) {
            y = parent.height + distance;
        } else {
            const left = at.x + parent.width / 2 > space.width / 2;
            x = left ? -implicitWidth - distance : parent.width + distance;
            y = (parent.height - implicitHeight) / 2;
        }
    }

    closePolicy: T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent
    delay: 700
    font.family: Theme.family
    font.pixelSize: Theme.smallSize
    implicitHeight: contentHeight + topPadding + bottomPadding
    implicitWidth: Math.min(260, implicitContentWidth + leftPadding + rightPadding)
    leftPadding: 7
    margins: 4
    objectName: "toolTip"
    padding: 4
    rightPadding: 7
    visible: shown && !spent && text.length > 0

    onAboutToShow: place()
    onHushedChanged: if (hushed)
        spent = true
    onShownChanged: if (!shown)
        spent = false

    background: Rectangle {
        border.color: Theme.outline
        color: Theme.sheet
        radius: 5
    }
    contentItem: Label {
        small: true
        text: control.text
        wrapMode: Text.Wrap
    }

    Connections {
        function onActiveFocusItemChanged() {
            control.spent = true;
        }

        target: control.shown && control.parent ? control.parent.Window.window : null
    }
}
