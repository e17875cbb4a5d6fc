#include "service/driver/press_log.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <mutex>

#include "model/enum_array.h"
#include "model/stored_stroke.h"
#include "service/resources/service_texts.h"

namespace kvn::service {
namespace {

using model::StrokeDirection;

constexpr model::EnumArray<model::ButtonSlot, const wchar_t*, model::kButtonSlotCount> kControlNames{
    {L"left", L"right", L"wheel", L"button4", L"button5", L"tilt-left", L"tilt-right"}};

struct NoteRow {
    const wchar_t* beforeStroke;  // only gestures and unknown strokes have one
    const wchar_t* beforeDone;    // null: the action is not written
};

// In the order of Cause.
constexpr model::EnumArray<Cause, NoteRow, 7> kNotes{{{
    {L"", L""},
    {L"gesture ", L": "},
    {L"no gesture ", nullptr},
    {L"no stroke: ", L""},
    {L"stroke given up", nullptr},
    {L"gives the stroke up", nullptr},
    {L"kept for the settings page", nullptr},
}}};

std::wstring StrokeText(const Order& order) {
    std::wstring text;
    for (const StrokeDirection direction : order.stroke) {
        if (const auto letter = StoredLetterOf(direction)) text += *letter;
    }
    return text;
}

std::wstring WhatWasDone(const Order& order, const std::wstring& done) {
    const NoteRow& row = kNotes[order.cause];
    return row.beforeStroke + StrokeText(order) + (row.beforeDone == nullptr ? L"" : row.beforeDone + done);
}

std::wstring TimeText(const SYSTEMTIME& time) {
    std::array<wchar_t, 32> text{};
    const int length =
        std::swprintf(text.data(), text.size(), L"%04u-%02u-%02u %02u:%02u:%02u.%03u", time.wYear, time.wMonth,
                      time.wDay, time.wHour, time.wMinute, time.wSecond, time.wMilliseconds);
    return {text.data(), static_cast<std::size_t>(std::max(length, 0))};
}

}  // namespace

std::wstring LogLine(const SYSTEMTIME& time, const Order& order, const std::wstring& profile,
                     const std::wstring& done) {
    return TimeText(time) + L'\t' + kControlNames[order.control] + L'\t' + std::to_wstring(order.controlFunction) +
           L'\t' + OnOneLine(profile) + L'\t' + OnOneLine(WhatWasDone(order, done)) + L"\r\n";
}

void PressLog::WriteTo(const std::wstring& path) {
    const std::lock_guard lock(section);
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    file = platform::UniqueFile(path.empty() ? INVALID_HANDLE_VALUE
                                             : CreateFileW(path.c_str(), FILE_APPEND_DATA, kShareAll, nullptr,
                                                           OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void PressLog::Write(const Order& order, const std::wstring& profile, const std::wstring& done) {
    const std::lock_guard lock(section);
    if (!file) return;
    SYSTEMTIME now{};
    GetLocalTime(&now);
    const std::string line = Utf8(LogLine(now, order, profile, done));
    DWORD written = 0;
    WriteFile(file.Get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

bool PressLog::IsOpen() const {
    const std::lock_guard lock(section);
    return static_cast<bool>(file);
}

bool PressLog::CanWriteTo(const std::wstring& path) {
    PressLog tried;
    tried.WriteTo(path);
    return tried.IsOpen();
}

}  // namespace kvn::service
