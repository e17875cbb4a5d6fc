#include "service/input/held_list.h"

#include "service/input/key_sending.h"

namespace kvn::service {
namespace {

void Release(WORD key, InputBatch& batch) {
    if (IsMouseButton(key)) {
        batch.ButtonUp(PhysicalButton(key));
    } else {
        batch.KeyUp(key);
    }
}

}  // namespace

// All modifiers except the Windows keys have high codes, so they usually go up last.
void ReleaseAll(HeldList& held) {
    InputBatch batch;
    for (std::size_t key = 1; key < held.counts.size(); ++key) {
        if (held.counts[key].load() != 0) Release(static_cast<WORD>(key), batch);
    }
    batch.Send();
    for (auto& count : held.counts) count.store(0);
}

}  // namespace kvn::service
