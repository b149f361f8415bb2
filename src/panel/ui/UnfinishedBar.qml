import QtQuick
import Quillary.Controls
import Quillary.Model
import Quillary.Panel

/// Tells of work that was not finished before the program ended, and offers to do it now; no height without any.
Item {
    id: bar

    required property UnfinishedWork work
    required property ImportQueue queue

    height: visible ? content.height + 2 * Theme.smallGap : 0
    objectName: "unfinishedBar"
    visible: work.text.length > 0

    Divider {
        width: parent.width
    }
    Column {
        id: content

        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        spacing: 4
        y: Theme.smallGap

        NoteLine {
            ink: Theme.warning
            symbol: "exclamationmark.triangle.fill"
            text: bar.work.text
            width: parent.width
        }
        Flow {
            leftPadding: 21
            spacing: Theme.margin
            width: parent.width

            TextButton {
                objectName: "resumeWork"
                text: qsTr("File Them Now")

                onClicked: bar.work.resume()
            }
            TextButton {
                objectName: "showUnfinished"
                text: qsTr("Show")

                onClicked: sheet.open()
            }
            TextButton {
                objectName: "dismissUnfinished"
                text: qsTr("Dismiss")

                onClicked: bar.work.dismiss()
            }
        }
    }
    FileListSheet {
        id: sheet

        files: bar.work.files
        reasons: []
        title: bar.work.text

        onCopyRequested: text => bar.queue.copyText(text)
    }
}
