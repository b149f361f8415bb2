pragma Singleton
import QtQuick

/// Every colour, size, font and duration of the panel.
QtObject {
    id: theme

    /// What the desktop asks for; the panel's owner sets both.
    property bool dark: true
    property bool reducedMotion: false

    readonly property color window: dark ? "#1C1C1F" : "#F4F4F6"
    readonly property color well: dark ? "#121214" : "#E6E6EA"
    readonly property color field: dark ? "#121214" : "#FFFFFF"
    readonly property color stage: dark ? "#161619" : "#ECECEF"
    readonly property color row: dark ? "#242428" : "#EAEAEE"
    readonly property color raised: dark ? "#2C2C31" : "#E2E2E7"
    readonly property color control: dark ? "#333338" : "#DEDEE4"
    readonly property color controlHover: dark ? "#3C3C42" : "#D4D4DB"
    readonly property color controlPressed: dark ? "#2A2A2E" : "#C8C8D0"
    /// Between the parts of a control.
    readonly property color controlLine: dark ? "#4A4A52" : "#C4C4CC"
    readonly property color segment: dark ? "#3A3A40" : "#FFFFFF"
    readonly property color sheet: dark ? "#26262A" : "#FBFBFC"
    readonly property color hairline: dark ? "#2A2A2E" : "#D8D8DE"
    readonly property color outline: dark ? "#36363B" : "#CDCDD4"
    readonly property color shade: dark ? "#80000000" : "#50303038"

    readonly property color text: dark ? "#E9E9EC" : "#1D1D20"
    readonly property color softText: dark ? "#C4C4CA" : "#3A3A40"
    readonly property color secondary: dark ? "#8E8E97" : "#5F5F68"
    readonly property color disabled: dark ? "#5C5C64" : "#A6A6AE"
    readonly property color accent: dark ? "#388ADE" : "#2272C4"
    readonly property color accentHover: dark ? "#4A98E8" : "#1F68B3"
    /// The accent as the ground of a text.
    readonly property color accentFill: dark ? "#2B76C6" : "#2272C4"
    readonly property color accentFillHover: dark ? "#2A6FB9" : "#1F68B3"
    readonly property color accentFillPressed: dark ? "#2563A5" : "#1A5A9C"
    readonly property color accentGround: dark ? "#213349" : "#D5E5F7"
    readonly property color accentText: dark ? "#84B9F2" : "#1B5FA6"
    readonly property color accentInk: "#FFFFFF"
    readonly property color targeted: dark ? "#1D242D" : "#E4EDF7"
    readonly property color good: dark ? "#5CC9A6" : "#177052"
    readonly property color warning: dark ? "#F2B45A" : "#875500"
    readonly property color danger: dark ? "#FF7A7A" : "#B32424"
    readonly property color dangerHover: dark ? "#43292D" : "#F3D9D9"
    readonly property color favorite: dark ? "#F2C94C" : "#B98600"
    /// The drawing of a block's layers.
    readonly property color layerTitle: Qt.rgba(0.5, 0.47, 0.87, 1)
    readonly property color layerGraphic: Qt.rgba(0.36, 0.79, 0.65, 1)
    readonly property color layerClip: Qt.rgba(0.22, 0.54, 0.87, 1)
    /// Cells and borders over pictures.
    readonly property color ink: dark ? "#FFFFFF" : "#000000"
    readonly property color pictureShade: "#40000000"
    /// Behind a text over a picture.
    readonly property color caption: "#B3141416"
    readonly property color pictureWarning: "#F2B45A"
    readonly property color pictureDanger: "#FF7A7A"

    readonly property int margin: 10
    readonly property int gap: 8
    readonly property int smallGap: 6
    readonly property int controlHeight: 26
    readonly property int headerHeight: 43
    readonly property int stageRadius: 10
    readonly property int tileRadius: 7
    readonly property int controlRadius: 6
    readonly property int symbolSize: 16

    readonly property string family: "Inter"
    readonly property int textSize: 12
    readonly property int smallSize: 11
    readonly property int titleSize: 15

    readonly property int fade: reducedMotion ? 0 : 150
    readonly property int quick: reducedMotion ? 0 : 90
}
