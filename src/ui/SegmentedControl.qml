pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// A choice of one among a few: one tab stop, the arrow keys move the choice. Without `fill` it is as wide as its texts
/// ask, with it the segments share the width.
FocusScope {
    id: control

    required property list<string> labels
    required property int currentIndex
    required property string spokenName
    /// A second, quieter text after each label; may be shorter than `labels`.
    property list<string> details: []
    property bool fill: false
    property int padding: 10

    signal activated(int index)

    function move(step: int) {
        const next = Math.max(0, Math.min(labels.length - 1, currentIndex + step));
        if (next === currentIndex)
            return;
        activated(next);
        const segment = segments.itemAt(currentIndex);
        if (segment)
            segment.forceActiveFocus(Qt.TabFocusReason);
    }

    Accessible.name: spokenName
    Accessible.role: Accessible.PageTabList
    implicitHeight: Theme.controlHeight
    implicitWidth: row.implicitWidth + 4

    Keys.onLeftPressed: move(-1)
    Keys.onRightPressed: move(1)

    Rectangle {
        anchors.fill: parent
        color: Theme.well
        radius: Theme.controlRadius + 1
    }
    Row {
        id: row

        x: 2
        y: 2

        Repeater {
            id: segments

            model: control.labels

            T.AbstractButton {
                id: segment

                required property int index
                required property string modelData
                readonly property bool current: index === control.currentIndex
                readonly property string detail: index < control.details.length ? control.details[index] : ""
                readonly property real share: (control.width - 4) / Math.max(1, control.labels.length)

                Accessible.checked: current
                Accessible.name: detail.length > 0 ? modelData + ", " + detail : modelData
                Accessible.role: Accessible.PageTab
                Accessible.onPressAction: control.activated(index)
                activeFocusOnTab: current || activeFocus // until the focus has gone where the choice went
                focus: current
                focusPolicy: current ? Qt.StrongFocus : Qt.ClickFocus
                height: control.height - 4
                implicitWidth: implicitContentWidth + 2 * control.padding
                width: control.fill ? share : implicitWidth

                onClicked: control.activated(index)
                Keys.onReturnPressed: segment.clicked()

                background: Rectangle {
                    color: segment.current ? Theme.segment : segment.hovered ? Theme.raised : "transparent"
                    radius: Theme.controlRadius - 1

                    FocusRing {
                        around: Theme.controlRadius - 1
                        shown: segment.visualFocus
                    }
                }
                contentItem: Caption {
                    ink: segment.current ? Theme.text : segment.hovered ? Theme.softText : Theme.secondary
                    detail: segment.detail
                    text: segment.modelData
                }
            }
        }
    }

    component Caption: Item {
        id: caption

        required property string text
        required property string detail
        required property color ink

        implicitWidth: texts.implicitWidth

        Row {
            id: texts

            anchors.centerIn: parent
            height: parent.height
            spacing: 5

            Label {
                color: caption.ink
                font.weight: Font.Medium
                height: parent.height
                text: caption.text
            }
            Label {
                height: parent.height
                secondary: true
                text: caption.detail
                visible: text.length > 0
            }
        }
    }
}
