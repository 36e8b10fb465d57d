#include "commands.h"
#include "faults.h"
#include "settings.h"
#include "statestore.h"

#include <string_view>
#include <vector>

using namespace simulator;

int main(int argc, char *argv[])
{
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const StateStore store(StateStore::configuredDirectory());
    store.recordCall(arguments);

    const Settings settings(store.read("faults"));
    const Faults faults = faultsFor(arguments.empty() ? std::string_view() : arguments.front(), settings);
    delay(faults);
    return deliver(answerTo({arguments, store, settings}), faults);
}
