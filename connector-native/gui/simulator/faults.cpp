#include "faults.h"

#include "files.h"
#include "settings.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <thread>

#include <sys/resource.h>
#include <unistd.h>

namespace simulator {

namespace {

    constexpr unsigned long long largestExitCode = 255;
    constexpr unsigned long long largestSignal = 64;
    constexpr unsigned long long longestDelay = 24ULL * 60 * 60 * 1000;
    constexpr std::string_view floodLine =
        "flood: a line of sixty-four bytes, printed over and over again\n\n";
    static_assert(floodLine.size() == 64);
    constexpr std::size_t floodLinesPerWrite = 1024;

    /// A lone continuation byte, an overlong form, half of a surrogate pair and a value beyond Unicode.
    constexpr std::array<std::string_view, 4> illFormedLines = {"\x80\n", "\xC0\xAF\n", "\xED\xA0\x80\n",
                                                                "\xF5\x80\x80\x80\n"};
    constexpr std::string_view truncatedSequence = "\xE2\x82";

    [[nodiscard]] std::optional<unsigned long long> numberUpTo(unsigned long long largest,
                                                               const Settings &settings,
                                                               std::string_view name)
    {
        const auto number = settings.number(name);
        return number && *number <= largest ? number : std::nullopt;
    }

    /// The ill-formed bytes get lines of their own, so that a reader still finds every line of the answer.
    [[nodiscard]] std::string withInvalidUtf8(std::string_view text)
    {
        std::string mixed;
        std::size_t next = 0;
        for (const char character : text) {
            mixed += character;
            if (character == '\n')
                mixed += illFormedLines.at(next++ % illFormedLines.size());
        }
        return mixed.append(truncatedSequence);
    }

    [[nodiscard]] bool printFlood(unsigned long long bytes)
    {
        std::string block;
        for (std::size_t line = 0; line < floodLinesPerWrite; ++line)
            block += floodLine;
        while (bytes > 0) {
            const auto count = std::min<unsigned long long>(bytes, block.size());
            if (!writeFully(STDOUT_FILENO, std::string_view(block).substr(0, count)))
                return false;
            bytes -= count;
        }
        return true;
    }

    [[nodiscard]] bool print(const Answer &answer, const Faults &faults)
    {
        if (faults.isSilent)
            return true;
        const unsigned divisor = faults.signal == 0 ? 1 : 2;
        if (faults.floodBytes > 0)
            return printFlood(faults.floodBytes / divisor);
        const std::string text = faults.hasInvalidUtf8 ? withInvalidUtf8(answer.output) : answer.output;
        return writeFully(STDOUT_FILENO, std::string_view(text).substr(0, text.size() / divisor))
            && writeFully(STDERR_FILENO, answer.errors);
    }

    void raiseSignal(int signal)
    {
        // A deliberate crash leaves no core file behind.
        const rlimit noCore = {0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        // Dispositions and the mask are inherited, and a signal held back would not end the run.
        static_cast<void>(std::signal(signal, SIG_DFL));
        sigset_t unblocked;
        sigemptyset(&unblocked);
        sigaddset(&unblocked, signal);
        ::sigprocmask(SIG_UNBLOCK, &unblocked, nullptr);
        static_cast<void>(std::raise(signal));
    }

} // namespace

Faults faultsFor(std::string_view commandWord, const Settings &settings)
{
    const std::string only = settings.text("ONLY");
    if (!only.empty() && only != commandWord)
        return {};
    const auto exitCode = numberUpTo(largestExitCode, settings, "EXIT_CODE");
    return {
        .delay = std::chrono::milliseconds(numberUpTo(longestDelay, settings, "DELAY_MS").value_or(0)),
        .exitCode = exitCode ? std::optional(static_cast<int>(*exitCode)) : std::nullopt,
        .signal = static_cast<int>(numberUpTo(largestSignal, settings, "SIGNAL").value_or(0)),
        .floodBytes = settings.number("FLOOD_BYTES").value_or(0),
        .hasInvalidUtf8 = settings.isOn("INVALID_UTF8"),
        .isSilent = settings.isOn("SILENT"),
    };
}

void delay(const Faults &faults)
{
    if (faults.delay.count() > 0)
        std::this_thread::sleep_for(faults.delay);
}

int deliver(const Answer &answer, const Faults &faults)
{
    const bool printed = print(answer, faults);
    if (faults.signal != 0)
        raiseSignal(faults.signal);
    return faults.exitCode.value_or(printed ? answer.exitCode : 1);
}

} // namespace simulator
