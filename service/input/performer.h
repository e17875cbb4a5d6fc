// Carries out the engine's orders: a worker does the beginnings, in order, and a keeper everything that must not wait
// for it (endings, repeats, scrolling and flying notches, the trail). All input that the service makes comes from here.
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
    ~Performer();  // ends everything that is held; does not wait longer than a second for a worker that hangs
    Performer(const Performer&) = delete;
    Performer& operator=(const Performer&) = delete;

    bool Start();

    // The rest is for the hook thread: no memory is taken, no lock, and nothing waits.
    // False while so much is undone that an event's orders might not fit: then nobody should be promised anything.
    bool HasRoom() const;
    void Take(const Orders& orders);

    // Functions carried out until now.
    std::uint64_t ActionCount() const;

private:
    class Lanes;
    std::unique_ptr<Lanes> lanes;
};

}  // namespace kvn::service
