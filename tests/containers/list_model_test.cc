// The four lists against std::vector, under random operations.
#include <containers/dlist.h>
#include <containers/dplist.h>
#include <containers/olist.h>
#include <containers/slist.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

// The values that lists of pointers point to: numbers[i] is i.
int numbers[8] = {0, 1, 2, 3, 4, 5, 6, 7};

int value_of(void const* data) { return data ? *static_cast<int const*>(data) : -1; }
int compare(void* data, void const* key) { return value_of(data) - value_of(key); }
int compare_const(void const* data, void const* key) { return value_of(data) - value_of(key); }

int count_call(void* /*data*/, void* calls) {
    ++*static_cast<int*>(calls);
    return 0;
}

template <class Base>
struct Record : Base {
    explicit Record(int number) : value(number) { ++alive; }
    ~Record() override { --alive; }
    int value;
    inline static int alive = 0;
};

template <class Base>
int compare_record(Base const* link, void const* key) {
    return static_cast<Record<Base> const*>(link)->value - value_of(key);
}

// The value of a record that left its list and goes, -1 for none.
template <class Base>
int drop(Base* link) {
    int const value = link ? static_cast<Record<Base>*>(link)->value : -1;
    delete link;
    return value;
}

// One interface for all four. Take... give the value that was taken, -1 for none.
struct Single {
    void AddLast(int i) { list.append(&numbers[i]); }
    void AddFirst(int i) { list.insert(&numbers[i]); }
    int TakeFirst() { return value_of(list.removeTop()); }
    int TakeLast() { return value_of(list.removeBottom()); }
    int Take(int i) { return value_of(list.remove(compare, &numbers[i])); }
    int TakeAll(int i) {
        int calls = 0;
        int const count = list.removeLoop(compare, &numbers[i], count_call, &calls);
        return calls == count ? count : -1;
    }
    bool Has(int i) { return value_of(list.find(compare, &numbers[i])) == i; }
    int At(int i) const { return value_of(list[i]); }
    int DropOdd() {
        auto const action = [](void* data, void* self) {
            if (value_of(data) % 2 != 0) static_cast<slist_t*>(self)->remove(compare, data);
            return value_of(data) == 7 ? 7 : 0;
        };
        return list.loop(action, &list);
    }
    static int Alive() { return 0; }
    slist_t list;
};

struct Double {
    void AddLast(int i) { list.Append(&numbers[i]); }
    void AddFirst(int i) { list.Insert(&numbers[i]); }
    int TakeFirst() { return value_of(list.RemoveFirst()); }
    int TakeLast() { return value_of(list.RemoveLast()); }
    int Take(int i) { return value_of(list.Remove(compare_const, &numbers[i])); }
    int TakeAll(int i) { return list.RemoveLoop(compare_const, &numbers[i], nullptr, nullptr); }
    bool Has(int i) { return list.FindL(compare_const, &numbers[i]) != nullptr; }
    int At(int i) const { return value_of(list[i]); }
    int DropOdd() {
        auto const action = [](void* data, void* self) {
            if (value_of(data) % 2 != 0) static_cast<DPList*>(self)->Remove(compare_const, data);
            return value_of(data) == 7 ? 7 : 0;
        };
        return list.Loop(action, &list);
    }
    static int Alive() { return 0; }
    DPList list;
};

struct Intrusive {
    using Node = Record<olink_t>;
    struct Equals : olist_cmpo_t {
        explicit Equals(int number) : value(number) {}
        int operator()(olink_t const* link) const override { return compare_record(link, &value); }
        int value;
    };
    struct DropOddRecords : olist_actiono_t {
        explicit DropOddRecords(olist_t& links) : list(links) {}
        int operator()(olink_t* link) override {
            int const value = static_cast<Node*>(link)->value;
            if (value % 2 != 0) Del(list.remove(compare_record, &value));
            return value == 7 ? 7 : 0;
        }
        olist_t& list;
    };

    void AddLast(int i) { list.append(new Node(i)); }
    void AddFirst(int i) { list.insert(new Node(i)); }
    int TakeFirst() { return drop(list.removeTop()); }
    int TakeLast() { return drop(list.removeBottom()); }
    int Take(int i) {
        return drop(i % 2 == 0 ? list.remove(compare_record, &i) : list.remove(Equals(i)));
    }
    int TakeAll(int i) {
        Equals equals(i);
        return i % 2 == 0 ? list.removeLoop(compare_record, &i) : list.removeLoop(equals);
    }
    bool Has(int i) {
        return list.find(compare_record, &i) &&
               list.find(compare_record, &i) == list.find(Equals(i));
    }
    int At(int i) const { return list[i] ? static_cast<Node*>(list[i])->value : -1; }
    int DropOdd() {
        DropOddRecords action(list);
        return list.loop(action);
    }
    static int Alive() { return Node::alive; }
    olist_t list;
};

struct IntrusiveDouble {
    using Node = Record<DLink>;
    void AddLast(int i) { list.Append(new Node(i)); }
    void AddFirst(int i) { list.Insert(new Node(i)); }
    int TakeFirst() { return drop(list.RemoveFirst()); }
    int TakeLast() {
        DListIterator it(list);
        for (int i = list.Len(); i > 1; --i) ++it;
        return drop(it.Remove());
    }
    int Take(int i) { return drop(list.Remove(compare_record, &i)); }
    int TakeAll(int i) {
        int calls = 0;
        auto const count_link = [](DLink* link, void* out) { return count_call(link, out); };
        int const count = list.RemoveLoop(compare_record, &i, count_link, &calls);
        return calls == count ? count : -1;
    }
    bool Has(int i) { return list.Find(compare_record, &i) != nullptr; }
    int At(int i) const { return list[i] ? static_cast<Node*>(list[i])->value : -1; }
    int DropOdd() {
        auto const action = [](DLink* link, void* self) {
            int const value = static_cast<Node*>(link)->value;
            if (value % 2 != 0) drop(static_cast<DList*>(self)->Remove(compare_record, &value));
            return value == 7 ? 7 : 0;
        };
        return list.Loop(action, &list);
    }
    static int Alive() { return Node::alive; }
    DList list;
};

int take_at(std::vector<int>& model, std::vector<int>::iterator at) {
    if (at == model.end()) return -1;
    int const value = *at;
    model.erase(at);
    return value;
}

// Takes each odd value when it is visited, up to a 7, as DropOdd does.
int drop_odd(std::vector<int>& model) {
    for (int const value : std::vector<int>(model)) {
        if (value % 2 != 0) model.erase(std::find(model.begin(), model.end(), value));
        if (value == 7) return 7;
    }
    return 0;
}

}  // namespace

template <class List>
class ListModel : public testing::Test {};
using Lists = testing::Types<Single, Double, Intrusive, IntrusiveDouble>;
TYPED_TEST_SUITE(ListModel, Lists);

TYPED_TEST(ListModel, RandomOperations) {
    std::mt19937 random(17);
    {
        TypeParam list;
        std::vector<int> model;
        for (int step = 0; step < 20000; ++step) {
            int const value = static_cast<int>(random() % 8);
            auto const found = std::find(model.begin(), model.end(), value);
            ASSERT_EQ(found != model.end(), list.Has(value)) << "step " << step;
            unsigned const choice = random() % 30;
            if (choice == 0) {
                ASSERT_EQ(drop_odd(model), list.DropOdd());
            } else if (choice == 1) {
                auto const count = std::count(model.begin(), model.end(), value);
                model.erase(std::remove(model.begin(), model.end(), value), model.end());
                ASSERT_EQ(count, list.TakeAll(value));
            } else if (choice < 6) {
                ASSERT_EQ(take_at(model, model.begin()), list.TakeFirst());
            } else if (choice < 10) {
                auto const last = model.empty() ? model.end() : model.end() - 1;
                ASSERT_EQ(take_at(model, last), list.TakeLast());
            } else if (choice < 14) {
                ASSERT_EQ(take_at(model, found), list.Take(value));
            } else if (choice < 22) {
                list.AddLast(value);
                model.push_back(value);
            } else {
                list.AddFirst(value);
                model.insert(model.begin(), value);
            }
            int const length = static_cast<int>(model.size());
            ASSERT_EQ(length, list.list.Len()) << "step " << step;
            for (int i = -1; i <= length; ++i)
                ASSERT_EQ(i < 0 || i == length ? -1 : model[static_cast<std::size_t>(i)],
                          list.At(i))
                    << "step " << step << ", element " << i;
        }
    }
    EXPECT_EQ(0, TypeParam::Alive());
}
