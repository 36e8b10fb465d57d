#include "commands.h"

#include "bindingcommands.h"
#include "credentialcommands.h"
#include "updatecommands.h"

#include <algorithm>
#include <array>
#include <string>

namespace simulator {

namespace {

    constexpr int usageExitCode = 2;

    struct Command
    {
        std::string_view word;
        std::string_view parameters;
        std::size_t fewest;
        std::size_t most;
        Answer (*answer)(const Call &call);
    };

    constexpr std::array commands = {
        Command{"status", "", 0, 0, status},
        Command{"server-health", "", 0, 0, serverHealth},
        Command{"bind-status", "", 0, 0, bindStatus},
        Command{"claim-token", " TOKEN", 1, 1, claimToken},
        Command{"disconnect-binding", "", 0, 0, disconnectBinding},
        Command{"update-check", "", 0, 0, updateCheck},
        Command{"update-download", "", 0, 0, updateDownload},
        Command{"update-apply", "", 0, 0, updateApply},
        Command{"load-credentials", " EXCHANGE", 1, 1, loadCredentials},
        Command{"validate", " EXCHANGE KEY SECRET [PASSPHRASE]", 3, 4, validate},
        Command{"delete-credentials", " EXCHANGE", 1, 1, deleteCredentials},
        Command{"balance", " EXCHANGE", 1, 1, balance},
    };

    [[nodiscard]] Answer usage()
    {
        std::string text = "usage:\n";
        for (const Command &command : commands) {
            text.append("  brindlecove-connector ").append(command.word);
            text.append(command.parameters).append("\n");
        }
        return {{}, text, usageExitCode};
    }

} // namespace

Answer answerTo(const Call &commandLine)
{
    if (commandLine.arguments.empty())
        return usage();
    const auto command = std::ranges::find(commands, commandLine.arguments.front(), &Command::word);
    const auto parameters = commandLine.arguments.subspan(1);
    if (command == commands.end() || parameters.size() < command->fewest || parameters.size() > command->most)
        return usage();
    return command->answer({parameters, commandLine.store, commandLine.settings});
}

} // namespace simulator
