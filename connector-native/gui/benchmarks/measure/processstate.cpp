#include "measure/processstate.h"

#include <filesystem>
#include <fstream>
#include <limits>
#include <string>

namespace {

std::filesystem::path directoryOf(pid_t process)
{
    return std::filesystem::path("/proc") / std::to_string(process);
}

// The sum over all lines "name: number ..." of a file that begin with the name.
long sumOf(const std::filesystem::path &path, const std::string &name)
{
    std::ifstream file(path);
    long sum = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.compare(0, name.size(), name) == 0) {
            sum += std::stol(line.substr(name.size()));
        }
    }
    return sum;
}

} // namespace

double proportionalMemory(pid_t process)
{
    return static_cast<double>(sumOf(directoryOf(process) / "smaps_rollup", "Pss:"));
}

long wakeUps(pid_t process)
{
    long sum = 0;
    std::error_code gone;
    for (const auto &thread : std::filesystem::directory_iterator(directoryOf(process) / "task", gone)) {
        sum += sumOf(thread.path() / "status", "voluntary_ctxt_switches:");
        sum += sumOf(thread.path() / "status", "nonvoluntary_ctxt_switches:");
    }
    return sum;
}

long processorTicks(pid_t process)
{
    std::ifstream file(directoryOf(process) / "stat");
    // The name of the program, in brackets, may contain anything; the times are the 12th and 13th field
    // after.
    file.ignore(std::numeric_limits<std::streamsize>::max(), ')');
    std::string skipped;
    for (int field = 0; field < 11; ++field) {
        file >> skipped;
    }
    long user = 0;
    long system = 0;
    file >> user >> system;
    return user + system;
}
