#pragma once

#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "base/json_record.h"
#include "library/store_services.h"

namespace tessary {

/// How reading a file at start went.
enum class LoadOutcome {
    missing,     ///< no file yet: an empty store
    loaded,
    undecodable, ///< the content is preserved in a "-corrupt-" copy; the store starts empty
    unreadable,  ///< the file is there but cannot be opened or preserved; the store starts empty and never saves over
                 ///< it
};

/// One JSON file of a store: tolerant load with a preserved copy of what cannot be decoded, and atomic writes on the
/// store's serial queue. What the file holds is the business of `JsonFile` below.
class GuardedFile {
public:
    /// `label` names the file in messages, as in "entries.json"; `saveFailure` begins the console message of a failed
    /// save, as in "Notara: save failed — ".
    GuardedFile(std::filesystem::path path, std::string saveFailure, StoreServices services, SerialQueue& queue,
                StoreAccess access);

    GuardedFile(const GuardedFile&) = delete;
    GuardedFile& operator=(const GuardedFile&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::string name() const { return path_.filename().string(); }
    [[nodiscard]] LoadOutcome outcome() const { return outcome_; }
    /// What was wrong at load: "entries.json: [12].date: missing"; empty when nothing was.
    [[nodiscard]] const std::string& loadProblem() const { return loadProblem_; }

    /// Queues the write of what `encode` gives (on the queue's thread; it must own all it needs). Nothing is written
    /// with read-only access, nor over a file that is neither read nor preserved.
    /// `mayWrite` is asked on the queue right before, so that one file can wait for another's success;
    /// `written` is called on the queue after a success.
    void save(std::move_only_function<std::expected<std::string, std::string>()> encode,
              std::move_only_function<bool()> mayWrite = {}, std::move_only_function<void()> written = {});

    /// Whether the last finished write failed; true too while a save was refused. Any thread.
    [[nodiscard]] bool lastSaveFailed() const;
    /// Why, for the user; empty after a success. Any thread.
    [[nodiscard]] std::string lastSaveError() const;

protected:
    /// The content, or nothing with `outcome()` telling why.
    std::optional<std::string> readForLoad();
    void contentWasUndecodable(const std::string& content, const DecodingError& error);
    [[nodiscard]] ReadContext readContext() const;

private:
    struct SaveState;

    bool preserve(const std::string& content);
    /// Tries once more to read or preserve an unreadable file before something is saved over it.
    bool mayReplaceFile();

    std::filesystem::path path_;
    std::string saveFailure_;
    StoreServices services_;
    SerialQueue& queue_;
    StoreAccess access_;
    LoadOutcome outcome_ = LoadOutcome::missing;
    std::string loadProblem_;
    std::shared_ptr<SaveState> state_;
};

/// A GuardedFile whose content is a `Root`: a record or a list of records.
template <class Root>
class JsonFile : public GuardedFile {
public:
    using GuardedFile::GuardedFile;

    /// Reads the file; a default `Root` unless `outcome()` is `loaded` afterwards.
    Root load() {
        const std::optional<std::string> content = readForLoad();
        if (!content) return Root{};
        std::expected<Root, DecodingError> root = decodeJson<Root>(*content, readContext());
        if (root) return std::move(*root);
        contentWasUndecodable(*content, root.error());
        return Root{};
    }

    /// Queues the write of `root`, which should be cheap to copy (a RecordList's snapshot).
    void saveRoot(Root root, std::move_only_function<bool()> mayWrite = {},
                  std::move_only_function<void()> written = {}) {
        save([root = std::move(root)] { return encodeJson(root); }, std::move(mayWrite), std::move(written));
    }
};

}  // namespace tessary
