#include <containers/dlist.h>
#include <containers/dplist.h>
#include <containers/objectbase.h>
#include <containers/olist.h>
#include <containers/slist.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

// Elements of the texts that the pointer lists below point into.
char letters[] = "abcdefghijklmnopqrstuvwxyz";

void* at(char letter) { return &letters[letter - 'a']; }
char letter(void const* data) { return *static_cast<char const*>(data); }
int by_letter(void* data, void const* key) { return letter(data) - letter(key); }
int by_letter_const(void const* data, void const* key) { return letter(data) - letter(key); }

template <class List>
std::string text(List const& list) {
    std::string joined;
    for (void const* const data : list) joined += letter(data);
    return joined;
}

slist_t single(char const* values) {
    slist_t list;
    for (; *values; ++values) list.append(at(*values));
    return list;
}

struct Numbered : olink_t {
    Numbered(int k, int n) : key(k), number(n) {}
    int key, number;
};

int by_key(olink_t const* a, void const* b) {
    return static_cast<Numbered const*>(a)->key - static_cast<Numbered const*>(b)->key;
}

struct Letter : DLink {
    explicit Letter(char c) : value(c) {}
    char value;
};

std::string text(DList const& list) {
    std::string joined;
    for (DLink const& link : list) joined += static_cast<Letter const&>(link).value;
    return joined;
}

}  // namespace

TEST(ListSplice, MovesAllLinksAndLeavesItselfAlone) {
    struct {
        char const *list, *other, *appended, *inserted;
    } const rows[] = {
        {"abc", "xy", "abcxy", "xyabc"}, {"a", "x", "ax", "xa"}, {"", "xy", "xy", "xy"},
        {"abc", "", "abc", "abc"},       {"", "", "", ""},
    };
    for (auto const& row : rows) {
        slist_t back = single(row.list), front = single(row.list);
        slist_t other = single(row.other), another = single(row.other);
        back.append(other);
        front.insert(another);
        EXPECT_EQ(row.appended, text(back));
        EXPECT_EQ(row.inserted, text(front));
        EXPECT_EQ(0, other.Len() + another.Len());
        back.append(back);
        front.insert(front);
        EXPECT_EQ(row.appended, text(back));
        EXPECT_EQ(row.inserted, text(front));
        other.append(at('z'));  // both stay usable
        back.append(other);
        EXPECT_EQ(std::string(row.appended) + "z", text(back));
    }
    olist_t links, more;
    for (int i = 0; i < 3; ++i) more.append(new Numbered(0, i));
    links.insert(new Numbered(0, 3));
    links.append(more);
    links.insert(links);
    EXPECT_EQ(4, links.Len());
    EXPECT_EQ(2, static_cast<Numbered*>(links[3])->number);
    EXPECT_EQ(nullptr, more[0]);
}

TEST(ListSort, KeepsTheOrderOfEqualKeys) {
    std::mt19937 random(5);
    for (int length = 0; length < 130; ++length) {
        olist_t list;
        std::vector<std::pair<int, int>> model;
        for (int i = 0; i < length; ++i) {
            model.emplace_back(static_cast<int>(random() % 9), i);
            list.append(new Numbered(model.back().first, i));
        }
        std::sort(model.begin(), model.end());  // equal keys by number, as they came
        list.Sort(by_key);
        std::vector<std::pair<int, int>> sorted;
        for (olink_t const& link : list) {
            auto const& numbered = static_cast<Numbered const&>(link);
            sorted.emplace_back(numbered.key, numbered.number);
        }
        EXPECT_EQ(model, sorted) << "length " << length;
        list.append(new Numbered(0, -1));  // the ring is closed behind the new last link
        EXPECT_EQ(length + 1, list.Len());
    }
    slist_t letters_list = single("hgfedcbabc");
    letters_list.Sort(by_letter);
    EXPECT_EQ("abbccdefgh", text(letters_list));
}

TEST(SList, UniqComparesWithThePredecessorAsItStood) {
    struct {
        char const *before, *after;
    } const rows[] = {{"", ""}, {"a", "a"}, {"aaa", "a"}, {"aabbcca", "abca"}, {"abc", "abc"}};
    for (auto const& row : rows) {
        slist_t list = single(row.before);
        list.Uniq(by_letter);
        EXPECT_EQ(row.after, text(list));
    }
    slist_t steps = single("abcfg");
    steps.Uniq([](void* data, void const* before) { return letter(data) - letter(before) - 1; });
    EXPECT_EQ("af", text(steps));  // c goes although b has gone
    steps.append(at('z'));
    EXPECT_EQ("afz", text(steps));
}

TEST(PointerLists, ReplaceAndCopy) {
    slist_t list = single("abcb");
    EXPECT_EQ(at('b'), list.Replace(by_letter, "b", at('x')));
    EXPECT_EQ(nullptr, list.Replace(by_letter, "q", at('x')));
    EXPECT_EQ("axcb", text(list));
    EXPECT_EQ(list.Findl(by_letter, "c")->Next(), list.Findl(by_letter, "b"));
    slist_t copy(list);
    copy.removeTop();
    copy = static_cast<slist_t const&>(copy);
    EXPECT_EQ("xcb", text(copy));
    list = copy;
    EXPECT_EQ("xcb", text(list));

    DPList two_way;
    for (char c = 'a'; c < 'e'; ++c) two_way.Append(at(c));
    EXPECT_EQ(at('c'), two_way.Replace(by_letter_const, "c", at('y')));
    DPList two_way_copy;
    two_way_copy.Append(at('q'));
    two_way_copy = two_way;
    two_way.Clear();
    EXPECT_EQ("abyd", text(two_way_copy));
    EXPECT_EQ(at('b'), two_way_copy.FindL(by_letter_const, "y")->Prev()->Data());
    two_way = std::move(two_way_copy);
    EXPECT_EQ("abyd", text(two_way));
}

TEST(DList, RemoveLastDropsTheOtherLinks) {
    DList list;
    Letter a('a'), b('b'), c('c');
    for (Letter* const link : {&a, &b, &c}) list.Append(link);
    EXPECT_EQ(&c, list.RemoveLast());
    EXPECT_EQ(0, list.Len());
    EXPECT_EQ(&a, c.Next());  // still in their ring
    EXPECT_EQ(&c, a.Prev());
    EXPECT_EQ(nullptr, list.RemoveLast());
}

TEST(DListIterator, InsertsAppendsAndRemovesAtItsPlace) {
    DList list;
    DListIterator it(list);
    it.Append(new Letter('c'));  // at the end of an empty list
    EXPECT_FALSE(it);
    it.Reset();
    it.Insert(new Letter('a'));  // before the first
    it.Insert(new Letter('b'));
    it.Append(new Letter('e'));  // behind the last
    it.Append(new Letter('d'));
    EXPECT_EQ("abcde", text(list));
    EXPECT_EQ('c', static_cast<Letter*>(it())->value);
    DLink* const d = it.Remove();
    EXPECT_EQ('d', static_cast<Letter*>(d)->value);
    EXPECT_EQ('e', static_cast<Letter*>(it.Succ())->value);
    delete it.Remove();  // the last one: at the end, not back at the first
    EXPECT_EQ(nullptr, it.Succ());
    EXPECT_EQ(nullptr, it.Remove());
    it.Insert(d);
    EXPECT_EQ("abcd", text(list));
    EXPECT_EQ(d, list[0]->Prev());
    EXPECT_EQ(nullptr, (++it)());
}

TEST(DPListIterator, InsertsAppendsAndRemovesAtItsPlace) {
    DPList list;
    for (char c : {'b', 'd'}) list.Append(at(c));
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
    ObjectBase const object;
    struct {
        char const* name;
        bool is;
    } const rows[] = {{"ObjectBase", true},
                      {"ObjectBas", false},
                      {"objectbase", false},
                      {"", false},
                      {nullptr, false}};
    for (auto const& row : rows) EXPECT_EQ(row.is, object.IsA(row.name));
}
