// The command line of the service's double.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "model/device_record.h"

namespace kvn::service_double {

// A five-button mouse with a tilting wheel.
model::DeviceRecord SampleMouse();

enum class Command { Serve, SendSettings, Quit, ShowHelp };

struct Options {
    Command command = Command::Serve;

    bool showWindow = false;
    bool publish = true;
    bool removeAtEnd = false;
    model::DeviceRecord mouse = SampleMouse();
    std::intptr_t probeReply = 1;
    // Successive replies to "is this button held"; the last one repeats. Empty: the real buttons count.
    std::vector<std::intptr_t> heldReplies;
    std::wstring logFile;
    std::wstring readyFile;

    // For Command::SendSettings. Any number of values may be sent; the page expects eleven.
    std::vector<std::int32_t> settings;
    std::uint64_t page = 0;  // window handle; 0: the service looks for the page itself
};

// Thrown by ParseOptions; the text is for the user.
class OptionError {
public:
    explicit OptionError(std::wstring explanation) : text(std::move(explanation)) {}
    const std::wstring& Text() const { return text; }

private:
    std::wstring text;
};

// `arguments` does not include the program's name.
Options ParseOptions(const std::vector<std::wstring>& arguments);

std::wstring Usage();

}  // namespace kvn::service_double
