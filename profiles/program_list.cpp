#include "profiles/program_list.h"

#include "platform/list_view.h"

namespace kvn::profiles {
namespace {

enum Column { kNameColumn, kLocationColumn };

// Widths in pixels.
constexpr int kNameWidth = 150;
constexpr int kLocationWidth = 230;

}  // namespace

void ProgramList::SetUp(HWND listView, const std::wstring& nameTitle, const std::wstring& locationTitle) {
    list = listView;
    platform::AddListColumn(list, kNameColumn, nameTitle, kNameWidth);
    platform::AddListColumn(list, kLocationColumn, locationTitle, kLocationWidth);
    platform::SelectFullRows(list);
    icons.AttachTo(list);
}

void ProgramList::Show(const std::vector<model::ApplicationEntry>& programs) const {
    const platform::PausedRedraw pause(list);
    platform::ClearListRows(list);
    for (const model::ApplicationEntry& program : programs) Append(program);
}

void ProgramList::Append(const model::ApplicationEntry& program) const {
    const int row = platform::ListRowCount(list);
    platform::InsertListRow(list, row, program.name, icons.IndexFor(program.path));
    platform::SetListText(list, row, kLocationColumn, program.path);
}

int ProgramList::Count() const {
    return platform::ListRowCount(list);
}

int ProgramList::SelectedCount() const {
    return platform::SelectedRowCount(list);
}

}  // namespace kvn::profiles
