// A value whose copies fail on demand.
#ifndef KORBASE_TESTS_SUPPORT_FRAGILE_H
#define KORBASE_TESTS_SUPPORT_FRAGILE_H

#include <new>

template <class T>
struct Fragile {
    T value;
    inline static int copies_left = -1;  // the next copy throws when none are left

    template <class From = T>
    Fragile(From const& from = From()) : value(from) {}
    Fragile(Fragile const& other) : value(other.value) { Spend(); }
    Fragile& operator=(Fragile const& other) {
        Spend();
        value = other.value;
        return *this;
    }
    operator T const&() const { return value; }

private:
    static void Spend() {
        if (copies_left-- == 0) throw std::bad_alloc();
    }
};

#endif
