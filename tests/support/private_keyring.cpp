#include "support/private_keyring.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string_view>

#include "platform/adapters/posix/posix_process_runner.h"

/// ThreadSanitizer takes this up by its name. GLib's locks are out of its sight, so that it would report every block of
/// memory that these libraries hand from one thread to another.
extern "C" const char* __tsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __tsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
    return "called_from_lib:libglib-2.0.so\n"
           "called_from_lib:libgobject-2.0.so\n"
           "called_from_lib:libgio-2.0.so\n"
           "called_from_lib:libsecret-1.so\n"
           "called_from_lib:libgcrypt.so\n";
}

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr const char* kAddressVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr int kMostTries = 5000;

/// A folder directly below the system's one for temporary files, since a socket's path may have 107 bytes.
fs::path makeFolder() {
    std::string pattern = fs::temp_directory_path() / "tessary-keyring-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("No temporary folder.");
    return pattern;
}

void put(const fs::path& path, std::string_view content) {
    std::ofstream stream(path, std::ios::binary);
    stream << content;
    if (!stream.flush()) throw std::runtime_error("Can't write " + path.string());
}

fs::path programNamed(const std::string& name) {
    for (const char* folder : {"/usr/bin", "/usr/local/bin", "/bin"}) {
        if (fs::exists(fs::path(folder) / name)) return fs::path(folder) / name;
    }
    throw std::runtime_error("Please install " + name + ".");
}

std::string configuration(const fs::path& folder, PrivateKeyring::Bus bus) {
    const std::string rule =
        bus == PrivateKeyring::Bus::refusing ? "<deny send_destination='org.freedesktop.secrets'/>" : "";
    return "<busconfig><type>session</type><listen>unix:dir=" + folder.string() +
           "</listen><auth>EXTERNAL</auth><policy context='default'><allow send_destination='*' eavesdrop='true'/>"
           "<allow eavesdrop='true'/><allow own='*'/>" +
           rule + "</policy></busconfig>";
}

std::size_t occurrences(std::string_view text, std::string_view wanted) {
    std::size_t count = 0;
    for (auto at = text.find(wanted); at != std::string_view::npos; at = text.find(wanted, at + 1)) ++count;
    return count;
}

struct Pipe {
    int readEnd;
    int writeEnd;
};

Pipe makePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("No pipe.");
    return {ends[0], ends[1]};
}

/// The first line that comes; closes both ends.
std::string firstLineOf(const Pipe& pipe) {
    ::close(pipe.writeEnd);
    std::string line;
    char character = 0;
    while (::read(pipe.readEnd, &character, 1) == 1 && character != '\n') line += character;
    ::close(pipe.readEnd);
    if (character != '\n') throw std::runtime_error("The message bus did not start.");
    return line;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

struct Streams {
    int input;
    int output;
    int errors;
};

/// Of the new process. Only what is allowed after a fork of a program with several threads.
[[noreturn]] void become(char* const* command, char* const* environment, const Streams& streams, pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) ::_exit(1);
    if (::dup2(streams.input, STDIN_FILENO) < 0) ::_exit(1);
    ::dup2(streams.errors, STDERR_FILENO);
    if (streams.output >= 0 && ::dup2(streams.output, STDOUT_FILENO) < 0) ::_exit(1);
    ::execve(command[0], command, environment);
    ::_exit(1);
}

}  // namespace

HeldProcess::HeldProcess(const Settings& settings) {
    std::vector<std::string> command = settings.command;
    std::vector<std::string> environment = settings.environment;
    const std::vector<char*> arguments = pointersTo(command);
    const std::vector<char*> variables = pointersTo(environment);
    const int input = ::open(settings.standardInput.c_str(), O_RDONLY | O_CLOEXEC);
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    const pid_t parent = ::getpid();
    id_ = ::fork();
    if (id_ == 0) become(arguments.data(), variables.data(), {input, settings.standardOutput, nowhere}, parent);
    ::close(input);
    ::close(nowhere);
    if (id_ < 0) throw std::runtime_error("No new process.");
}

HeldProcess::~HeldProcess() {
    signal(SIGKILL);
    while (::waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void HeldProcess::signal(int number) const { ::kill(id_, number); }

SessionBusAddress::SessionBusAddress(const std::string& address) {
    if (const char* before = std::getenv(kAddressVariable)) before_ = before;
    ::setenv(kAddressVariable, address.c_str(), 1);
}

SessionBusAddress::~SessionBusAddress() {
    if (before_) {
        ::setenv(kAddressVariable, before_->c_str(), 1);
    } else {
        ::unsetenv(kAddressVariable);
    }
}

PrivateKeyring::PrivateKeyring(Bus bus) : folder_(makeFolder()) {
    put(folder_ / "bus.conf", configuration(folder_, bus));
    put(folder_ / "password", "open sesame");
    fs::create_directory(folder_ / "run");
    fs::permissions(folder_ / "run", fs::perms::owner_all);
    environment_ = {"PATH=/usr/bin:/bin",
                    "HOME=" + folder_.string(),
                    "XDG_DATA_HOME=" + (folder_ / "data").string(),
                    "XDG_CONFIG_HOME=" + (folder_ / "config").string(),
                    "XDG_CACHE_HOME=" + (folder_ / "cache").string(),
                    "XDG_RUNTIME_DIR=" + (folder_ / "run").string()};
    const Pipe pipe = makePipe();
    bus_ = std::make_unique<HeldProcess>(
        HeldProcess::Settings{.command = {programNamed("dbus-daemon"), "--nofork", "--print-address=1",
                                          "--config-file=" + (folder_ / "bus.conf").string()},
                              .environment = environment_,
                              .standardOutput = pipe.writeEnd});
    address_ = firstLineOf(pipe);
    environment_.push_back(std::string(kAddressVariable) + "=" + address_);
    sessionBus_.emplace(address_);
}

PrivateKeyring::~PrivateKeyring() {
    service_.reset();
    bus_.reset();
    sessionBus_.reset();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void PrivateKeyring::startUnlocked() { startService({"--unlock"}, folder_ / "password"); }

void PrivateKeyring::startLocked() { startService({}, "/dev/null"); }

void PrivateKeyring::stopService() {
    service_.reset();
    waitForService("boolean false");
}

void PrivateKeyring::freezeService() const { service_->signal(SIGSTOP); }

void PrivateKeyring::startService(std::vector<std::string> options, const fs::path& input) {
    stopService();
    std::vector<std::string> command = {programNamed("gnome-keyring-daemon"), "--foreground", "--components=secrets"};
    command.insert(command.end(), options.begin(), options.end());
    service_ = std::make_unique<HeldProcess>(
        HeldProcess::Settings{.command = command, .environment = environment_, .standardInput = input});
    waitForService("boolean true");
}

void PrivateKeyring::waitForService(std::string_view answer) const {
    for (int tries = 0; tries < kMostTries; ++tries) {
        const std::string owned = send({"--dest=org.freedesktop.DBus", "/", "org.freedesktop.DBus.NameHasOwner",
                                        "string:org.freedesktop.secrets"});
        if (owned.find(answer) != std::string::npos) return;
    }
    throw std::runtime_error("The keychain did not start or end.");
}

std::size_t PrivateKeyring::count(const SecretName& name) const {
    const std::string answer = send({"--dest=org.freedesktop.secrets", "/org/freedesktop/secrets",
                                     "org.freedesktop.Secret.Service.SearchItems",
                                     "dict:string:string:service," + name.service + ",account," + name.account});
    return occurrences(answer, "object path");
}

std::size_t PrivateKeyring::connectionCount() const {
    return occurrences(send({"--dest=org.freedesktop.DBus", "/", "org.freedesktop.DBus.ListNames"}), "string \":");
}

void PrivateKeyring::setDefaultCollection(const std::string& collection) const {
    (void)send({"--dest=org.freedesktop.secrets", "/org/freedesktop/secrets", "org.freedesktop.Secret.Service.SetAlias",
                "string:default", "objpath:/org/freedesktop/secrets/collection/" + collection});
}

std::string PrivateKeyring::send(std::vector<std::string> message) const {
    message.insert(message.begin(), {"--bus=" + address_, "--print-reply"});
    ProcessRequest request;
    request.program = programNamed("dbus-send");
    request.arguments = std::move(message);
    const auto result = PosixProcessRunner().run(request, {});
    if (!result) throw std::runtime_error(result.error().message);
    if (result->exitStatus != 0) throw std::runtime_error("dbus-send: " + result->errors);
    return result->output;
}

}  // namespace tessary
