#include "tests/service_end_to_end/hands.h"

#include <array>
#include <cstdint>
#include <cstdlib>

#include "tests/end_to_end/story_waiting.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::StoryError;

// X numbers of the controls, in the order of ButtonSlot.
constexpr std::array<int, model::kButtonSlotCount> kNumbers{1, 3, 2, 8, 9, 6, 7};

std::string NumberOf(model::ButtonSlot control) {
    return std::to_string(kNumbers[static_cast<std::size_t>(control)]);
}

bool IsTilt(model::ButtonSlot control) {
    return control == model::ButtonSlot::TiltLeft || control == model::ButtonSlot::TiltRight;
}

// Wine keeps the number of the X window there.
std::string DisplayNumberOf(HWND window) {
    return std::to_string(reinterpret_cast<std::uintptr_t>(GetPropW(window, L"__wine_x11_whole_window")));
}

}  // namespace

Hands::UniqueSocket Hands::Connect() {
    const char* const port = std::getenv("KVN_X_INPUT_PORT");
    if (port == nullptr) throw StoryError("run service_end_to_end_test.sh, which starts the mouse");
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
        throw StoryError("the program that moves the mouse does not answer");
    }
    return made;
}

Hands::Hands() : connection(Connect()) {}

void Hands::Press(model::ButtonSlot control) const {
    Order((IsTilt(control) ? "click " : "press ") + NumberOf(control));
}

void Hands::Release(model::ButtonSlot control) const {
    if (!IsTilt(control)) Order("release " + NumberOf(control));
}

void Hands::Click(model::ButtonSlot control) const {
    Press(control);
    Release(control);
}

void Hands::MoveTo(POINT place) const {
    Order("move " + std::to_string(place.x) + ' ' + std::to_string(place.y));
}

void Hands::PressKey(const std::string& name) const {
    HoldKey(name);
    LetGoOfKey(name);
}

void Hands::BringToFront(HWND window) const {
    // Wine alone would not move the keyboard: it asks the display with the time of an old message. What another window
    // was sent before may take the front back once more.
    constexpr int kSettledLooks = 3;
    int looks = 0;
    end_to_end::WaitFor("the window in front", [&] {
        if (GetForegroundWindow() != window) SetForegroundWindow(window);
        if (looks == 0 && Ask("focus " + DisplayNumberOf(window)) != "ok") return false;
        looks = GetForegroundWindow() == window ? looks + 1 : 0;
        return looks > kSettledLooks;
    });
}

bool Hands::IsPointerOver(HWND window) const {
    return Ask("under") == DisplayNumberOf(window);
}

std::string Hands::PixelOrder(const RECT& place) {
    return "pixels " + std::to_string(place.left) + ' ' + std::to_string(place.top) + ' ' +
           std::to_string(place.right - place.left) + ' ' + std::to_string(place.bottom - place.top);
}

void Hands::Order(const std::string& line) const {
    const std::string answer = Ask(line);
    if (answer != "ok") throw StoryError(line + ": " + answer);
}

std::string Hands::Ask(const std::string& line) const {
    const std::string ended = line + '\n';
    send(connection.Get(), ended.data(), static_cast<int>(ended.size()), 0);
    std::string answer;
    std::array<char, 65536> part{};
    while (answer.empty() || answer.back() != '\n') {
        const int length = recv(connection.Get(), part.data(), static_cast<int>(part.size()), 0);
        if (length <= 0) throw StoryError("the program that moves the mouse has gone");
        answer.append(part.data(), static_cast<std::size_t>(length));
    }
    answer.pop_back();
    return answer;
}

}  // namespace kvn::service_end_to_end
