// The list view of a profile's programs: name, icon and path.
#pragma once

#include <windows.h>

#include <vector>

#include "model/profile.h"
#include "profiles/program_icons.h"

namespace kvn::profiles {

class ProgramList {
public:
    // Makes the columns and shows the icons.
    void SetUp(HWND listView, HINSTANCE module);

    // Shows these programs and no others, none of them selected. While the shell supplies an icon, a message may call
    // this again: then the newer call counts, and the older one stops.
    void Show(const std::vector<model::ApplicationEntry>& programs);
    void Append(const model::ApplicationEntry& program);

    HWND Window() const { return list; }
    int Count() const;
    int SelectedCount() const;

private:
    ProgramIcons icons;
    unsigned fillings = 0;
    HWND list = nullptr;
};

}  // namespace kvn::profiles
