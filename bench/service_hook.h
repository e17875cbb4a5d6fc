// The service's hook, and the hands behind it, as threads of this program.
#pragma once

#include "service/input/hook_thread.h"

namespace kvn::bench {

inline constexpr model::FunctionCode kEscape = 17;

struct ServiceHook {
    explicit ServiceHook(model::FunctionCode ofButton4) {
        service::EngineSettings settings;
        settings.controlCount = model::kButtonSlotCount;
        settings.functions[model::ButtonSlot::Button4] = ofButton4;
        hook.Use(settings);
        if (performer.Start()) hook.Start();
    }

    service::HeldList held;
    service::Performer performer{held, {}};
    service::MouseActivity activity;
    service::HookThread hook{performer, activity};
};

}  // namespace kvn::bench
