// Passes a length that nobody can know before the program runs, which a hardened build has to check.

#include <array>
#include <unistd.h>

int main(int argc, char **)
{
    std::array<char, 8> buffer{};
    return read(STDIN_FILENO, buffer.data(), static_cast<std::size_t>(argc)) < 0 ? 1 : buffer.front();
}
