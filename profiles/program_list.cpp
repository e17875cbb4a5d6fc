#include "profiles/program_list.h"

#include <array>

#include "platform/list_view.h"
#include "platform/paused_redraw.h"
#include "resources/resource.h"

namespace kvn::profiles {
namespace {

constexpr std::array<platform::ListColumn, 2> kColumns{{{IDS_COLUMN_FILE_NAME, 150}, {IDS_COLUMN_LOCATION, 230}}};

}  // namespace

void ProgramList::SetUp(HWND listView, HINSTANCE module) {
    list = listView;
    platform::AddListColumns(list, module, kColumns);
    platform::SelectFullRows(list);
    icons.AttachTo(list);
}

void ProgramList::Show(const std::vector<model::ApplicationEntry>& programs) {
    const platform::PausedRedraw pause(list);
    const unsigned filling = ++fillings;
    platform::ClearListRows(list);
    for (const model::ApplicationEntry& program : programs) {
        Append(program);
        if (filling != fillings) return;
    }
}

void ProgramList::Append(const model::ApplicationEntry& program) {
    const unsigned filling = fillings;
    const int icon = icons.Append(program.path);
    if (filling == fillings) InsertProgramRow(list, platform::ListRowCount(list), program, icon);
}

int ProgramList::Count() const {
    return platform::ListRowCount(list);
}

int ProgramList::SelectedCount() const {
    return platform::SelectedRowCount(list);
}

}  // namespace kvn::profiles
