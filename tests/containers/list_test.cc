// The four rings beside a text: each of its letters stands for an element.
#include <type_traits>

#include "containers/dlist.h"
#include "containers/dplist.h"
#include "containers/objectbase.h"
#include "containers/olist.h"
#include "containers/slist.h"
#include "tests/support/test.h"

namespace {

// Lists of pointers point into this text, intrusive ones have records that hold such a letter.
char letters[] = "abcdefghijklmnopqrstuvwxyz";

template <class Link>
struct Record : Link {
    explicit Record(char c) : value(c) { ++alive; }
    ~Record() override { --alive; }
    char value;
    inline static int alive = 0;
};

// Where the letter of an element is, and the letter; null and 0 for none.
char const* PlaceOf(void const* data) { return static_cast<char const*>(data); }
char const* PlaceOf(DPLink const* node) { return node ? PlaceOf(node->Data()) : nullptr; }
template <class Link>
char const* PlaceOf(Link const* link) {
    return link ? &static_cast<Record<Link> const*>(link)->value : nullptr;
}
char const* PlaceOf(DLink const& link) { return PlaceOf(&link); }
char const* PlaceOf(olink_t const& link) { return PlaceOf(&link); }

template <class Element>
char LetterOf(Element const& element) {
    char const* const c = PlaceOf(element);
    return c ? *c : '\0';
}

template <class Element>
Element Make(char c) {
    if constexpr (std::is_same_v<Element, void*>)
        return &letters[c - 'a'];
    else
        return new Record<std::remove_pointer_t<Element>>(c);
}

// The letter of an element that has left its list and goes.
template <class Element>
char Drop(Element element) {
    char const c = LetterOf(element);
    if constexpr (!std::is_same_v<Element, void*>) delete element;
    return c;
}

template <class Data>
int Differ(Data data, void const* key) {
    return LetterOf(data) - LetterOf(key);
}
template <class Data>
int CountCall(Data /*data*/, void* calls) {
    return ++*static_cast<int*>(calls);
}
template <class List>
int VisitUpToG(typename List::Element visited, void* list) {
    return static_cast<List*>(list)->Take(LetterOf(visited)) == 'g' ? 7 : 0;
}

// One interface for all four.
template <class List>
struct Single : List {
    using Element = decltype(List()[0]);
    void AddLast(char c) { this->append(Make<Element>(c)); }
    void AddFirst(char c) { this->insert(Make<Element>(c)); }
    char TakeFirst() { return Drop(this->removeTop()); }
    char TakeLast() { return Drop(this->removeBottom()); }
    char Take(char c) { return Drop(this->remove(Differ, &c)); }
    char const* Find(char c) { return PlaceOf(this->find(Differ, &c)); }
    int TakeUpToG() { return this->loop(VisitUpToG<Single>, this); }
    int TakeAll(char const* key) {
        if constexpr (std::is_same_v<List, slist_t>) {
            int calls = 0;
            return this->removeLoop(Differ, key, CountCall, &calls) == calls ? calls : -1;
        } else {
            return this->removeLoop(Differ, key);
        }
    }
};

template <class List, class Iterator>
struct Double : List {
    using Element = decltype(List()[0]);
    using Place = Iterator;
    void AddLast(char c) { this->Append(Make<Element>(c)); }
    void AddFirst(char c) { this->Insert(Make<Element>(c)); }
    char TakeFirst() { return Drop(this->RemoveFirst()); }
    char TakeLast() { return Drop(this->RemoveLast()); }
    char Take(char c) { return Drop(this->Remove(Differ, &c)); }
    char const* Find(char c) {
        if constexpr (std::is_same_v<List, DPList>)
            return PlaceOf(this->FindL(Differ, &c));
        else
            return PlaceOf(List::Find(Differ, &c));
    }
    int TakeUpToG() { return this->Loop(VisitUpToG<Double>, this); }
    int TakeAll(char const* key) {
        int calls = 0;
        return this->RemoveLoop(Differ, key, CountCall, &calls) == calls ? calls : -1;
    }
};

using PointerDouble = Double<DPList, DPListIterator>;
using LinkDouble = Double<DList, DListIterator>;

template <class List>
List MakeList(std::string const& values) {
    List list;
    for (char const c : values) list.AddLast(c);
    return list;
}

template <class List>
std::string Text(List const& list) {
    std::string joined;
    for (auto const& element : list) joined += LetterOf(element);
    return joined;
}

template <class List>
class ListModel : public testing::Test {};
using Lists = testing::Types<Single<slist_t>, Single<olist_t>, PointerDouble, LinkDouble>;
TYPED_TEST_SUITE(ListModel, Lists);

TYPED_TEST(ListModel, RandomOperations) {
    std::mt19937 random(17);
    TypeParam list;
    std::string model;
    for (int step = 0; step < 20000; ++step) {
        char const c = letters[random() % 8], first = model.c_str()[0];
        char const* const key = list.Find(c);  // may lie in the list
        auto const found = std::min(model.find(c), model.size()), at_g = model.find('g');
        int want = model.c_str()[found], got = LetterOf(static_cast<void const*>(key));
        ASSERT_EQ(want, got) << "step " << step;
        switch (random() % 13) {
            case 0: got = list.Take(c), model.erase(found, 1); break;
            case 1: want = first, got = list.TakeFirst(), model.erase(0, 1); break;
            case 2:
                want = at_g < model.size() ? 7 : 0, got = list.TakeUpToG(),
                model.erase(0, std::max(at_g, at_g + 1));
                break;
            case 3:
                want = std::count(model.begin(), model.end(), c),
                got = list.TakeAll(key ? key : &c),
                model.erase(std::remove(model.begin(), model.end(), c), model.end());
                break;
            case 4: list.AddFirst(c), model.insert(0, 1, c); break;
            case 5:
                if constexpr (std::is_same_v<TypeParam, LinkDouble>) break;
                want = model.empty() ? 0 : model.back(), got = list.TakeLast();
                model.erase(model.size() - !model.empty());
                break;
            default:
                if (model.size() < 9) list.AddLast(c), model.push_back(c);
        }
        ASSERT_EQ(std::pair(want, model), std::pair(got, Text(list))) << "step " << step;
        int const length = static_cast<int>(model.size());
        ASSERT_EQ(length, list.Len());
        for (int i = -1; i <= length; ++i)
            ASSERT_EQ(i < 0 ? '\0' : model.c_str()[i], LetterOf(list[i]));
    }
    list = TypeParam();
    EXPECT_EQ(0, Record<olink_t>::alive + Record<DLink>::alive);
}

template <class List>
class ListPlace : public ListModel<List> {};
using DoubleLists = testing::Types<PointerDouble, LinkDouble>;
TYPED_TEST_SUITE(ListPlace, DoubleLists);

// The model is a position in a text; at its end both ways of adding keep to the end.
TYPED_TEST(ListPlace, InsertsAppendsAndRemovesWhereItStands) {
    std::mt19937 random(19);
    TypeParam list;
    typename TypeParam::Place it(list);
    std::string model;
    for (std::size_t step = 0, at = 0; step < 5000; ++step) {
        char const c = letters[random() % 26], here = model.c_str()[at];
        auto const add = Make<typename TypeParam::Element>;
        bool const end = at == model.size();
        char met = here;
        switch (random() % (model.size() < 6 ? 6 : 4)) {
            case 0: it.Reset(), at = 0; break;
            case 1: met = Drop(it.Remove()), model.erase(at, 1); break;
            case 2: met = LetterOf((it++).Succ()), at += !end; break;
            case 3: met = LetterOf(it()), at += !end; break;
            case 4: it.Insert(add(c)), model.insert(at++, 1, c); break;
            case 5: it.Append(add(c)), model.insert(end ? at++ : at + 1, 1, c); break;
        }
        ASSERT_EQ(std::pair(here, model), std::pair(met, Text(list))) << "step " << step;
        ASSERT_EQ(model.c_str()[at], LetterOf(it.Succ())) << "step " << step;
        ASSERT_EQ(at < model.size(), static_cast<void const*>(it) != nullptr);
    }
}

TEST(SList, Splices) {
    using List = Single<slist_t>;
    for (std::string const a : {"", "ab"})
        for (std::string const b : {"", "cd"}) {
            auto front = MakeList<List>(a), back = MakeList<List>(a);
            auto one = MakeList<List>(b), two = MakeList<List>(b);
            front.insert(one), front.insert(front);  // into itself: nothing
            back.append(two), back.append(back);
            EXPECT_EQ(b + a + '|' + a + b, Text(front) + Text(one) + '|' + Text(back) + Text(two));
        }
}

TEST(SList, SortsAndUniqComparesWithThePredecessorAsItStood) {
    auto const follows = [](void* data, void const* before) { return Differ(data, before) - 1; };
    using Compare = int (*)(void*, void const*);
    for (auto const& [want, cmp] : Rows<char const*, Compare>{
             {"abcfgz", Differ}, {"aafz", follows}}) {  // c goes although b has gone
        auto list = MakeList<Single<slist_t>>("cbaagf");
        list.Sort(Differ);
        list.Uniq(cmp);
        list.AddLast('z');  // the ring is closed behind the last node that stayed
        EXPECT_EQ(want, Text(list));
    }
}

TEST(PointerLists, ReplaceAndCopy) {
    auto const check = [](auto list) {
        EXPECT_EQ('b', LetterOf(list.Replace(Differ, "b", &letters[23])));
        auto copy = list, target = MakeList<decltype(list)>("q");
        copy.TakeFirst();
        target = copy = *&copy;
        copy.TakeFirst();
        EXPECT_EQ("axcb cb xcb", Text(list) + ' ' + Text(copy) + ' ' + Text(target));
    };
    check(MakeList<Single<slist_t>>("abcb"));
    check(MakeList<PointerDouble>("abcb"));
}

TEST(DList, RemovesTheWholeRingWithItsLast) {
    DList list;
    Record<DLink> a('a'), b('b');
    for (DLink* const link : {&a, &b}) list.Append(link);
    EXPECT_EQ(&b, list.RemoveLast());
    EXPECT_TRUE(!list.RemoveLast() && a.Next() == &b && b.Prev() == &a);
}

TEST(ObjectBase, KnowsItsNameOnly) {
    ObjectBase const base;
    EXPECT_TRUE(base.IsA("ObjectBase") && !base.IsA("ObjectBases") && !base.IsA(nullptr));
}

}  // namespace
