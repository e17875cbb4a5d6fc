// The X display below Wine: x_input.py presses its buttons and keys, and nothing marks them as made by a program.
#pragma once

#include <winsock2.h>

#include <string>

#include "platform/unique_resource.h"

namespace kvn::test {

class XDisplay {
public:
    // Connects to the x_input.py that start_hands of own_windows.sh has started, which releases everything when the
    // connection ends. Throws std::runtime_error if it is not there.
    XDisplay();

    // The answer to a line that x_input.py describes. Throws std::runtime_error if the connection has ended.
    std::string Ask(const std::string& line) const;

private:
    struct SocketTraits {
        using Handle = SOCKET;
        static constexpr Handle kEmpty = INVALID_SOCKET;
        static void Close(Handle opened) { closesocket(opened); }
    };
    using UniqueSocket = platform::UniqueResource<SocketTraits>;

    static UniqueSocket Connect();
    UniqueSocket connection;
};

}  // namespace kvn::test
