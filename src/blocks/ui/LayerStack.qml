pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls

/// A drawing of a block's layers: one thin rounded bar for each, the highest on top, aligned to the leading edge. Where
/// there are many for its height they move together and then get thinner; what does not fit even so is left out.
Item {
    id: stack

    /// The kind of each layer, from the top down: title, graphic, clip, anything else.
    required property list<int> bars
    /// Height and distance of the bars, from the roomiest form on.
    readonly property list<int> heights: [9, 6, 6, 4, 3]
    readonly property list<int> gaps: [4, 3, 2, 2, 1]
    readonly property int form: {
        let at = 0;
        while (at < heights.length - 1 && fitting(at) < bars.length)
            ++at;
        return at;
    }
    readonly property int barHeight: heights[form]
    readonly property int gap: gaps[form]
    readonly property int shown: Math.min(bars.length, fitting(form))
    readonly property list<color> colors: [Theme.layerTitle, Theme.layerGraphic, Theme.layerClip, Theme.secondary]
    /// Shares of the width, so that neighbours differ.
    readonly property list<real> lengths: [0.62, 0.84, 1, 0.4]

    /// How many bars of a form there is room for.
    function fitting(at: int): int {
        return Math.max(1, Math.floor((height + gaps[at]) / (heights[at] + gaps[at])));
    }

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
                radius: Math.min(3, height / 2)
                width: Math.round(stack.width * (stack.lengths[kind] - 0.08 * (index % 3)))
            }
        }
    }
}
