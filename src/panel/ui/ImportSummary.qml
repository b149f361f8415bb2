import QtQuick
import Quillary.Controls
import Quillary.Model
import Quillary.Panel

/// What the last batch of files came to, below every tab and shelf until there is something newer; no height without
/// one.
Item {
    id: summary

    required property ImportQueue queue

    height: visible ? content.height + 2 * Theme.smallGap : 0
    objectName: "importSummary"
    visible: queue.hasResult && !queue.importing

    Divider {
        width: parent.width
    }
    Column {
        id: content

        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: close.left
        anchors.rightMargin: Theme.smallGap
        spacing: 4
        y: Theme.smallGap

        NoteLine {
            advice: summary.queue.explanation
            ink: summary.queue.isProblem ? Theme.warning : Theme.good
            objectName: "importSummaryLine"
            symbol: summary.queue.isProblem ? "exclamationmark.triangle.fill" : "checkmark.circle.fill"
            text: summary.queue.summary
            width: parent.width
        }
        Flow {
            leftPadding: 21
            spacing: Theme.gap
            visible: summary.queue.problemFiles.length > 0 || summary.queue.offersFolders
            width: parent.width

            TextButton {
                id: details

                objectName: "importDetails"
                text: qsTr("Show %n file(s)", "", summary.queue.problemFiles.length)
                visible: summary.queue.problemFiles.length > 0

                onClicked: sheet.open()
            }
            Row {
                id: folders

                spacing: Theme.smallGap
                visible: summary.queue.offersFolders

                Toggle {
                    enabled: !summary.queue.refiling
                    objectName: "keepFolders"
                    on: summary.queue.keepFolders
                    spokenName: qsTr("Keep folders")

                    onRequested: on => summary.queue.keepFolders = on
                }
                Label {
                    Accessible.ignored: true
                    anchors.verticalCenter: parent.verticalCenter
                    small: true
                    text: qsTr("Keep folders")
                }
            }
        }
    }
    IconButton {
        id: close

        anchors.right: parent.right
        anchors.rightMargin: Theme.smallGap
        help: qsTr("Dismiss")
        symbol: "xmark"
        y: 3

        onClicked: summary.queue.dismiss()
    }
    FileListSheet {
        id: sheet

        files: summary.queue.problemFiles
        objectName: "importProblems"
        reasons: summary.queue.problemReasons
        title: qsTr("%n file(s) were not saved", "", summary.queue.problemFiles.length)

        onCopyRequested: text => summary.queue.copyText(text)
    }
}
