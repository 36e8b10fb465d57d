#include "files.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace simulator {

namespace {

    constexpr std::size_t largestFile = 65536;
    constexpr mode_t privateFile = 0600;
    constexpr mode_t privateDirectory = 0700;

    [[nodiscard]] bool wasInterrupted(ssize_t result)
    {
        return result < 0 && errno == EINTR;
    }

    void makeDirectoryPath(const std::string &path)
    {
        if (::mkdir(path.c_str(), privateDirectory) == 0 || errno != ENOENT)
            return;
        const auto separator = path.find_last_of('/');
        if (separator == std::string::npos || separator == 0)
            return;
        makeDirectoryPath(path.substr(0, separator));
        ::mkdir(path.c_str(), privateDirectory);
    }

} // namespace

FileDescriptor::~FileDescriptor()
{
    if (isOpen())
        ::close(m_descriptor);
}

bool writeFully(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (wasInterrupted(written))
            continue;
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

std::optional<std::string> readFile(const std::string &path)
{
    // Without O_NONBLOCK a pipe that was put in a file's place would hold the run for ever.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen())
        return std::nullopt;
    std::string content;
    std::array<char, 4096> part{};
    while (content.size() < largestFile) {
        const ssize_t count = ::read(file.get(), part.data(), part.size());
        if (wasInterrupted(count))
            continue;
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        content.append(part.data(), static_cast<std::size_t>(count));
    }
    return content;
}

bool replaceFile(const std::string &path, std::string_view content)
{
    std::string temporary = path + ".XXXXXX";
    const FileDescriptor file(::mkstemp(temporary.data()));
    if (!file.isOpen())
        return false;
    const bool replaced = ::fchmod(file.get(), privateFile) == 0 && writeFully(file.get(), content)
        && std::rename(temporary.c_str(), path.c_str()) == 0;
    if (!replaced)
        ::unlink(temporary.c_str());
    return replaced;
}

bool appendToFile(const std::string &path, std::string_view content)
{
    const FileDescriptor file(::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, privateFile));
    return file.isOpen() && writeFully(file.get(), content);
}

bool removeFile(const std::string &path)
{
    return ::unlink(path.c_str()) == 0;
}

void makePrivateDirectory(const std::string &path)
{
    makeDirectoryPath(path);
    ::chmod(path.c_str(), privateDirectory);
}

} // namespace simulator
