// The page's messages and questions to the service.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "model/setting_field.h"
#include "service/page/message_handler.h"

namespace kvn::service {

class PageProtocol : public IMessageHandler {
public:
    struct Outlets {
        std::function<bool()> isMouseKnown;
        std::function<void()> onSettingsChanged;
        std::function<void()> onGestureEditBegin;
        std::function<void()> onGestureEditEnd;
        std::function<void()> onGestureEditForgotten;
        std::function<bool()> isGestureEdited;
        std::function<bool(model::ButtonSlot)> isButtonHeld;  // the physical button
        std::function<bool()> isPageOpen;
    };

    explicit PageProtocol(Outlets chosenOutlets) : outlets(std::move(chosenOutlets)) {}
    virtual ~PageProtocol() = default;

    std::optional<LRESULT> OnMessage(const Message& message) override;

private:
    using Handler = LRESULT (PageProtocol::*)(const Message& message) const;
    struct Row;
    static const Row kRows[];

    LRESULT OnProbe(const Message& message) const;
    LRESULT OnSettingsChanged(const Message& message) const;
    LRESULT OnGestureEditBegin(const Message& message) const;
    LRESULT OnGestureEditEnd(const Message& message) const;
    LRESULT OnIsButtonHeld(const Message& message) const;
    void LookForThePage(HWND window) const;

    Outlets outlets;
};

}  // namespace kvn::service
