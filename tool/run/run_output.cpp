#include "tool/run/run_output.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <iterator>

#include "tool/messages.h"
#include "tool/run/run_failure.h"

namespace ckscribe {

namespace {

constexpr mode_t kEverybody = 0666;
constexpr mode_t kOnlyUser = 0600;

int OpenOutput(const RunOptions& options) {
    if (options.output.empty()) return STDERR_FILENO;
    // Only the user may read data.
    const mode_t mode = options.showsData ? kOnlyUser : kEverybody;
    const int descriptor = open(options.output.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
    if (descriptor < 0)
        throw RunFailure(fmt::format("{} cannot be written: {}.", options.output, std::strerror(errno)));
    return descriptor;
}

bool IsLog(RunFormat format) { return format == RunFormat::kText || format == RunFormat::kOld; }

std::string AgeText(const Moment& start) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const std::int64_t age = now.tv_sec * kNanosecondsPerSecond + now.tv_nsec - start.nanoseconds;
    return SecondsText(static_cast<std::uint64_t>(age > 0 ? age : 0));
}

// Names the signals that end commands in practice. C libraries name signals in different ways, or not at all.
std::string NameOfSignal(int signal) {
    switch (signal) {
        case SIGABRT:
            return "SIGABRT";
        case SIGALRM:
            return "SIGALRM";
        case SIGBUS:
            return "SIGBUS";
        case SIGFPE:
            return "SIGFPE";
        case SIGHUP:
            return "SIGHUP";
        case SIGILL:
            return "SIGILL";
        case SIGINT:
            return "SIGINT";
        case SIGKILL:
            return "SIGKILL";
        case SIGPIPE:
            return "SIGPIPE";
        case SIGQUIT:
            return "SIGQUIT";
        case SIGSEGV:
            return "SIGSEGV";
        case SIGSYS:
            return "SIGSYS";
        case SIGTERM:
            return "SIGTERM";
        case SIGTRAP:
            return "SIGTRAP";
        case SIGUSR1:
            return "SIGUSR1";
        case SIGUSR2:
            return "SIGUSR2";
        case SIGXCPU:
            return "SIGXCPU";
        case SIGXFSZ:
            return "SIGXFSZ";
        default:
            return fmt::format("signal {}", signal);
    }
}

std::vector<KeptCall> CallsOf(pid_t process, const std::vector<KeptCall>& calls) {
    std::vector<KeptCall> own;
    std::ranges::copy_if(calls, std::back_inserter(own), [process](const KeptCall& each) {
        return static_cast<pid_t>(each.Get().process) == process;
    });
    return own;
}

std::string CallsText(const std::vector<KeptCall>& calls) {
    std::string text;
    for (const KeptCall& each : calls)
        text += fmt::format("{}{} (thread {})", text.empty() ? "" : ", ", each.Get().Function(),
                            each.Get().thread.value_or(each.Get().process));
    return text;
}

}  // namespace

RunOutput::RunOutput(const RunOptions& options, const PrivateDirectory& directory)
    : options_(options),
      descriptor_(OpenOutput(options)),
      style_{Palette::For(descriptor_), false},
      events_(directory.File(kEventsFile), options.keptDirectory.empty()),
      log_(directory.File(kLogFile), options.keptDirectory.empty()),
      reader_(*this) {}

RunOutput::~RunOutput() {
    if (descriptor_ != STDERR_FILENO) close(descriptor_);
}

bool RunOutput::Print() {
    bool isNew = false;
    for (std::string_view text; !(text = log_.Read()).empty(); isNew = true)
        if (IsLog(options_.format) && options_.hasLog) Write(text);
    for (std::string_view text; !(text = events_.Read()).empty(); isNew = true) {
        if (options_.format == RunFormat::kEvents && options_.hasLog) Write(text);
        reader_.Feed(text);
        Write(lines_);
        lines_.clear();
    }
    return isNew;
}

void RunOutput::OnCall(const Call& call) {
    ++calls_;
    if (options_.hasTable) table_.Add(call);
    if (isFinishing_) {
        unfinished_.emplace_back(call);
        return;
    }
    if (options_.format != RunFormat::kCalls || !options_.hasLog) return;
    lines_ += CallLine(call, style_);
    lines_ += '\n';
}

void RunOutput::Finish(const SupervisedCommand& command) {
    while (Print()) {
    }
    isFinishing_ = true;
    reader_.Finish();
    SayCrash(command, unfinished_);
    SayUnfinished(unfinished_);
    if (options_.hasTable) Write(table_.Text());
}

void RunOutput::SayCrash(const SupervisedCommand& command, const std::vector<KeptCall>& unfinished) {
    const auto sayEnd = [&](const std::string& who, int signal, const std::string& where) {
        Say(fmt::format("{} was ended by {} ({}) {}.", who, NameOfSignal(signal), strsignal(signal), where));
    };
    if (command.HasEnded() && WIFSIGNALED(command.WaitStatus())) {
        const std::vector<KeptCall> open = CallsOf(command.Process(), unfinished);
        sayEnd("The command", WTERMSIG(command.WaitStatus()),
               open.empty() ? "outside of PKCS#11 calls" : "in " + CallsText(open));
    }
    for (const SupervisedCommand::EndedProcess& each : command.EndedBySignal()) {
        const std::vector<KeptCall> open = CallsOf(each.process, unfinished);
        if (!open.empty())
            sayEnd(fmt::format("Process {}, which the command left running,", each.process), each.signal,
                   "in " + CallsText(open));
    }
}

void RunOutput::SayUnfinished(const std::vector<KeptCall>& unfinished) {
    if (unfinished.empty()) return;
    Say(unfinished.size() == 1 ? "1 call never returned:"
                               : fmt::format("{} calls never returned:", unfinished.size()));
    std::string lines;
    for (const KeptCall& each : unfinished)
        lines += fmt::format("{} (thread {}, since {} s)\n", CallLine(each.Get(), style_),
                             each.Get().thread.value_or(each.Get().process), AgeText(each.Get().start));
    Write(lines);
}

void RunOutput::Say(std::string_view text) {
    const bool isForPeople = options_.format == RunFormat::kCalls || !options_.hasLog;
    const bool goesThere = isForPeople || descriptor_ == STDERR_FILENO;
    // A text log ends its last line only when the next record begins.
    const std::string line = fmt::format("{}ckscribe: {}\n", goesThere && !isAtLineStart_ ? "\n" : "", text);
    if (goesThere)
        Write(line);
    else
        fmt::print(stderr, "{}", line);
}

// Writes also to a descriptor that somebody has set to non-blocking. Text that cannot be written is lost, and
// the command goes on.
void RunOutput::Write(std::string_view text) {
    if (!text.empty()) isAtLineStart_ = text.back() == '\n';
    while (!text.empty()) {
        const ssize_t written = write(descriptor_, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            pollfd ready{descriptor_, POLLOUT, 0};
            poll(&ready, 1, -1);
        } else if (errno != EINTR) {
            SayLoss(errno);
            return;
        }
    }
}

void RunOutput::SayLoss(int error) {
    if (isLossSaid_ || descriptor_ == STDERR_FILENO) return;
    isLossSaid_ = true;
    ckscribe::Say(fmt::format("{} cannot be written: {}. Calls are missing there; the command goes on.",
                              options_.output, std::strerror(error)));
}

}  // namespace ckscribe
