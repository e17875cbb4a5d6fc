// The heap of this program, whose allocations a test can refuse. Every malloc, calloc, realloc and free of the program
// is linked to this one, and so is every operator new, which calls malloc.
#pragma once

#include <initializer_list>

namespace kvn::test {

// The threads whose allocations count: this one, or all others.
enum class Whose { This, Others };

class RefusedMemory {
public:
    // Refuses the allocation with this number, counted from 1 for the next one.
    static void RefuseOne(Whose whose, int number);
    // From this allocation on, only freed memory is available.
    static void RefuseFrom(Whose whose, int number);
    // Stops refusing. True if anything was refused.
    static bool StopRefusing();
};

// Refuses the first allocation of the work, then the second and so on, each alone and with all later ones, until none
// is refused. The check runs with all memory. A step above 1 leaves out allocations in between.
template <typename Work, typename Check>
void SweepRefusals(Whose whose, int step, const Work& work, const Check& check) {
    for (const auto refuse : {&RefusedMemory::RefuseOne, &RefusedMemory::RefuseFrom}) {
        bool wasRefused = true;
        for (int number = 1; wasRefused; number += step) {
            refuse(whose, number);
            work();
            wasRefused = RefusedMemory::StopRefusing();
            check(number);
        }
    }
}

}  // namespace kvn::test
