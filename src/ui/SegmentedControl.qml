pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Quillary.Controls

/// A choice of one among a few: one tab stop, the arrow keys move the choice. Without `fill` it is as wide as its texts
/// ask, with it the segments share the width that their texts leave.
FocusScope {
    id: control

    required property list<string> labels
    required property int currentIndex
    required property string spokenName
    /// A second, quieter number after each label, in thousands from ten thousand on; may be shorter than `labels`. Left
    /// out where it is too narrow for both.
    property list<string> details: []
    property bool fill: false
    property int padding: 10
    readonly property bool detailed: !fill || room >= least * labels.length
    readonly property int gap: 5   ///< between a label and its number
    readonly property int least: 10 ///< between the texts of neighbours
    readonly property real namesWidth: wide(labels, nameMetrics)
    readonly property real detailsWidth: wide(details, detailMetrics) + gap * details.length
    readonly property real room: width - 4 - namesWidth - detailsWidth
    /// A width that shows everything with room between.
    readonly property real wholeWidth: 4 + namesWidth + detailsWidth + (least + gap) * labels.length

    signal activated(int index)

    function wide(texts: var, metrics: FontMetrics): real {
        let sum = 0;
        for (let i = 0; i < texts.length; ++i)
            sum += metrics.advanceWidth(shortened(texts[i]));
        return sum;
    }
    function shortened(text: string): string {
        return Number(text) >= 10000 ? text.slice(0, -3) + "k" : text;
    }
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
    FontMetrics {
        id: nameMetrics

        font.family: Theme.family
        font.pixelSize: Theme.textSize
        font.weight: Font.Medium
    }
    FontMetrics {
        id: detailMetrics

        font.family: Theme.family
        font.pixelSize: Theme.textSize
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
                readonly property real share: (control.room + (control.detailed ? 0 : control.detailsWidth)) / Math.max(1, control.labels.length)

                Accessible.checked: current
                Accessible.name: detail.length > 0 ? modelData + ", " + detail : modelData
                Accessible.role: Accessible.PageTab
                Accessible.onPressAction: control.activated(index)
                activeFocusOnTab: current || activeFocus // until the focus has gone where the choice went
                focus: current
                focusPolicy: current ? Qt.StrongFocus : Qt.ClickFocus
                height: control.height - 4
                implicitWidth: implicitContentWidth + 2 * control.padding
                width: control.fill ? implicitContentWidth + share : implicitWidth

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
                    detail: control.shortened(segment.detail)
                    detailed: control.detailed
                    detailInk: segment.current || segment.hovered ? Theme.softText : Theme.secondary
                    ink: segment.current ? Theme.text : segment.hovered ? Theme.softText : Theme.secondary
                    text: segment.modelData
                }
            }
        }
    }

    component Caption: Item {
        id: caption

        required property string text
        required property string detail
        required property bool detailed
        required property color ink
        required property color detailInk

        implicitWidth: texts.implicitWidth

        Row {
            id: texts

            anchors.centerIn: parent
            height: parent.height
            spacing: control.gap

            Label {
                color: caption.ink
                font.weight: Font.Medium
                height: parent.height
                text: caption.text
            }
            Label {
                color: caption.detailInk
                height: parent.height
                text: caption.detail
                visible: caption.detailed && text.length > 0
            }
        }
    }
}
