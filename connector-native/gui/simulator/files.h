#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace simulator {

/// Owns one file descriptor; below zero it owns none.
class FileDescriptor
{
public:
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    FileDescriptor &operator=(FileDescriptor &&) = delete;
    ~FileDescriptor();

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int get() const { return m_descriptor; }

private:
    int m_descriptor;
};

/// Writes all of the bytes. False when the receiver cannot take them.
[[nodiscard]] bool writeFully(int descriptor, std::string_view bytes);

/// The first 64 KiB of a file, far more than any file kept here; nothing when it cannot be read.
[[nodiscard]] std::optional<std::string> readFile(const std::string &path);

/// Puts a file of mode 0600 in place of whatever has the name, in one step. False when nothing was changed.
[[nodiscard]] bool replaceFile(const std::string &path, std::string_view content);

/// Adds to the end of a file, made with mode 0600 when missing, with one write so that runs at the same time
/// do not mix.
[[nodiscard]] bool appendToFile(const std::string &path, std::string_view content);

/// Removes a file. False when there was none to remove.
[[nodiscard]] bool removeFile(const std::string &path);

/// Makes the directory and the missing ones above it, each with mode 0700; one that is there gets that mode.
void makePrivateDirectory(const std::string &path);

} // namespace simulator
