// The four rings beside a text: each of its letters stands for an element.
#include <type_traits>

#include "containers/dlist.h"
#include "containers/dplist.h"
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

// Where the letter of an element is; an empty text for none.
char const* PlaceOf(void const* data) { return data ? static_cast<char const*>(data) : ""; }
char const* PlaceOf(void* const* data) { return PlaceOf(*data); }
char const* PlaceOf(DPLink const* node) { return PlaceOf(node ? node->Data() : nullptr); }
template <class Link>
char const* PlaceOf(Link const* link) {
    return link ? &static_cast<Record<Link> const*>(link)->value : "";
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
    char const c = *PlaceOf(element);
    if constexpr (!std::is_same_v<Element, void*>) delete element;
    return c;
}

constexpr auto kDiffer = [](auto* data, void const* key) { return *PlaceOf(data) - *PlaceOf(key); };
constexpr auto kCount = [](auto*, void* calls) { return ++*static_cast<int*>(calls); };

constexpr auto kFindLink = [](DList const& list, auto... what) { return list.Find(what...); };
constexpr auto kFindData = [](DPList const& list, auto... what) { return list.FindL(what...); };
// The two-way lists with the names of the others.
template <class List, class Iterator, class Data, auto const& kFind>
struct Double : List {
    using Element = decltype(List()[0]);
    using Place = Iterator;
    using Cmp = int (*)(Data, void const*);
    using Visit = int (*)(Element, void*);
    void append(Element e) { this->Append(e); }
    void insert(Element e) { this->Insert(e); }
    Element removeTop() { return this->RemoveFirst(); }
    Element removeBottom() { return this->RemoveLast(); }
    Element remove(Cmp cmp, void const* key) { return this->Remove(cmp, key); }
    auto find(Cmp cmp, void const* key) const { return kFind(*this, cmp, key); }
    int loop(Visit visit, void* arg) { return this->Loop(visit, arg); }
    int removeLoop(Cmp cmp, void const* key, Visit release, void* arg) {
        return this->RemoveLoop(cmp, key, release, arg);
    }
};
using PointerDouble = Double<DPList, DPListIterator, void const*, kFindData>;
using LinkDouble = Double<DList, DListIterator, DLink const*, kFindLink>;

template <class List>
std::string Text(List const& list) {
    std::string joined;
    for (auto&& element : list) joined += *PlaceOf(&element);
    return joined;
}

// Adds and removes at random places; at the end both ways of adding keep to the end.
template <class List>
void EditAtPlaces(std::mt19937& random, List& list, std::string& model) {
    typename List::Place it(list);
    for (std::size_t edit = 0, at = 0; edit < 3; ++edit) {
        if (edit == 1) it.Reset(), at = 0;
        for (; at < model.size() && random() % 3; ++at)
            ASSERT_EQ(model[at], *PlaceOf(edit ? it() : (it++).Succ()));
        char const c = letters[random() % 8];
        auto const add = Make<decltype(list[0])>;
        bool const end = at == model.size();
        switch (random() % (model.size() < 9 ? 3 : 1)) {
            case 0:
                ASSERT_EQ(model.c_str()[at], Drop(it.Remove()));
                model.erase(at, 1);
                break;
            case 1: it.Insert(add(c)), model.insert(at++, 1, c); break;
            case 2: it.Append(add(c)), model.insert(end ? at++ : at + 1, 1, c); break;
        }
        ASSERT_EQ(model.c_str()[at], *PlaceOf(it.Succ()));
    }
}

template <class List>
class ListModel : public testing::Test {};
using Lists = testing::Types<slist_t, olist_t, PointerDouble, LinkDouble>;
TYPED_TEST_SUITE(ListModel, Lists);

TYPED_TEST(ListModel, RandomOperations) {
    std::mt19937 random(17);
    TypeParam list;
    std::string model;
    auto const make = Make<decltype(list[0])>;
    auto const take_up_to_g = [](auto* visited, void* all) {
        char const c = *PlaceOf(visited);
        return Drop(static_cast<TypeParam*>(all)->remove(kDiffer, &c)) == 'g' ? 7 : 0;
    };
    for (int step = 0; step < 20000; ++step) {
        char const c = letters[random() % 8], first = model.c_str()[0];
        char const* const place = PlaceOf(list.find(kDiffer, &c));
        char const* const key = *place ? place : &c;  // may lie in the list
        auto const found = std::min(model.find(c), model.size()), at_g = model.find('g');
        int want = model.c_str()[found], got = *place, calls = 0;
        ASSERT_EQ(want, got) << "step " << step;
        switch (random() % 17) {
            case 0: got = Drop(list.remove(kDiffer, &c)), model.erase(found, 1); break;
            case 1: want = first, got = Drop(list.removeTop()), model.erase(0, 1); break;
            case 2:
                want = at_g < model.size() ? 7 : 0, got = list.loop(take_up_to_g, &list),
                model.erase(0, std::max(at_g, at_g + 1));
                break;
            case 3:
                want = calls = std::count(model.begin(), model.end(), c);
                if constexpr (std::is_same_v<TypeParam, olist_t>)
                    got = list.removeLoop(kDiffer, key);
                else
                    got = list.removeLoop(kDiffer, key, kCount, &(calls = 0));
                ASSERT_EQ(want, calls) << "step " << step;
                model.erase(std::remove(model.begin(), model.end(), c), model.end());
                break;
            case 4: list.insert(make(c)), model.insert(0, 1, c); break;
            case 5:
                if constexpr (std::is_same_v<TypeParam, LinkDouble>) break;
                want = model.empty() ? 0 : model.back(), got = Drop(list.removeBottom());
                model.erase(model.size() - !model.empty());
                break;
            case 6:
                if constexpr (!std::is_base_of_v<DPList, TypeParam> &&
                              !std::is_base_of_v<DList, TypeParam>) {
                    std::string const more(model.size() < 7 ? random() % 3 : 0, c);
                    TypeParam other;
                    for (char const each : more) other.append(make(each));
                    step % 2 ? list.insert(other) : list.append(other);
                    model.insert(step % 2 ? 0 : model.size(), more);
                    list.insert(list), list.append(list);  // into itself: nothing
                    ASSERT_EQ("", Text(other));
                } else {
                    EditAtPlaces(random, list, model);
                }
                break;
            case 7:
                if constexpr (std::is_copy_constructible_v<TypeParam>) {
                    got = *PlaceOf(list.Replace(kDiffer, &c, &letters[25]));
                    if (want) model[found] = 'z';
                    TypeParam copy = list;
                    list.removeTop();
                    list = copy = *&copy;
                }
                break;
            case 8:  // what follows its predecessor goes, though that one goes, too
                if constexpr (std::is_same_v<TypeParam, slist_t>) {
                    if (c < 'c') list.Sort(kDiffer), std::sort(model.begin(), model.end());
                    list.Uniq([](void* a, void const* b) { return kDiffer(a, b) - 1; });
                    for (std::size_t i = model.size(); i-- > 1;)
                        if (model[i] == model[i - 1] + 1) model.erase(i, 1);
                }
                break;
            default:
                if (model.size() < 9) list.append(make(c)), model.push_back(c);
        }
        ASSERT_EQ(std::pair(want, model), std::pair(got, Text(list))) << "step " << step;
        int const length = static_cast<int>(model.size());
        ASSERT_EQ(length, list.Len());
        for (int i = -1; i <= length; ++i)
            ASSERT_EQ(i < 0 ? '\0' : model.c_str()[i], *PlaceOf(list[i]));
    }
    list = TypeParam();
    EXPECT_EQ(0, Record<olink_t>::alive + Record<DLink>::alive);
}

}  // namespace
