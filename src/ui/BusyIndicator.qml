pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls

/// Three dots that take turns; they rest where the user wants less movement.
Row {
    id: dots

    property color ink: Theme.text

    spacing: 3

    Repeater {
        model: 3

        Rectangle {
            id: dot

            required property int index

            color: dots.ink
            height: 5
            radius: 2.5
            width: 5

            SequentialAnimation on opacity {
                loops: Animation.Infinite
                running: dots.visible && !Theme.reducedMotion

                PropertyAction {
                    value: 0.35
                }
                PauseAnimation {
                    duration: 140 * dot.index
                }
                NumberAnimation {
                    duration: 280
                    to: 1
                }
                NumberAnimation {
                    duration: 280
                    to: 0.35
                }
                PauseAnimation {
                    duration: 140 * (2 - dot.index)
                }
            }
        }
    }
}
