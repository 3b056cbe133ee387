#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace tessary {

/// The real program in a process of its own, fed through a pipe.
class ChildProgram {
public:
    ChildProgram(const std::filesystem::path& home, std::vector<std::string> arguments) {
        std::array<int, 2> in{};
        std::array<int, 2> out{};
        EXPECT_EQ(pipe2(in.data(), O_CLOEXEC), 0);
        EXPECT_EQ(pipe2(out.data(), O_CLOEXEC), 0);
        arguments.insert(arguments.begin(), {TESSARY_CLI, "--home", home.string()});
        std::vector<char*> raw;
        for (std::string& argument : arguments) raw.push_back(argument.data());
        raw.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
        EXPECT_EQ(posix_spawn(&process_, TESSARY_CLI, &actions, nullptr, raw.data(), environ), 0);
        posix_spawn_file_actions_destroy(&actions);
        close(in[0]);
        close(out[1]);
        in_ = in[1];
        out_ = out[0];
    }
    ~ChildProgram() {
        close(in_);
        close(out_);
    }

    void type(const std::string& keys) const { EXPECT_EQ(write(in_, keys.data(), keys.size()), std::ssize(keys)); }
    /// Reads until `text` has been shown; false when the program ends before.
    bool waitFor(const std::string& text) {
        std::array<char, 4096> chunk;
        while (shown_.find(text) == std::string::npos) {
            const ssize_t count = read(out_, chunk.data(), chunk.size());
            if (count <= 0) return false;
            shown_.append(chunk.data(), static_cast<std::size_t>(count));
        }
        return true;
    }
    int end(int signal) const {
        int status = 0;
        EXPECT_EQ(kill(process_, signal), 0);
        EXPECT_EQ(waitpid(process_, &status, 0), process_);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t process_ = -1;
    int in_ = -1;
    int out_ = -1;
    std::string shown_;
};

}  // namespace tessary
