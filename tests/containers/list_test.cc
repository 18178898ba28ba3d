#include <containers/dlist.h>
#include <containers/dplist.h>
#include <containers/objectbase.h>
#include <containers/olist.h>
#include <containers/slist.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <type_traits>
#include <utility>

namespace {

// Lists of pointers point into this text, intrusive ones have records that hold such a letter.
char letters[] = "abcdefghijklmnopqrstuvwxyz";
void* at(char c) { return &letters[c - 'a']; }

template <class Base>
struct Record : Base {
    explicit Record(char c) : value(c) { ++alive; }
    ~Record() override { --alive; }
    char value;
    inline static int alive = 0;
};

// The letter of a list's element, 0 for none.
char letter(void const* data) { return data ? *static_cast<char const*>(data) : '\0'; }
char letter(DLink const* p) { return p ? static_cast<Record<DLink> const*>(p)->value : '\0'; }
char letter(olink_t const* p) { return p ? static_cast<Record<olink_t> const*>(p)->value : '\0'; }
char letter(DLink const& link) { return letter(&link); }
char letter(olink_t const& link) { return letter(&link); }

template <class List>
std::string text(List const& list) {
    std::string joined;
    for (auto const& element : list) joined += letter(element);
    return joined;
}

// The comparison of each list: 0 where the letters are the same.
template <class Data>
int differ(Data data, void const* key) {
    return letter(data) - letter(key);
}

// An action for lists of pointers: takes its own pointer out if the letter has an odd code; stops
// behind a g.
template <class List, auto remove>
int drop_if_odd(void* data, void* self) {
    if (letter(data) % 2 != 0) (static_cast<List*>(self)->*remove)(differ, data);
    return letter(data) == 'g' ? 7 : 0;
}

int count_call(void* /*data*/, void* calls) {
    ++*static_cast<int*>(calls);
    return 0;
}

// The letter of a record that left its list and goes.
template <class Link>
char drop(Link* link) {
    char const value = letter(link);
    delete link;
    return value;
}

// One interface for all four.
struct Single : slist_t {
    void AddLast(char c) { append(at(c)); }
    void AddFirst(char c) { insert(at(c)); }
    char TakeFirst() { return letter(removeTop()); }
    char TakeLast() { return letter(removeBottom()); }
    char Take(char c) { return letter(remove(differ, &c)); }
    int TakeAll(char c) {
        int calls = 0;
        return removeLoop(differ, &c, count_call, &calls) == calls ? calls : -1;
    }
    char Found(char c) { return letter(find(differ, &c)); }
    int DropOdd() { return loop(drop_if_odd<slist_t, &slist_t::remove>, this); }
};

struct Double : DPList {
    void AddLast(char c) { Append(at(c)); }
    void AddFirst(char c) { Insert(at(c)); }
    char TakeFirst() { return letter(RemoveFirst()); }
    char TakeLast() { return letter(RemoveLast()); }
    char Take(char c) { return letter(Remove(differ, &c)); }
    int TakeAll(char c) { return RemoveLoop(differ, &c, nullptr, nullptr); }
    char Found(char c) { return FindL(differ, &c) ? c : '\0'; }
    int DropOdd() { return Loop(drop_if_odd<DPList, &DPList::Remove>, this); }
};

// Some letters go the way of the callbacks, some that of the functors.
struct Intrusive : olist_t {
    struct Equals : olist_cmpo_t {
        explicit Equals(char c) : value(c) {}
        int operator()(olink_t const* link) const override { return letter(link) - value; }
        char value;
    };
    struct DropIfOdd : olist_actiono_t {
        explicit DropIfOdd(olist_t& links) : list(links) {}
        int operator()(olink_t* link) override {
            char const c = letter(link);
            if (c % 2 != 0) Del(list.remove(Equals(c)));
            return c == 'g' ? 7 : 0;
        }
        olist_t& list;
    };
    void AddLast(char c) { append(new Record<olink_t>(c)); }
    void AddFirst(char c) { insert(new Record<olink_t>(c)); }
    char TakeFirst() { return drop(removeTop()); }
    char TakeLast() { return drop(removeBottom()); }
    char Take(char c) { return drop(c < 'd' ? remove(differ, &c) : remove(Equals(c))); }
    int TakeAll(char c) {
        Equals equals(c);
        if (c < 'd') return removeLoop(equals);
        auto const* const first = static_cast<Record<olink_t>*>(find(differ, &c));
        return first ? removeLoop(differ, &first->value) : 0;  // the key lies in the list
    }
    char Found(char c) {
        return find(differ, &c) == find(Equals(c)) ? letter(find(differ, &c)) : 'x';
    }
    int DropOdd() {
        DropIfOdd action(*this);
        return loop(action);
    }
};

struct IntrusiveDouble : DList {
    static int DropIfOdd(DLink* link, void* self) {
        char const c = letter(link);
        if (c % 2 != 0) drop(static_cast<DList*>(self)->Remove(differ, &c));
        return c == 'g' ? 7 : 0;
    }
    static int CountLink(DLink* link, void* calls) { return count_call(link, calls); }
    void AddLast(char c) { Append(new Record<DLink>(c)); }
    void AddFirst(char c) { Insert(new Record<DLink>(c)); }
    char TakeFirst() { return drop(RemoveFirst()); }
    char TakeLast() {
        DListIterator it(*this);
        for (int i = Len(); i > 1; --i) ++it;
        return drop(it.Remove());
    }
    char Take(char c) { return drop(Remove(differ, &c)); }
    int TakeAll(char c) {
        auto const* const first = static_cast<Record<DLink>*>(Find(differ, &c));
        int calls = 0;  // the key lies in the list
        return !first || RemoveLoop(differ, &first->value, CountLink, &calls) == calls ? calls : -1;
    }
    char Found(char c) { return letter(Find(differ, &c)); }
    int DropOdd() { return Loop(DropIfOdd, this); }
};

char take_at(std::string& model, std::size_t i) {
    if (i >= model.size()) return '\0';
    char const c = model[i];
    model.erase(i, 1);
    return c;
}

int drop_odd(std::string& model) {
    for (char const c : std::string(model)) {
        if (c % 2 != 0) model.erase(model.find(c), 1);
        if (c == 'g') return 7;
    }
    return 0;
}

// Moves `count` letters from another list to the front or the end, where lists can do that.
template <class List>
void splice(List& list, std::string& model, bool front, unsigned count) {
    if constexpr (!std::is_base_of_v<DList, List> && !std::is_base_of_v<DPList, List>) {
        std::string const moved = std::string("hb").substr(0, count);
        List other;
        for (char const c : moved) other.AddLast(c);
        front ? list.insert(other) : list.append(other);
        front ? list.insert(list) : list.append(list);  // which does nothing
        EXPECT_EQ("", text(other));
        model.insert(front ? 0 : model.size(), moved);
    }
}

Single single(char const* values) {
    Single list;
    for (; *values; ++values) list.AddLast(*values);
    return list;
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
        std::string model;
        for (int step = 0; step < 20000; ++step) {
            char const c = letters[random() % 8];
            auto const found = model.find(c);
            ASSERT_EQ(found < model.size() ? c : '\0', list.Found(c));
            unsigned const choice = random() % 30;
            if (choice == 0) {
                ASSERT_EQ(drop_odd(model), list.DropOdd());
            } else if (choice == 1) {
                ASSERT_EQ(std::count(model.begin(), model.end(), c), list.TakeAll(c));
                model.erase(std::remove(model.begin(), model.end(), c), model.end());
            } else if (choice < 6) {
                ASSERT_EQ(take_at(model, 0), list.TakeFirst());
            } else if (choice < 10) {
                ASSERT_EQ(take_at(model, model.size() - 1), list.TakeLast());
            } else if (choice < 14) {
                ASSERT_EQ(take_at(model, found), list.Take(c));
            } else if (choice == 14) {
                splice(list, model, random() % 2 == 0, random() % 3);
            } else if (choice < 22) {
                list.AddLast(c);
                model.push_back(c);
            } else {
                list.AddFirst(c);
                model.insert(0, 1, c);
            }
            ASSERT_EQ(model, text(list)) << "step " << step;
            int const length = static_cast<int>(model.size());
            ASSERT_EQ(length, list.Len());
            for (int i = -1; i <= length; ++i)
                ASSERT_EQ(i < 0 ? '\0' : model.c_str()[i], letter(list[i]));
        }
    }
    EXPECT_EQ(0, Record<olink_t>::alive + Record<DLink>::alive);
}

TEST(SList, UniqComparesWithThePredecessorAsItStood) {
    auto const follows = [](void* data, void const* before) { return differ(data, before) - 1; };
    struct {
        char const *before, *after;
        int (*cmp)(void*, void const*);
    } const rows[] = {
        {"", "", differ},       {"a", "a", differ},
        {"aaa", "a", differ},   {"aabbcca", "abca", differ},
        {"abc", "abc", differ}, {"abcfg", "af", follows}};  // c goes although b has gone
    for (auto const& row : rows) {
        slist_t list = single(row.before);
        list.Uniq(row.cmp);
        EXPECT_EQ(row.after, text(list));
        list.append(at('z'));  // the ring is closed behind the last node that stayed
        EXPECT_EQ(row.after + std::string("z"), text(list));
    }
}

TEST(PointerLists, ReplaceAndCopy) {
    slist_t list = single("abcb");
    EXPECT_EQ(at('b'), list.Replace(differ, "b", at('x')));
    EXPECT_EQ(nullptr, list.Replace(differ, "q", at('x')));
    EXPECT_EQ(list.Findl(differ, "c")->Next(), list.Findl(differ, "b"));
    slist_t copy(list);
    copy.removeTop();
    copy = static_cast<slist_t const&>(copy);
    EXPECT_EQ("axcb", text(list));
    copy.Sort(differ);
    list = copy;
    EXPECT_EQ("bcx", text(list));

    DPList two_way, two_way_copy;
    for (char c = 'a'; c < 'e'; ++c) two_way.Append(at(c));
    EXPECT_EQ(at('c'), two_way.Replace(differ, "c", at('y')));
    EXPECT_EQ(nullptr, two_way.Replace(differ, "c", at('y')));
    two_way_copy.Append(at('q'));
    two_way_copy = two_way;
    two_way.Clear();
    EXPECT_EQ(at('b'), two_way_copy.FindL(differ, "y")->Prev()->Data());
    two_way = std::move(two_way_copy);
    EXPECT_EQ("abyd", text(two_way));
}

TEST(DList, RemoveLastDropsTheOtherLinks) {
    DList list;
    Record<DLink> a('a'), b('b'), c('c');
    for (DLink* const link : {&a, &b, &c}) list.Append(link);
    EXPECT_EQ(&c, list.RemoveLast());
    EXPECT_EQ(0, list.Len());
    EXPECT_EQ(&a, c.Next());  // still in their ring
    EXPECT_EQ(&c, a.Prev());
    EXPECT_EQ(nullptr, list.RemoveLast());
}

TEST(DListIterator, InsertsAppendsAndRemovesAtItsPlace) {
    DList list;
    DListIterator it(list);
    it.Append(new Record<DLink>('c'));  // at the end of an empty list
    EXPECT_FALSE(it);
    it.Reset();
    it.Insert(new Record<DLink>('a'));  // before the first
    it.Insert(new Record<DLink>('b'));
    it.Append(new Record<DLink>('e'));  // behind the last
    it.Append(new Record<DLink>('d'));
    EXPECT_EQ("abcde", text(list));
    EXPECT_EQ('c', letter(it()));
    DLink* const d = it.Remove();
    EXPECT_EQ('d', letter(d));
    EXPECT_EQ('e', letter(it.Succ()));
    delete it.Remove();  // the last one: at the end, not back at the first
    EXPECT_EQ(nullptr, it.Remove());
    it.Insert(d);
    EXPECT_EQ("abcd", text(list));
    EXPECT_EQ(d, list[0]->Prev());
    EXPECT_EQ(nullptr, (++it)());
}

TEST(DPListIterator, InsertsAppendsAndRemovesAtItsPlace) {
    DPList list;
    for (char const c : {'b', 'd'}) list.Append(at(c));
    DPListIterator it(list);
    it.Insert(at('a'));
    it.Append(at('c'));
    EXPECT_EQ("abcd", text(list));
    EXPECT_EQ(at('b'), it.Remove());
    EXPECT_EQ(at('c'), it++.Succ());
    EXPECT_EQ(at('d'), it());
    EXPECT_FALSE(it);
    it.Insert(at('e'));
    EXPECT_EQ("acde", text(list));
    EXPECT_EQ(nullptr, it.Remove());
}

TEST(ObjectBase, KnowsItsNameOnly) {
    for (char const* const name : {"ObjectBas", "ObjectBases", "objectbase", ""})
        EXPECT_FALSE(ObjectBase().IsA(name));
    EXPECT_FALSE(ObjectBase().IsA(nullptr));
    EXPECT_TRUE(ObjectBase().IsA("ObjectBase"));
}
