import QtQuick
import QtQuick.Layouts
import Tessary.Kit
import Tessary.Desk
import Tessary.Generation

/// Has cards written for a page: what to write, how far it is, what came of it. It may be closed at any time; the run
/// is its model's business.
Sheet {
    id: sheet

    required property Desk desk
    required property GenerationModel generation
    signal openSettings()

    readonly property bool choosing: generation.phase === GenerationModel.Idle
    readonly property bool running: generation.running
    property bool seen: false

    /// A run that goes on, or whose cards of this page nobody has seen yet, comes first.
    function openFor(page: string, selection: string) {
        if (!sheet.running && (sheet.choosing || sheet.generation.pageId !== page)) {
            sheet.generation.leave();
            choices.open(page, selection);
        }
        sheet.open();
    }
    function acceptIfEnabled() {
        if (sheet.choosing)
            sheet.generation.start(choices);
    }
    function reconsider() {
        sheet.generation.leave();
        choices.lookAtProvider();
    }

    iconName: "make"
    title: choosing ? qsTr("Generate cards") : running ? qsTr("Generating flashcards") : qsTr("New cards")
    subtitle: choosing ? choices.pageTitle : generation.pageTitle
    // What ends while the sheet fades has not been seen.
    onAboutToHide: seen = !running
    onClosed: {
        choices.close();
        if (seen)
            generation.leave();
    }

    GenerationChoices {
        id: choices
        desk: sheet.desk
    }
    Connections {
        target: sheet.generation
        function onEnded() {
            if (sheet.opened && sheet.generation.phase === GenerationModel.Cancelled && sheet.generation.written === 0)
                sheet.reconsider();
        }
    }

    GenerationForm {
        visible: sheet.choosing
        choices: choices
        Layout.fillWidth: true
        onOpenSettings: {
            sheet.close();
            sheet.openSettings();
        }
    }
    GenerationRun {
        visible: !sheet.choosing
        generation: sheet.generation
        room: Math.min(480, (sheet.parent?.height ?? 600) - 32 - 208)
        Layout.fillWidth: true
    }

    footer: GenerationFooter {
        generation: sheet.generation
        choices: choices
        onStart: sheet.acceptIfEnabled()
        onRetry: sheet.generation.retry()
        onReconsider: sheet.reconsider()
        onClose: sheet.close()
    }
}
