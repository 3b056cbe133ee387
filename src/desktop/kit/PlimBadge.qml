import QtQuick

/// The companion in one reaction. Where the user wants none that moves, it is a picture if `picture` says that one
/// belongs there, and else it is gone and takes no room.
PlimView {
    id: badge

    /// The window's Desk.
    required property var desk
    property bool picture: false

    still: !desk.companion || Theme.reduceMotion
    visible: desk.companion || picture
}
