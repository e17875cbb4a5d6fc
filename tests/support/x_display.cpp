#include "tests/support/x_display.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

namespace kvn::test {

XDisplay::UniqueSocket XDisplay::Connect() {
    const char* const port = std::getenv("KVN_X_INPUT_PORT");
    if (port == nullptr) throw std::runtime_error("no mouse: start this program with its script");
    WSADATA data{};
    WSAStartup(MAKEWORD(2, 2), &data);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<u_short>(std::atoi(port)));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    UniqueSocket made(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    const BOOL atOnce = TRUE;
    setsockopt(made.Get(), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&atOnce), sizeof atOnce);
    if (connect(made.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        throw std::runtime_error("the program that moves the mouse does not answer");
    }
    return made;
}

XDisplay::XDisplay() : connection(Connect()) {}

std::string XDisplay::Ask(const std::string& line) const {
    const std::string ended = line + '\n';
    send(connection.Get(), ended.data(), static_cast<int>(ended.size()), 0);
    std::string answer;
    std::array<char, 65536> part{};
    while (answer.empty() || answer.back() != '\n') {
        const int length = recv(connection.Get(), part.data(), static_cast<int>(part.size()), 0);
        if (length <= 0) throw std::runtime_error("the program that moves the mouse has gone");
        answer.append(part.data(), static_cast<std::size_t>(length));
    }
    answer.pop_back();
    return answer;
}

}  // namespace kvn::test
