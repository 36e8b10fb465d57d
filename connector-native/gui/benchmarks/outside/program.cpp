#include "outside/program.h"

#include "measure/processstate.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace std::chrono_literals;

Program::Program(const std::string &path)
{
    std::string word = path;
    const std::array<char *, 2> words{word.data(), nullptr};
    if (posix_spawn(&m_process, path.c_str(), nullptr, nullptr, words.data(), environ) != 0) {
        std::cerr << path << " cannot be run\n";
        std::exit(EXIT_FAILURE);
    }
}

Program::~Program()
{
    kill(m_process, SIGTERM);
    waitpid(m_process, nullptr, 0);
}

void Program::waitUntilSettled() const
{
    constexpr int quietRounds = 10;
    long before = -1;
    for (int quiet = 0; quiet < quietRounds;) {
        std::this_thread::sleep_for(100ms);
        const long now = processorTicks(m_process);
        quiet = now == before ? quiet + 1 : 0;
        before = now;
    }
}
