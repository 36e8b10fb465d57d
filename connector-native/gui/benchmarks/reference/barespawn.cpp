#include <array>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <iostream>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// The least that runs a child and has its output: nothing is checked, decoded or kept.
void runBare(char *const *words)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        std::exit(EXIT_FAILURE);
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
    pid_t child = 0;
    if (posix_spawn(&child, words[0], &actions, nullptr, words, environ) != 0) {
        std::exit(EXIT_FAILURE);
    }
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    waitpid(child, nullptr, 0);
    std::array<char, 1 << 14> chunk{};
    while (read(ends[0], chunk.data(), chunk.size()) > 0) { }
    close(ends[0]);
}

} // namespace

// barespawn PROGRAM ARGUMENT...: runs it once for each line of standard input, and answers with a line that
// says how many milliseconds that took.
int main(int argc, char *argv[])
{
    if (argc < 2) {
        return EXIT_FAILURE;
    }
    for (std::string request; std::getline(std::cin, request);) {
        const auto start = std::chrono::steady_clock::now();
        runBare(argv + 1);
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
        std::cout << taken.count() << std::endl;
    }
    return EXIT_SUCCESS;
}
