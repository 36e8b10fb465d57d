#include "bridge/childprocess.h"

#include "bridge/coredumpfilter.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#ifdef __APPLE__
#include <crt_externs.h>
#endif

using namespace Qt::StringLiterals;

namespace {

constexpr auto nullDevice = "/dev/null";
constexpr int firstOwnDescriptor = STDERR_FILENO + 1;

#ifdef __linux__
constexpr int platformFlags = 0;

char *const *currentEnvironment()
{
    return environ;
}

int addCloseOthers(posix_spawn_file_actions_t &actions)
{
    return posix_spawn_file_actions_addclosefrom_np(&actions, firstOwnDescriptor);
}

int openEnds(std::array<int, 2> &ends)
{
    return pipe2(ends.data(), O_CLOEXEC);
}

int readLargestPipe()
{
    constexpr int kernelDefault = 1 << 20;
    QFile setting(u"/proc/sys/fs/pipe-max-size"_s);
    const int size = setting.open(QIODevice::ReadOnly) ? setting.readAll().trimmed().toInt() : 0;
    return size > 0 ? size : kernelDefault;
}

// The child may print all of its output before anything is read. A user who holds many pipes is refused
// the largest ones.
void enlargePipe(int end)
{
    constexpr int defaultSize = 1 << 16;
    static const int largest = readLargestPipe();
    for (int size = largest; size > defaultSize; size /= 2) {
        if (fcntl(end, F_SETPIPE_SZ, size) >= 0) {
            return;
        }
    }
}
#else
constexpr int platformFlags = POSIX_SPAWN_CLOEXEC_DEFAULT;

char *const *currentEnvironment()
{
    return *_NSGetEnviron();
}

// The flag above does it.
int addCloseOthers(posix_spawn_file_actions_t &)
{
    return 0;
}

int openEnds(std::array<int, 2> &ends)
{
    if (pipe(ends.data()) != 0) {
        return -1;
    }
    std::for_each(ends.begin(), ends.end(), [](int end) { fcntl(end, F_SETFD, FD_CLOEXEC); });
    return 0;
}

// The system grows its pipes by itself.
void enlargePipe(int) { }
#endif

// A pipe end with the number of a standard stream would receive what this process prints.
int clearOfStandardStreams(int end)
{
    if (end >= firstOwnDescriptor) {
        return end;
    }
    const int moved = fcntl(end, F_DUPFD_CLOEXEC, firstOwnDescriptor);
    close(end);
    return moved;
}

class OutputPipe
{
public:
    OutputPipe()
    {
        std::array<int, 2> ends{};
        if (openEnds(ends) != 0) {
            m_error = errno;
            return;
        }
        m_readEnd = clearOfStandardStreams(ends[0]);
        m_writeEnd = clearOfStandardStreams(ends[1]);
        m_error = m_readEnd < 0 || m_writeEnd < 0 ? EMFILE : 0;
        enlargePipe(m_readEnd);
    }
    Q_DISABLE_COPY(OutputPipe)
    ~OutputPipe()
    {
        closeEnd(m_readEnd);
        closeEnd(m_writeEnd);
    }

    [[nodiscard]] int error() const { return m_error; } // an errno value, 0 when open
    [[nodiscard]] int readEnd() const { return m_readEnd; }
    [[nodiscard]] int writeEnd() const { return m_writeEnd; }
    void closeWriteEnd() { closeEnd(m_writeEnd); }

private:
    static void closeEnd(int &end)
    {
        if (end >= 0) {
            close(std::exchange(end, -1));
        }
    }

    int m_readEnd = -1;
    int m_writeEnd = -1;
    int m_error = 0;
};

// How the child is set up before its program starts. It would otherwise inherit which signals are ignored and
// blocked.
class SpawnSetup
{
public:
    explicit SpawnSetup(int output)
    {
        sigset_t all;
        sigset_t none;
        sigfillset(&all);
        sigemptyset(&none);
        constexpr int flags = POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | platformFlags;
        // Each step gives 0 or a positive errno value.
        m_error = std::max({
            posix_spawnattr_init(&m_attributes),
            posix_spawnattr_setsigdefault(&m_attributes, &all),
            posix_spawnattr_setsigmask(&m_attributes, &none),
            posix_spawnattr_setflags(&m_attributes, static_cast<short>(flags)),
            posix_spawn_file_actions_init(&m_actions),
            posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, nullDevice, O_RDONLY, 0),
            posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO),
            posix_spawn_file_actions_adddup2(&m_actions, output, STDERR_FILENO),
            addCloseOthers(m_actions),
        });
    }
    Q_DISABLE_COPY(SpawnSetup)
    ~SpawnSetup()
    {
        posix_spawn_file_actions_destroy(&m_actions);
        posix_spawnattr_destroy(&m_attributes);
    }

    [[nodiscard]] int error() const { return m_error; } // an errno value or 0
    [[nodiscard]] const posix_spawn_file_actions_t *actions() const { return &m_actions; }
    [[nodiscard]] const posix_spawnattr_t *attributes() const { return &m_attributes; }

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
    int m_error = 0;
};

std::vector<QByteArray> commandLine(const QByteArray &program, const QStringList &arguments)
{
    std::vector<QByteArray> words{program};
    for (const QString &argument : arguments) {
        words.push_back(argument.toUtf8());
    }
    return words;
}

// An errno value, or 0 with the child's process number in `child`.
int spawn(std::vector<QByteArray> &words, int output, pid_t &child)
{
    const SpawnSetup setup(output);
    if (setup.error() != 0) {
        return setup.error();
    }
    std::vector<char *> pointers(words.size() + 1, nullptr);
    std::ranges::transform(words, pointers.begin(), [](QByteArray &word) { return word.data(); });
    const InheritedCoreDumps inherited;
    return posix_spawn(&child, pointers.front(), setup.actions(), setup.attributes(), pointers.data(),
                       currentEnvironment());
}

// ECHILD is an end as well: while SIGCHLD is ignored the system collects children by itself.
void waitForEnd(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) { }
}

QByteArray readToEnd(int end)
{
    QByteArray all;
    std::array<char, 1 << 14> chunk{};
    for (;;) {
        const ssize_t count = read(end, chunk.data(), chunk.size());
        if (count > 0) {
            all.append(chunk.data(), count);
        } else if (count == 0 || errno != EINTR) {
            return all;
        }
    }
}

struct Reason
{
    int code = 0;
    QLatin1StringView text;
};

// The system's own texts follow the user's language; the log is English.
constexpr std::array reasons{
    Reason{ENOENT, "the file does not exist"_L1},
    Reason{ENOTDIR, "a part of the path is not a directory"_L1},
    Reason{ELOOP, "the path has too many symbolic links"_L1},
    Reason{ENAMETOOLONG, "the path is too long"_L1},
    Reason{EACCES, "permission denied"_L1},
    Reason{ENOEXEC, "the file has no format that this system can run"_L1},
    Reason{ETXTBSY, "the file is open for writing"_L1},
    Reason{E2BIG, "the argument list is too long"_L1},
    Reason{EMFILE, "this program has no file descriptors left"_L1},
    Reason{ENFILE, "the system has no file descriptors left"_L1},
    Reason{EAGAIN, "no further process can be created at the moment"_L1},
    Reason{ENOMEM, "not enough memory"_L1},
};

QString generalReason(int code)
{
    const auto *const found = std::ranges::find(reasons, code, &Reason::code);
    return found == reasons.end() ? qt_error_string(code).simplified() : QString(found->text);
}

// Some codes say less than, or something other than, what is wrong with the file.
QString launchReason(int code, const QByteArray &program)
{
    // The child's standard input is opened first, and gives its code to the launch.
    if (access(nullDevice, R_OK) != 0 && errno == code) {
        return u"/dev/null cannot be opened: "_s + generalReason(code);
    }
    struct stat file
    {
    };
    const bool exists = stat(program.constData(), &file) == 0;
    if (code == ENOENT && exists) {
        return u"the interpreter or loader that the file asks for does not exist"_s;
    }
    if (code == EACCES && exists && S_ISDIR(file.st_mode)) {
        return u"the path is a directory"_s;
    }
    if (code == EACCES && exists && S_ISREG(file.st_mode) && access(program.constData(), X_OK) != 0) {
        return u"the file is not executable"_s;
    }
    return generalReason(code);
}

} // namespace

ChildResult runChild(const QByteArray &program, const QStringList &arguments)
{
    std::vector<QByteArray> words = commandLine(program, arguments);
    if (std::ranges::any_of(words, [](const QByteArray &word) { return word.contains('\0'); })) {
        return {{}, u"the path or an argument contains a NUL character"_s};
    }
    OutputPipe pipe;
    if (pipe.error() != 0) {
        return {{}, generalReason(pipe.error())};
    }
    pid_t child = 0;
    if (const int error = spawn(words, pipe.writeEnd(), child); error != 0) {
        return {{}, launchReason(error, program)};
    }
    // While this end is open, reading finds no end of file.
    pipe.closeWriteEnd();
    waitForEnd(child);
    return {readToEnd(pipe.readEnd()), {}};
}
