// What Windows' libraries alone cost a program: loads those that the arguments name, and does nothing for a minute.
#include <windows.h>

int wmain(int count, wchar_t** arguments) {
    constexpr DWORD kLife = 60'000;
    for (int index = 1; index < count; ++index) LoadLibraryW(arguments[index]);
    Sleep(kLife);
    return 0;
}
