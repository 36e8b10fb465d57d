// A child that reports how it was started. Plain POSIX: a library could itself open descriptors or change
// signal handling before anything is looked at.

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <span>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef __APPLE__
#include <crt_externs.h>
#endif

namespace {

using Words = std::span<char *>;

char *const *currentEnvironment()
{
#ifdef __APPLE__
    return *_NSGetEnviron();
#else
    return environ;
#endif
}

void print(std::string_view text)
{
    std::cout << text;
}

void printWithNul(const char *word)
{
    print({word, std::strlen(word) + 1});
}

void printArguments(Words words)
{
    for (const char *word : words) {
        printWithNul(word);
    }
}

void printEnvironment(Words)
{
    for (char *const *entry = currentEnvironment(); *entry != nullptr; ++entry) {
        printWithNul(*entry);
    }
}

void printDirectory(Words)
{
    std::array<char, PATH_MAX> path{};
    print(getcwd(path.data(), path.size()) == nullptr ? "lost" : path.data());
}

void printDescriptors(Words)
{
    constexpr int searched = 4096;
    for (int number = 0; number < searched; ++number) {
        if (fcntl(number, F_GETFD) >= 0) {
            print(std::to_string(number) + ' ');
        }
    }
}

// Whether both output streams are one pipe, and how much the standard input holds.
void printStreams(Words)
{
    struct stat output
    {
    };
    struct stat errors
    {
    };
    fstat(STDOUT_FILENO, &output);
    fstat(STDERR_FILENO, &errors);
    const bool same = output.st_ino == errors.st_ino && S_ISFIFO(output.st_mode);
    char byte = 0;
    print(same ? "one pipe" : "two outputs");
    print(read(STDIN_FILENO, &byte, 1) == 0 ? ", no input" : ", some input");
}

bool handledByDefault(int signal)
{
    struct sigaction action
    {
    };
    return sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_DFL;
}

void printSignals(Words)
{
    sigset_t mask;
    sigprocmask(SIG_SETMASK, nullptr, &mask);
    for (int signal = 1; signal < NSIG; ++signal) {
        if (!handledByDefault(signal)) {
            print("handled " + std::to_string(signal) + ' ');
        }
        if (sigismember(&mask, signal) == 1) {
            print("blocked " + std::to_string(signal) + ' ');
        }
    }
    print("end");
}

// Prints as many bytes as it is told, in a pattern that shows a lost or doubled block.
void printBytes(Words words)
{
    const long count = std::strtol(words[2], nullptr, 10);
    for (long i = 0; i < count; ++i) {
        std::cout.put(static_cast<char>('a' + i % 23));
    }
}

// How much of this child's own output nobody has read, a good while after it was written.
void printUnread(Words)
{
    print("12345");
    std::cout.flush();
    usleep(100'000);
    int unread = 0;
    ioctl(STDOUT_FILENO, FIONREAD, &unread);
    print(std::to_string(unread));
}

void dieBy(Words words)
{
    print("before");
    std::cout.flush();
    kill(getpid(), static_cast<int>(std::strtol(words[2], nullptr, 10)));
    print("after");
}

struct Report
{
    std::string_view name;
    void (*print)(Words words);
};

constexpr std::array reports{
    Report{"arguments", printArguments},
    Report{"environment", printEnvironment},
    Report{"directory", printDirectory},
    Report{"descriptors", printDescriptors},
    Report{"streams", printStreams},
    Report{"signals", printSignals},
    Report{"bytes", printBytes},
    Report{"unread", printUnread},
    Report{"die", dieBy},
};

} // namespace

int main(int argc, char **argv)
{
    const Words words(argv, static_cast<std::size_t>(argc));
    for (const Report &report : reports) {
        if (words.size() > 1 && report.name == words[1]) {
            report.print(words);
            return EXIT_SUCCESS;
        }
    }
    return EXIT_FAILURE;
}
