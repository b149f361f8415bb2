import QtQuick
import Quillary.Controls

Rectangle {
    color: Theme.hairline
    implicitHeight: 1
}
