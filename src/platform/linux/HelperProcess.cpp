#include "platform/HelperProcess.h"

#include "platform/linux/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace quillary::platform {

namespace {

constexpr int firstDescriptor = 3;

/// What the child does between its birth and the program's start.
class StartActions {
public:
    explicit StartActions(std::span<const int> descriptors) {
        posix_spawn_file_actions_init(&m_files);
        posix_spawnattr_init(&m_attributes);
        for (int stream = 0; stream < firstDescriptor; ++stream)
            posix_spawn_file_actions_addopen(&m_files, stream, "/dev/null", stream == 0 ? O_RDONLY : O_WRONLY, 0);
        // First above every target, then down to its place: no source is overwritten before its turn.
        const int above = std::max(firstDescriptor + static_cast<int>(descriptors.size()),
                                   descriptors.empty() ? 0 : 1 + *std::ranges::max_element(descriptors));
        for (std::size_t i = 0; i < descriptors.size(); ++i)
            posix_spawn_file_actions_adddup2(&m_files, descriptors[i], above + static_cast<int>(i));
        for (std::size_t i = 0; i < descriptors.size(); ++i)
            posix_spawn_file_actions_adddup2(&m_files, above + static_cast<int>(i),
                                             firstDescriptor + static_cast<int>(i));
        posix_spawn_file_actions_addclosefrom_np(&m_files, firstDescriptor + static_cast<int>(descriptors.size()));

        sigset_t none;
        sigemptyset(&none);
        sigset_t all;
        sigfillset(&all);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        posix_spawnattr_setsigdefault(&m_attributes, &all);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    StartActions(const StartActions&) = delete;
    StartActions& operator=(const StartActions&) = delete;
    ~StartActions() {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_files);
    }

    int spawn(const std::filesystem::path& program, std::span<const std::string> arguments, pid_t& child) const {
        std::vector<char*> words{const_cast<char*>(program.c_str())};
        for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
        words.push_back(nullptr);
        return posix_spawn(&child, program.c_str(), &m_files, &m_attributes, words.data(), environ);
    }

private:
    posix_spawn_file_actions_t m_files;
    posix_spawnattr_t m_attributes;
};

/// True when the child has ended before the deadline.
bool endsInTime(int child, std::chrono::steady_clock::time_point deadline) {
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        pollfd ended{child, POLLIN, 0};
        const int count = poll(&ended, 1, static_cast<int>(std::clamp<long long>(left.count(), 0, 1 << 30)));
        if (count > 0) return true;
        if (count == 0 || errno != EINTR) return false;
    }
}

} // namespace

HelperProcess::Outcome HelperProcess::run(std::stop_token stop) const {
    if (stop.stop_requested()) return {End::stopped, 0};
    const auto deadline = std::chrono::steady_clock::now() + wallTime;
    pid_t process = -1;
    if (const int error = StartActions(descriptors).spawn(program, arguments, process); error != 0)
        return {End::notStarted, error};
    const Descriptor child(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
    const auto kill = [process] { ::kill(process, SIGKILL); };

    bool inTime = false;
    {
        // The child is not reaped before this callback is gone, so its number cannot have passed to another process.
        const std::stop_callback killer(stop, kill);
        inTime = child && endsInTime(child.get(), deadline);
        if (!inTime) kill();
    }
    siginfo_t info{};
    while (waitid(P_PID, static_cast<id_t>(process), &info, WEXITED) != 0 && errno == EINTR) {
    }
    if (stop.stop_requested()) return {End::stopped, 0};
    if (!inTime) return {End::timedOut, 0};
    return {info.si_code == CLD_EXITED ? End::exited : End::crashed, info.si_status};
}

void confineThisProcess(const HelperLimits& limits) {
    const auto limit = [](auto resource, std::uint64_t value) {
        const rlimit both{value, value};
        setrlimit(resource, &both);
    };
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_CPU, static_cast<std::uint64_t>(limits.processorTime.count()));
    limit(RLIMIT_FSIZE, limits.memory);
#if !defined(__SANITIZE_ADDRESS__)
    limit(RLIMIT_DATA, limits.memory);
#endif
}

} // namespace quillary::platform
