// Takes the place of the taskbar, and records what this program asks it to show.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

#include "tests/support/replaced_import.h"

namespace kvn::service_test {

class Taskbar {
public:
    struct Request {
        DWORD what = 0;
        NOTIFYICONDATAW data{};
    };

    Taskbar()
        : notify(GetModuleHandleW(nullptr), [this](DWORD what, NOTIFYICONDATAW* data) -> BOOL {
              requests.push_back({what, *data});
              return isThere ? TRUE : FALSE;
          }) {}

    bool IsInPlace() const { return notify.IsInPlace(); }

    bool isThere = true;  // otherwise all requests fail

    const std::vector<Request>& Requests() const { return requests; }
    const NOTIFYICONDATAW& Last() const { return requests.back().data; }
    std::vector<DWORD> Kinds() const {
        std::vector<DWORD> kinds;
        for (const Request& request : requests) kinds.push_back(request.what);
        return kinds;
    }
    // The texts of the balloons, in their order.
    std::vector<std::wstring> Balloons() const {
        std::vector<std::wstring> texts;
        for (const Request& request : requests) {
            if ((request.data.uFlags & NIF_INFO) != 0) texts.emplace_back(request.data.szInfo);
        }
        return texts;
    }
    // NIIF_INFO, NIIF_WARNING or NIIF_ERROR of the last one.
    DWORD KindOfBalloon() const {
        DWORD kind = NIIF_NONE;
        for (const Request& request : requests) {
            if ((request.data.uFlags & NIF_INFO) != 0) kind = request.data.dwInfoFlags;
        }
        return kind;
    }

private:
    std::vector<Request> requests;
    test::ReplacedImport<"Shell_NotifyIconW", BOOL(DWORD, NOTIFYICONDATAW*)> notify;
};

}  // namespace kvn::service_test
