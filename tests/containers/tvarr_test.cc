#include "generic/tvarr"

#include "tests/support/test.h"

namespace {

TVarr<int> Ints(std::vector<int> const& values) {
    TVarr<int> a(4, VARR_DOUBLE);
    a.Cat(static_cast<unsigned>(values.size()), values.data());
    return a;
}

int CompareInts(int const* a, int const* b) { return *a < *b ? -1 : *a > *b; }

// Steps on an array, also with its own elements and buffers, beside a vector and a capacity. Growth
// goes by the start capacity, doubling if that is odd; 0 stands for none and steps of 32.
template <class T>
void CheckSteps(T (*make)(unsigned)) {
    std::mt19937 random(4);
    TVarr<T> a;
    std::vector<T> model;
    unsigned start = 0, size = 0;
    for (unsigned round = 0; round < 20000; ++round) {
        if (round % 40 == 0) {
            start = size = round % 3 ? random() % 6 + 1 : 0;
            a = TVarr<T>(start ? start : 0xFFFFFFFF, start % 2 ? VARR_DOUBLE : VARR_ADD);
            model.clear();
        }
        unsigned const length = a.Len(), n = random() % 9;
        unsigned const at = length ? random() % length : 0, own = std::min(n, length - at);
        std::vector<T> const piece(model.begin() + at, model.begin() + at + own);
        T const *const buffer = a.Get(), *last = nullptr;  // what some calls return
        unsigned need = 0;
        switch (random() % 15) {
            case 0: a.Extend(n), need = length + n; break;
            case 1: a.Resize(n), need = n; break;
            case 2: last = a.Cpy(own, a.Get() + at), model = piece; break;
            case 3:
                last = a.Cat(own, a.Get() + at);
                model.insert(model.end(), piece.begin(), piece.end());
                break;
            case 4:
                last = a.Pop();
                ASSERT_TRUE(length ? last == a.end() && *last == model.back() : !last) << round;
                if (std::exchange(last, nullptr)) model.pop_back();
                break;
            case 5: ASSERT_EQ(buffer + length, a.Adjust(size + 1)); break;
            case 6: model.resize(own), last = own ? a.Adjust(own) - 1 : a.Adjust(0); break;
            case 7: {
                TVarr<T> copy(n, VARR_ADD);
                copy = std::as_const(a = *&a);
                a = copy;
                break;
            }
            case 8: {
                TVarr<T> moved(std::move(a));
                ASSERT_EQ(buffer, moved.Get());
                if (n % 2) a = std::move(moved);
                if (!a.Get()) model.clear(), start = size = 0;
                break;
            }
            case 9: {
                std::unique_ptr<T[]> saved(a.Save());
                if (length) last = a.Override(size = length, n % 2 ? saved.release() : a.Get());
                break;
            }
            case 10:
                delete[] a.Retrieve();
                model.clear(), size = start ? start : 32;
                break;
            default:
                last = own ? a.App(a[at]) : a.App(make(n));
                model.push_back(own ? model[at] : make(n));
        }
        for (need = std::max(need, a.Len()); size < need;)
            size += start % 2 ? size : start ? start : 32;
        ASSERT_TRUE(std::equal(model.begin(), model.end(), a.begin(), a.end())) << round;
        ASSERT_TRUE(!last || model.empty() || last == a.end() - 1) << round;
        ASSERT_EQ(size, a.Size()) << round;
    }
}

TEST(TVarr, FollowsAModel) {
    CheckSteps<int>([](unsigned i) { return static_cast<int>(i); });
    CheckSteps<std::string>([](unsigned i) { return std::string(i, 'x'); });
    TVarr<int> a = Ints({1, 2, 3});
    EXPECT_THROW(a.Extend(0xFFFFFFFD), std::bad_array_new_length);
    EXPECT_EQ("1 2 3", Joined(a));
}

struct Key : TVarrCmp<int> {
    explicit Key(int key) : key(key) {}
    int operator()(int const* element) const override { return key - *element; }
    int key;
};

// The elements whose double is between its ends.
struct Recorder : TVarrRange<int> {
    Recorder(int low, int high) : low(low), high(high) {}
    int Lower(int const* element) override { return low - 2 * *element; }
    int Upper(int const* element) override { return high - 2 * *element; }
    void Action(int* element) override { seen.push_back(*element); }
    int low, high;
    std::vector<int> seen;
};

TEST(TVarrSearch, AgreesWithAModelOnRandomArrays) {
    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round) {
        std::vector<int> values(random() % 12);
        for (int& value : values) value = static_cast<int>(random() % 10);
        int const key = static_cast<int>(random() % 10), high = static_cast<int>(random() % 12);
        TVarr<int> a = Ints(values);
        auto const at = std::find(values.begin(), values.end(), key);
        bool const present = at != values.end();
        ASSERT_EQ(present ? a.Get() + (at - values.begin()) : nullptr, a.Find(Key(key)));

        a.Sort(CompareInts);
        std::sort(values.begin(), values.end());
        int const* const found = std::as_const(a).BFind(Key(key));
        ASSERT_TRUE(present ? found && *found == key : !found);
        a.Uniq(CompareInts);
        values.erase(std::unique(values.begin(), values.end()), values.end());
        Recorder within(2 * key - round % 2, 2 * high + round % 2);  // every second finds no ends
        a.RSearch(within);
        std::vector<int> want;
        for (int const value : values)
            if (key <= value && value <= high) want.push_back(value);
        ASSERT_EQ(want, within.seen);
        // Each that is close to its neighbour goes, though that one goes, too.
        a.Uniq([](int const* x, int const* y) { return *x - *y > 1 ? 1 : 0; });
        for (std::size_t i = values.size(); i-- > 1;)
            if (values[i] - values[i - 1] <= 1) values.erase(values.begin() + i);
        a.Remove(Key(key));
        values.erase(std::remove(values.begin(), values.end(), key), values.end());
        ASSERT_EQ(Joined(values), Joined(a));
    }
}

}  // namespace
