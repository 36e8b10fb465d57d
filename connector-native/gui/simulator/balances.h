#pragma once

#include <string_view>

namespace simulator {

/// One exchange: its id on the command line, whether its keys come with a passphrase, and an account answer
/// in the form that the exchange itself gives.
struct Exchange
{
    std::string_view id;
    bool needsPassphrase;
    std::string_view balance;
};

/// Nothing for an id that is not known.
[[nodiscard]] const Exchange *exchangeWithId(std::string_view id);

} // namespace simulator
