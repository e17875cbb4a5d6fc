// Carries out the engine's orders: a worker does the beginnings, in order, and a keeper everything that must not wait
// for it (ends, repeats, scrolling and flying notches, the trail). All input that the service makes comes from here.
#pragma once

#include <cstdint>
#include <memory>

#include "service/engine/orders.h"
#include "service/input/held_list.h"
#include "service/input/performer_outlets.h"

namespace kvn::service {

class Performer {
public:
    using Outlets = PerformerOutlets;

    // The list is borrowed and must outlive the performer.
    Performer(HeldList& heldList, Outlets chosenOutlets);
    ~Performer();  // ends everything that is held; waits at most a second for a worker that hangs
    Performer(const Performer&) = delete;
    Performer& operator=(const Performer&) = delete;

    [[nodiscard]] bool Start();

    // The rest is for the hook thread: it allocates no memory, takes no lock, and never waits. False while
    // there may be no room for the orders of one more event: then no press should be kept.
    bool HasRoom() const;
    void Take(const Orders& orders);

    // The number of functions carried out so far.
    std::uint64_t ActionCount() const;

private:
    class Lanes;
    std::unique_ptr<Lanes> lanes;
};

}  // namespace kvn::service
