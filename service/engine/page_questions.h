// The requests of the page's gesture editor: for a while it gets the presses of some buttons.
#pragma once

#include <array>
#include <cstdint>

#include "service/engine/press.h"

namespace kvn::service {

class PageQuestions {
public:
    void BeginEdit() { ++editors; }
    // An end without a beginning is ignored: it came too late.
    void EndEdit() { editors -= editors > 0 ? 1 : 0; }
    void ForgetEdits() { editors = 0; }
    bool IsEditing() const { return editors > 0; }

    void Ask(std::size_t physicalButton, std::uint32_t time);
    // Forgets questions from 500 ms ago or more. Call it with each event, before the clock wraps around.
    void Expire(std::uint32_t time);
    bool IsAsked(std::size_t physicalButton) const { return questions[physicalButton].isOpen; }

private:
    struct Question {
        bool isOpen = false;
        std::uint32_t time = 0;
    };

    std::uint32_t editors = 0;
    std::array<Question, kButtonCount> questions{};
};

}  // namespace kvn::service
