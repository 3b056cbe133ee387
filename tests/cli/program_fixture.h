#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "cli/program.h"
#include "library/library_json.h"

namespace tessary {

/// Runs command lines in process on a home of its own, with real files and threads.
class ProgramTest : public testing::Test {
protected:
    ProgramTest() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tessary-cli-XXXXXX").string();
        home = mkdtemp(pattern.data());
    }
    ~ProgramTest() override { std::filesystem::remove_all(home); }

    struct Result {
        int code = -1;
        std::string out;
        std::string err;
    };

    /// Runs with `--home` and, if set, `--now`; `keys` is what stands on standard input.
    Result run(std::vector<std::string> arguments, const std::string& keys = "") {
        arguments.insert(arguments.begin(), {"--home", home.string()});
        if (!now.empty()) arguments.insert(arguments.begin(), {"--now", now});
        return runBare(arguments, keys);
    }

    Result runBare(const std::vector<std::string>& arguments, const std::string& keys = "") {
        const std::filesystem::path input = home / "input";
        std::ofstream(input, std::ios::binary) << keys;
        const int descriptor = open(input.c_str(), O_RDONLY | O_CLOEXEC);
        std::ostringstream out;
        std::ostringstream err;
        Result result;
        result.code =
            runProgram(arguments, {.input = descriptor, .out = out, .err = err}, [this](std::string_view name) {
                const auto found = environment.find(std::string(name));
                return found == environment.end() ? std::nullopt : std::optional(found->second);
            });
        close(descriptor);
        result.out = out.str();
        result.err = err.str();
        return result;
    }

    /// Runs with `--json` and reads the answer; a failure of the command fails the test.
    template <class T>
    T json(std::vector<std::string> arguments) {
        arguments.push_back("--json");
        const Result result = run(arguments);
        EXPECT_EQ(result.code, 0) << result.err;
        const auto read = decodeJson<T>(result.out, ReadContext{.now = {}, .freshId = [] { return Uuid{}; }});
        EXPECT_TRUE(read) << result.out;
        return read.value_or(T{});
    }

    std::string addPage(const std::string& title, const std::string& body = "") {
        return json<JournalEntry>({"pages", "add", "--title", title, "--body", body}).id.toString();
    }

    void write(const std::filesystem::path& path, const std::string& content) const {
        std::filesystem::create_directories((home / path).parent_path());
        std::ofstream(home / path, std::ios::binary) << content;
    }
    std::string content(const std::filesystem::path& path) const {
        std::ifstream file(home / path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// Every file of the library with its content.
    std::map<std::string, std::string> libraryFiles() const {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(home / "Notara")) {
            if (entry.is_regular_file()) files[entry.path().string()] = content(entry.path());
        }
        return files;
    }

    std::filesystem::path home;
    std::string now = "2026-11-21T09:30:00Z";
    std::map<std::string, std::string> environment;
};

}  // namespace tessary
