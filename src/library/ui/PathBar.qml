pragma ComponentBehavior: Bound
import QtQuick
import Quillary.Controls

/// The way to a collection: the root's label and a crumb for each folder. A way too long for its width shows its end.
Item {
    id: bar

    required property string rootLabel
    /// Folder names joined by " / "; empty at the root.
    required property string path

    /// The path of the crumb, empty for the root.
    signal picked(string path)

    implicitHeight: 20

    Flickable {
        id: way

        Accessible.name: qsTr("Path")
        Accessible.role: Accessible.List
        anchors.fill: parent
        boundsBehavior: Flickable.StopAtBounds
        clip: interactive
        contentWidth: crumbs.width
        contentX: Math.max(0, contentWidth - width)
        interactive: contentWidth > width

        Row {
            id: crumbs

            height: bar.height
            spacing: 2

            TextButton {
                enabled: bar.path.length > 0
                height: parent.height
                text: bar.rootLabel

                onClicked: bar.picked("")
            }
            Repeater {
                id: folders

                model: bar.path.length > 0 ? bar.path.split(" / ") : []

                Row {
                    id: crumb

                    required property int index
                    required property string modelData

                    height: bar.height
                    spacing: 2

                    Symbol {
                        color: Theme.secondary
                        height: parent.height
                        name: "chevron.compact.right"
                        size: 14
                    }
                    TextButton {
                        enabled: crumb.index < folders.count - 1
                        height: parent.height
                        text: crumb.modelData

                        onClicked: bar.picked(bar.path.split(" / ").slice(0, crumb.index + 1).join(" / "))
                    }
                }
            }
        }
    }
}
