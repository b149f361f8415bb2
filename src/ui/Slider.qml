import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// A horizontal slider; the part below the handle is in the accent colour. The arrow keys move by a step, Page Up and Page
/// Down by a fifth, Home and End to the ends.
T.Slider {
    id: control

    required property string spokenName

    /// Moves by so many steps, at most to an end.
    function step(steps: int) {
        if (!enabled)
            return;
        for (let left = Math.abs(steps); left > 0; --left)
            steps > 0 ? increase() : decrease();
        moved();
    }

    Accessible.name: spokenName
    Accessible.onDecreaseAction: step(-1)
    Accessible.onIncreaseAction: step(1)
    Keys.onPressed: event => {
        const all = Math.ceil((to - from) / stepSize);
        const page = Math.max(1, Math.round(all / 5));
        switch (event.key) {
        case Qt.Key_Home:
            step(-all);
            break;
        case Qt.Key_End:
            step(all);
            break;
        case Qt.Key_PageDown:
            step(-page);
            break;
        case Qt.Key_PageUp:
            step(page);
            break;
        default:
            event.accepted = false;
        }
    }
    focusPolicy: Qt.StrongFocus
    implicitHeight: Theme.controlHeight
    implicitWidth: 120
    padding: 2
    stepSize: 0.05
    snapMode: T.Slider.NoSnap

    background: Rectangle {
        color: Theme.controlHover
        height: 4
        radius: 2
        width: control.availableWidth
        x: control.leftPadding
        y: (control.height - height) / 2

        Rectangle {
            color: control.enabled ? Theme.accent : Theme.disabled
            height: parent.height
            radius: 2
            width: control.visualPosition * parent.width
        }
    }
    handle: Rectangle {
        border.color: Theme.dark ? "transparent" : Theme.outline
        color: control.pressed ? "#DDDDE2" : "#FFFFFF"
        height: 14
        radius: 7
        width: 14
        x: control.leftPadding + control.visualPosition * (control.availableWidth - width)
        y: (control.height - height) / 2

        FocusRing {
            around: 7
            shown: control.visualFocus
        }
    }
}
