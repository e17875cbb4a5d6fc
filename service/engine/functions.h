// The service's action for each function code: one table, for the engine that decides and the threads that act.
#pragma once

#include <array>
#include <cstdint>

#include "model/function_catalogue.h"
#include "model/key_names.h"
#include "model/setting_field.h"

namespace kvn::service {

enum class FunctionKind : std::uint8_t {
    Natural,  // what Windows does with the control
    Held,     // begins at the press, ends at the release
    Once,     // acts at the press
    Repeats,  // a key that is held: it repeats until the release
    Gesture,  // draws a stroke
    Nothing,  // press and release are kept, and do nothing
};

// How a function is carried out.
enum class Action : std::uint8_t {
    None,
    PressButton,     // `button`
    PressKeys,       // `keys`, in their order; Once: down and up again in the opposite order
    SwitchPrograms,  // Alt down, Tab down and up; Alt up at the end
    CloseWindow,
    MaximizeWindow,  // or restores it
    MinimizeWindow,
    DoubleClick,
    Open,  // `program`
    ScrollLeft,
    ScrollRight,
    PressChosenKeys,  // the control's own keys
};

// The targets of the action Open.
enum class Program : std::uint8_t { None, Computer, Browser, Explorer, ControlPanel, Printers, Magnifier };

struct FunctionRow {
    model::FunctionCode code = model::kFunctionNone;
    FunctionKind kind = FunctionKind::Natural;
    Action action = Action::None;
    std::array<model::KeyCode, 3> keys{model::kNoKey, model::kNoKey, model::kNoKey};
    model::ButtonSlot button =
        model::ButtonSlot::Left;  // as the user sees it: Left is the primary one, also when the buttons are swapped
    Program program = Program::None;
};

// The row of a function; nullptr for 0 and for codes that the catalogue lacks, which are natural.
const FunctionRow* FindFunction(model::FunctionCode code);

// Natural for codes without a row.
FunctionKind KindOf(model::FunctionCode code);

// The function that equals what Windows does with this control (a tilt's only at horizontal speed 4).
constexpr model::FunctionCode NaturalFunctionOf(model::ButtonSlot control) {
    return model::DefaultFunctionOf(control);
}

}  // namespace kvn::service
