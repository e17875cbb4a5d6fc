#include "tests/service_double/options.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cwchar>
#include <limits>
#include <string_view>

namespace kvn::service_double {
namespace {

constexpr std::size_t kLongestSettings = 64;

// Decimal, or hexadecimal after "0x". A leading zero does not mean octal, as it would to a C compiler.
std::int64_t ParseNumber(const std::wstring& text, std::int64_t lowest, std::int64_t highest) {
    const bool hexadecimal = text.find(L"0x") != std::wstring::npos || text.find(L"0X") != std::wstring::npos;
    wchar_t* end = nullptr;
    errno = 0;
    const long long number = std::wcstoll(text.c_str(), &end, hexadecimal ? 16 : 10);
    if (text.empty() || *end != L'\0' || errno == ERANGE) throw OptionError(L"\"" + text + L"\" is not a number");
    if (number < lowest || number > highest) {
        throw OptionError(text + L" is not within " + std::to_wstring(lowest) + L" to " + std::to_wstring(highest));
    }
    return number;
}

template <typename Number>
Number ParseNumber(const std::wstring& text) {
    return static_cast<Number>(
        ParseNumber(text, std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max()));
}

template <typename Number>
std::vector<Number> ParseNumbers(const std::wstring& text) {
    std::vector<Number> numbers;
    std::size_t start = 0;
    for (std::size_t comma = 0; comma != std::wstring::npos; start = comma + 1) {
        comma = text.find(L',', start);
        numbers.push_back(ParseNumber<Number>(text.substr(start, comma == std::wstring::npos ? comma : comma - start)));
    }
    return numbers;
}

std::wstring ParseImage(const std::wstring& text) {
    if (text.size() > model::kMaxMouseImageLength) throw OptionError(L"the picture's name is too long");
    return text;
}

std::vector<std::int32_t> ParseSettings(const std::wstring& text) {
    std::vector<std::int32_t> settings = ParseNumbers<std::int32_t>(text);
    if (settings.size() > kLongestSettings) throw OptionError(L"too many settings");
    return settings;
}

struct OptionRow {
    std::wstring_view name;
    std::wstring_view valueName;  // empty: the option takes no value
    std::wstring_view help;
    void (*apply)(Options& options, const std::wstring& value);
};

using Text = const std::wstring&;

constexpr std::array kOptionRows{
    OptionRow{L"--vid", L"N", L"vendor id of the mouse, decimal or 0x hexadecimal (0x1234)",
              [](Options& o, Text value) { o.mouse.vid = ParseNumber<std::uint16_t>(value); }},
    OptionRow{L"--pid", L"N", L"product id of the mouse (0x5678)",
              [](Options& o, Text value) { o.mouse.pid = ParseNumber<std::uint16_t>(value); }},
    OptionRow{L"--tilt", L"0|1", L"whether its wheel tilts (1)",
              [](Options& o, Text value) { o.mouse.hasTilt = static_cast<std::uint32_t>(ParseNumber(value, 0, 1)); }},
    OptionRow{L"--buttons", L"0..7", L"how many buttons it has, tilting to a side counted as one (7)",
              [](Options& o, Text value) {
                  o.mouse.buttonCount = static_cast<std::int32_t>(ParseNumber(value, 0, model::kMaxButtonCount));
              }},
    OptionRow{L"--image", L"NAME", L"name of its pictures (KvnSample)",
              [](Options& o, Text value) { o.mouse.mouseImage = ParseImage(value); }},
    OptionRow{L"--flag", L"N", L"its flags; bit 0 means that it has no flying scroll (0)",
              [](Options& o, Text value) { o.mouse.mouseFlag = ParseNumber<std::uint32_t>(value); }},
    OptionRow{L"--no-publish", L"", L"leave the registry as it is", [](Options& o, Text) { o.publish = false; }},
    OptionRow{L"--remove", L"", L"remove the published values at the end",
              [](Options& o, Text) { o.removeAtEnd = true; }},
    OptionRow{L"--probe-reply", L"N", L"the answer to the page's probe; -1 refuses (1)",
              [](Options& o, Text value) { o.probeReply = ParseNumber<std::intptr_t>(value); }},
    OptionRow{L"--held", L"N,N,...", L"successive answers to \"is this button held\", instead of the real buttons",
              [](Options& o, Text value) { o.heldReplies = ParseNumbers<std::intptr_t>(value); }},
    OptionRow{L"--show", L"", L"show a window with the log", [](Options& o, Text) { o.showWindow = true; }},
    OptionRow{L"--log", L"FILE", L"append the log to this file (UTF-8)",
              [](Options& o, Text value) { o.logFile = value; }},
    OptionRow{L"--ready-file", L"FILE", L"made when the service is ready, removed when it ends",
              [](Options& o, Text value) { o.readyFile = value; }},
    OptionRow{L"--send-settings", L"N,N,...",
              L"have the running service send these initial settings to the page: left, right, center, button 4, "
              L"button 5, horizontal scroll speed, tilt left, tilt right, flying-scroll speed, revolution speed, "
              L"number of revolutions",
              [](Options& o, Text value) {
                  o.command = Command::SendSettings;
                  o.settings = ParseSettings(value);
              }},
    OptionRow{L"--to-page", L"HWND", L"the page's window, when it is not to be looked for",
              [](Options& o, Text value) { o.page = static_cast<std::uint64_t>(ParseNumber<std::int64_t>(value)); }},
    OptionRow{L"--quit", L"", L"end the running service", [](Options& o, Text) { o.command = Command::Quit; }},
    OptionRow{L"--help", L"", L"show this text", [](Options& o, Text) { o.command = Command::ShowHelp; }},
};

const OptionRow& FindRow(const std::wstring& name) {
    const auto row = std::ranges::find(kOptionRows, name, &OptionRow::name);
    if (row == kOptionRows.end()) throw OptionError(L"unknown option " + name);
    return *row;
}

}  // namespace

model::DeviceRecord SampleMouse() {
    return {.hasTilt = 1, .buttonCount = 7, .vid = 0x1234, .pid = 0x5678, .mouseImage = L"KvnSample", .mouseFlag = 0};
}

Options ParseOptions(const std::vector<std::wstring>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::wstring& name = arguments[i];
        const OptionRow& row = FindRow(name);
        const bool takesValue = !row.valueName.empty();
        if (takesValue && i + 1 == arguments.size()) throw OptionError(name + L" needs a value");
        try {
            row.apply(options, takesValue ? arguments[++i] : name);
        } catch (const OptionError& error) {
            throw OptionError(name + L": " + error.Text());
        }
    }
    return options;
}

std::wstring Usage() {
    std::wstring text = L"KvnMouseApl: stands in for the resident mouse service.\n\n";
    for (const OptionRow& row : kOptionRows) {
        std::wstring option{row.name};
        if (!row.valueName.empty()) option.append(L" ").append(row.valueName);
        text.append(L"  ").append(option).append(L"\n      ").append(row.help).append(L"\n");
    }
    return text;
}

}  // namespace kvn::service_double
