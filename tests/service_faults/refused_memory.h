// The heap of this program, refused where a test wants it. Every malloc, calloc, realloc and free of the program is
// linked to this one, and so is every operator new, which calls malloc.
#pragma once

#include <initializer_list>

namespace kvn::test {

// Whose allocations count: this thread's, or those of all others.
enum class Whose { This, Others };

class RefusedMemory {
public:
    // The allocation with this number is refused, counted from 1 for the next one.
    static void RefuseOne(Whose whose, int number);
    // From this allocation on there is no memory left but what is given back.
    static void RefuseFrom(Whose whose, int number);
    // Nothing is refused any longer. True when anything was.
    static bool StopRefusing();
};

// Refuses the first allocation of the work, the second and so on, each alone and then with all later ones, until the
// work gets by without a refusal; the check then finds all memory there again. Leaves out what lies between the steps.
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
