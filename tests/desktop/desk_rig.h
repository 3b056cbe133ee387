#pragma once

#include <filesystem>
#include <iostream>
#include <memory>

#include "app/welcome.h"
#include "desktop/desk/desk.h"
#include "platform/adapters/qt/qt_main_loop.h"
#include "support/memory_secret_store.h"

namespace tessary {

/// A desk on a library of its own with real files, opened as the window opens it and removed at the end. Nothing of
/// the environment is seen, nor the user's keychain; time stands still at `kRigNow` unless told otherwise.
template <class Loop = QtMainLoop>
struct DeskRig {
    static constexpr const char* kRigNow = "2026-11-21T09:30:00Z";

    explicit DeskRig(std::optional<Date> now = parseIso8601(kRigNow)) : ports(paths, now, std::cerr) {}
    ~DeskRig() {
        if (const auto closed = workspace->close(); !closed) std::cerr << closed.error() << '\n';
        std::filesystem::remove_all(home);
    }
    DeskRig(const DeskRig&) = delete;
    DeskRig& operator=(const DeskRig&) = delete;

    [[nodiscard]] JournalStore& library() const { return workspace->library(); }
    [[nodiscard]] FlashcardStore& cards() const { return workspace->cards(); }

    /// Without a notebook a loose page.
    PageId addPage(const std::string& title, std::optional<NotebookId> notebook = {}, const std::string& body = "") {
        JournalEntry page;
        page.title = title;
        page.body = body;
        page.notebookID = notebook;
        return library().addPage(page).value();
    }
    CardId addCard(PageId page, const std::string& front, const std::string& back) {
        CardContent content;
        content.front = front;
        content.back = back;
        return addCard(page, content);
    }
    CardId addCard(PageId page, CardContent content) {
        return cards().addCards(page, {std::move(content)}, desk.now()).front();
    }

    static std::filesystem::path makeHome() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tessary-desk-XXXXXX").string();
        return mkdtemp(pattern.data());
    }
    static std::optional<std::string> noEnvironment(std::string_view) { return std::nullopt; }

    std::filesystem::path home = makeHome();
    AppPaths paths = portablePaths(home, PosixFileSystem()).value();
    SystemPorts ports;
    Loop loop;
    std::unique_ptr<Workspace> workspace =
        Workspace::open(paths, ports.forWorkspace(noEnvironment, loop), WorkspaceUse::change).value();
    MemorySecretStore secrets;
    AISystem ai{{.files = ports.files, .ids = ports.ids, .text = ports.text, .secrets = &secrets}, noEnvironment};
    Desk desk{*workspace, ports, loop, ai};
};

}  // namespace tessary
