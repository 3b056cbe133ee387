import QtQuick
import Tessary.Kit

/// The sheet of paper on the desk that holds one screen.
FocusScope {
    default property alias content: inside.data

    Surface {
        anchors.fill: parent
        anchors.margins: 8
        radius: 16
        elevation: 2
        fill: Theme.paper
        Item {
            id: inside
            anchors.fill: parent
        }
    }
}
