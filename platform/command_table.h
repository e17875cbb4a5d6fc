// Commands of controls, as a table of ids and the member functions that carry them out.
#pragma once

#include <windows.h>

#include <algorithm>
#include <iterator>

namespace kvn::platform {

// Details are further arguments of the member function, besides the control.
template <typename Owner, typename... Details>
struct CommandRow {
    UINT control;
    void (Owner::*handler)(Details...);
};

// Carries out the command of the control's row; false if the table has none.
template <typename Owner, typename... Details, std::size_t kRows>
bool CarryOutCommand(Owner& owner, const CommandRow<Owner, Details...> (&table)[kRows], UINT control,
                     Details... details) {
    const auto row = std::ranges::find(table, control, &CommandRow<Owner, Details...>::control);
    if (row == std::end(table)) return false;
    (owner.*row->handler)(details...);
    return true;
}

}  // namespace kvn::platform
