// What the test program takes from the global allocation functions, which allocations_test.cc
// replaces.
#ifndef KORBASE_TESTS_GEOMETRY_ALLOCATIONS_H
#define KORBASE_TESTS_GEOMETRY_ALLOCATIONS_H

#include <cstddef>

struct Allocations {
    std::size_t calls = 0;    // since the last Reset
    std::size_t bytes = 0;    // in use, relative to the last Reset
    std::size_t peak = 0;     // the most of them
    std::size_t fail_at = 0;  // the call that throws, counted from 1 after the Reset; 0: none

    void Reset() { *this = Allocations(); }
};

// Those of the calling thread.
Allocations& HeapUse();

#endif
