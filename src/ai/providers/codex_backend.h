#pragma once

#include <filesystem>
#include <optional>

#include "ai/providers/ai_json_backend.h"
#include "platform/file_system.h"
#include "platform/id_source.h"
#include "platform/process_runner.h"

namespace tessary {

/// What running the Codex tool needs to know of the system.
struct CodexPlaces {
    std::filesystem::path home;       ///< the user's
    std::string searchPath;           ///< PATH as the program inherited it
    std::filesystem::path temporary;  ///< where temporary folders are made
};

/// The Codex command-line tool, run once for each job. Each run has a temporary folder, which it removes.
class CodexBackend final : public AIJSONBackend {
public:
    /// `model` may be empty for the tool's own. `files`, `processes` and `ids` outlive the backend.
    CodexBackend(ProcessRunner& processes, FileSystem& files, IdSource& ids, CodexPlaces places, std::string model)
        : processes_(processes), files_(files), ids_(ids), places_(std::move(places)), model_(std::move(model)) {}

    [[nodiscard]] std::size_t maxChunkCharacters() const override { return 60000; }
    /// Looks whether the tool is installed.
    [[nodiscard]] AIResult<void> prepare(std::stop_token stop) override;
    [[nodiscard]] AIResult<std::string> completeJSON(const JSONJob& job, std::stop_token stop) override;

private:
    [[nodiscard]] AIResult<std::filesystem::path> locate(std::stop_token stop);
    [[nodiscard]] std::string searchPath() const;
    [[nodiscard]] AIResult<std::string> runIn(const std::filesystem::path& folder, const std::filesystem::path& tool,
                                              const JSONJob& job, std::stop_token stop);
    [[nodiscard]] AIResult<std::string> answerOf(const ProcessResult& ended, const std::filesystem::path& file) const;

    ProcessRunner& processes_;
    FileSystem& files_;
    IdSource& ids_;
    CodexPlaces places_;
    std::string model_;
};

}  // namespace tessary
