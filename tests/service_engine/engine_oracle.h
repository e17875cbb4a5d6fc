// A second engine, written only from the rules and in another way: it keeps the whole history with its answers, and
// finds every answer by looking back. If the two disagree, one of them is wrong.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/service_engine/engine_input.h"

namespace kvn::service {

struct OracleAnswer {
    bool isKept = false;
    std::vector<Order> orders;
};

class EngineOracle {
public:
    const OracleAnswer& Hear(const EngineInput& input);

    std::uint32_t HeldButtons() const;
    bool IsDrawing() const;
    bool IsEdited() const;
    std::uint64_t PressCount() const;

private:
    // A place in the history; -1: nowhere.
    using Place = int;

    // The inputs and answers, and their consequences for the wheel.
    struct Entry {
        EngineInput input;
        OracleAnswer answer;
        std::int64_t notches = 0;
        bool isInFlight = false;  // the wheel keeps flying
        bool isNewPress = false;  // a press, or the first report of a push
    };

    // A letter for the function of a control: n(atural), h(eld), o(nce), r(epeats), g(esture), - (nothing).
    static char KindOfCode(model::FunctionCode code);
    char KindAt(model::ButtonSlot control, Place at) const;
    bool IsUnusable(model::ButtonSlot control, Place at) const;
    bool HasSameFunction(model::ButtonSlot control, Place before, Place now) const;

    const Entry& At(Place at) const { return history[static_cast<std::size_t>(at)]; }
    Place Now() const { return static_cast<Place>(history.size()) - 1; }
    const EngineSettings& SettingsAt(Place at) const;
    std::int32_t SpeedAt(Place at) const;
    bool SwitchAt(InputKind kind, Place at) const;
    bool IsMouse(Place at, MouseEventKind kind) const;
    bool IsButton(Place at, MouseEventKind kind, int physical) const;
    int PhysicalAt(Place at) const;
    bool IsMissedRelease(Place at, int physical) const;
    bool EndsEverything(Place at) const;
    bool IsWheelOffAt(Place at) const;
    bool IsAskedAt(int physical, Place at) const;
    int EditorsAt(Place at) const;
    bool HasOrder(Place at, OrderKind kind) const;

    Place OpenPress(int physical) const;
    Ticket LiveTicket(Place press) const;
    bool EndsPress(Place press) const;
    Place StrokeUnderWay() const;
    bool GivesUp(Place stroke) const;
    bool IsPressThatGivesUp(Place stroke) const;
    std::string StrokeDrawn(Place stroke) const;

    void AnswerEndings();
    void AnswerStroke();
    void AnswerStrokeDrawn(Place stroke);
    void AnswerPress(bool wasDrawing);
    void AnswerRelease();
    void AnswerTilt();
    void AnswerTiltReport(Place first);
    void AnswerWheel();

    bool BelongsToPush(Place report, Place later) const;
    Place FirstOfPush() const;
    std::int64_t PushSum(Place first, Place last, bool isScroll) const;

    Place FlightUnderWay() const;
    bool StopsFlight(Place flight) const;
    std::int64_t NotchesNow() const;
    int FlicksNow() const;

    Order OrderOf(Place press, OrderKind kind) const;
    std::uint32_t PassedButtons(int butPhysical) const;
    bool IsAbout(Place at, int physical) const;
    void Add(const Order& order) { history.back().answer.orders.push_back(order); }
    void Note(Place press, Cause cause);

    std::vector<Entry> history;
    OracleAnswer injected;
    Ticket beginnings = 0;
};

}  // namespace kvn::service
