pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls

/// A drawing of a block's layers: one thin rounded bar for each, the highest on top, aligned to the leading edge. Where
/// there are too many for its height the bars get thinner, and the rest is left out.
Item {
    id: stack

    /// The kind of each layer, from the top down: title, graphic, clip, anything else.
    required property list<int> bars
    /// With bars 9 high and 4 apart.
    readonly property bool compact: bars.length * 13 - 4 > height
    readonly property int barHeight: compact ? 6 : 9
    readonly property int gap: compact ? 3 : 4
    readonly property int fitting: Math.max(1, Math.floor((height + gap) / (barHeight + gap)))
    readonly property int shown: Math.min(bars.length, fitting)
    readonly property list<color> colors: [Theme.layerTitle, Theme.layerGraphic, Theme.layerClip, Theme.secondary]
    /// Shares of the width, so that neighbours differ.
    readonly property list<real> lengths: [0.62, 0.84, 1, 0.4]

    Accessible.ignored: true

    Column {
        anchors.verticalCenter: parent.verticalCenter
        spacing: stack.gap

        Repeater {
            model: stack.shown

            Rectangle {
                required property int index
                readonly property int kind: Math.min(3, Math.max(0, stack.bars[index]))

                color: stack.colors[kind]
                height: stack.barHeight
                radius: 3
                width: Math.round(stack.width * (stack.lengths[kind] - 0.08 * (index % 3)))
            }
        }
    }
}
