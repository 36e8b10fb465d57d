// Answers every command at once with text that keeps the polling going, and needs next to nothing to start.

#include <string_view>
#include <unistd.h>

int main()
{
    constexpr std::string_view answer = "{\"reachable\":true,\"bind\":\"pending_signature\"}\n";
    return write(STDOUT_FILENO, answer.data(), answer.size()) < 0 ? 1 : 0;
}
