#include <generic/tmap>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <new>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

typedef TMap<String_t, int, GStringCmp> IntMap;
typedef TMap<String_t, String_t, GStringCmp> TextMap;

// A key as the model sees it: the null string before "", then by unsigned bytes.
typedef std::pair<bool, std::string> ModelKey;
ModelKey ModelOf(String_t const& s) {
    return s.IsNull() ? ModelKey(false, "") : ModelKey(true, s.Get());
}

// Texts that differ around the ends of the remembered 16 bytes, in bytes of both signs.
std::vector<String_t> TrickyKeys() {
    std::vector<String_t> keys{String_t(), String_t("")};
    for (unsigned const length : {0U, 1U, 7U, 8U, 15U, 16U, 17U, 40U})
        for (char const* tail : {"", "a", "b", "\x7f", "\x80", "\xff", "ab"})
            keys.push_back(String_t((std::string(length, 'p') + tail).c_str()));
    std::sort(keys.begin(), keys.end(),
              [](String_t const& a, String_t const& b) { return ModelOf(a) < ModelOf(b); });
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    return keys;
}

// The height of a balanced tree with right parent links; a fault is reported.
int CheckedHeight(bnode_t const* n, bnode_t const* parent = nullptr) {
    if (!n) return 0;
    int const left = CheckedHeight(n->left, n), right = CheckedHeight(n->right, n);
    int const bal = static_cast<AVLnode const*>(n)->bal;
    EXPECT_TRUE(n->parent == parent && bal == right - left && bal >= -1 && bal <= 1);
    return 1 + std::max(left, right);
}

template <class Map>
std::string Keys(Map& map) {
    std::string text;
    for (auto const& entry : map)
        text += std::string(entry.key.Get() ? entry.key.Get() : "?") + " ";
    return text;
}

IntMap MapOf(std::vector<char const*> const& keys) {
    IntMap map;
    int i = 0;
    for (char const* key : keys) map.Insert(key, i++);
    return map;
}

TEST(TMapRandom, AgreesWithStdMapAndKeepsAddresses) {
    std::vector<String_t> const keys = TrickyKeys();
    std::mt19937 random(17);
    IntMap map;
    std::map<ModelKey, std::pair<int, int*>> model;
    for (int step = 0; step < 20000; ++step) {
        String_t const& key = keys[random() % keys.size()];
        ModelKey const name = ModelOf(key);
        auto const known = model.find(name);
        bool const filling = random() % 8 < (step / 400 % 2 ? 6U : 2U);
        if (!filling) {
            ASSERT_EQ(model.erase(name) == 1, map.Remove(key)) << name.second;
        } else if (step % 2) {
            TPair<int*, int> const done = map.Insert(key, step);
            ASSERT_EQ(known == model.end(), done.second == 1) << name.second;
            model.emplace(name, std::make_pair(step, done.first));
        } else {
            int& value = map[key];
            if (known == model.end()) {
                ASSERT_EQ(0, value);
                model.emplace(name, std::make_pair(step, &value));
                value = step;
            }
        }
        String_t const& probe = keys[random() % keys.size()];
        auto const want = model.find(ModelOf(probe));
        ASSERT_EQ(want == model.end() ? nullptr : want->second.second, map.Find(probe));
        if (step % 16) continue;
        CheckedHeight(map.Root());
        auto entry = model.begin();
        for (auto const& [k, v] : map) {
            ASSERT_TRUE(entry->first == ModelOf(k) && entry->second.first == v &&
                        entry->second.second == &v);
            ++entry;
        }
        ASSERT_TRUE(entry == model.end());
    }
}

TEST(TMap, OfSevenAscendingKeysIsPerfect) {
    IntMap const map = MapOf({"1", "2", "3", "4", "5", "6", "7"});
    EXPECT_STREQ("4", map.Root()->Key());
    EXPECT_EQ(3, CheckedHeight(map.Root()));
}

TEST(TMap, KeepsThePresentValueAndInsertsDefaults) {
    TextMap map;
    EXPECT_EQ(1, map.Insert("a", "first").second);
    TPair<String_t*, int> const again = map.Insert("a", "second");
    EXPECT_EQ(0, again.second);
    EXPECT_STREQ("first", *again.first);
    EXPECT_TRUE(map["b"].IsNull());
    EXPECT_EQ(nullptr, map.Find("c"));
    EXPECT_EQ("a b ", Keys(map));
}

TEST(TMap, RemovesTheRootAndAcceptsTheKeyOfTheEntryItself) {
    IntMap map = MapOf({"b", "a", "c"});
    EXPECT_TRUE(map.Remove(map.Root()->Key()));
    EXPECT_FALSE(map.Remove("b"));
    EXPECT_EQ(2, CheckedHeight(map.Root()));
    EXPECT_TRUE(map.Remove("a") && map.Remove("c"));
    EXPECT_EQ(nullptr, map.Root());
}

TEST(TMapCopy, IsDeepBalancedAndIndependent) {
    IntMap map = MapOf({"d", "b", "f", "a", "c", "e", "g", "h"});
    IntMap copy(map), target = MapOf({"x"});
    target = map;
    target = *&target;
    map["a"] = 77;
    map.Remove("h");
    for (IntMap* each : {&copy, &target}) {
        EXPECT_EQ("a b c d e f g h ", Keys(*each));
        EXPECT_EQ(3, *each->Find("a"));
        EXPECT_EQ(4, CheckedHeight(each->Root()));
    }
    // The routine of bnode_t, too, copies each entry once.
    bnode_t* const tree = bnode_t::DupTree(copy.Root());
    EXPECT_EQ(4, CheckedHeight(tree));
    bnode_t::DeleteTree(tree);
}

TEST(TMapMove, LeavesAnEmptyMapThatCanBeUsed) {
    IntMap map = MapOf({"a", "b"}), target = MapOf({"x", "y"});
    int* const address = map.Find("b");
    IntMap moved(std::move(map));
    target = std::move(moved);
    EXPECT_EQ(address, target.Find("b"));
    EXPECT_EQ("a b ", Keys(target));
    EXPECT_EQ("", Keys(moved) + Keys(map));
    map["new"] = 1;
    EXPECT_EQ("new ", Keys(map));
}

TEST(TMapIterator, StepsBothWaysInEveryForm) {
    IntMap map = MapOf({"c", "a", "b"});
    IntMap::Iterator it(map, 0), back(map, 1), none;
    EXPECT_STREQ("a", it->key);
    EXPECT_STREQ("b", (++it)->key);
    EXPECT_STREQ("b", (it++)->key);
    EXPECT_STREQ("c", (*it).key);
    EXPECT_STREQ("c", (it--)->key);
    EXPECT_STREQ("a", (--it)->key);
    EXPECT_EQ(nullptr, it.Prev());
    EXPECT_EQ(nullptr, it.Next());  // past the end it stays
    EXPECT_EQ(it, map.end());
    EXPECT_STREQ("c", back.Curr()->key);
    EXPECT_STREQ("b", back.Prev()->key);
    EXPECT_STREQ("a", back.First()->key);
    EXPECT_STREQ("c", back.Last()->key);
    EXPECT_EQ(nullptr, none.First());
    std::string seen;
    it.First();
    while (IntMap::Entry* const entry = it()) seen += entry->key.Get();
    EXPECT_EQ("abc", seen);
}

TEST(TMapIterator, WalksConstMapsAndFollowsAChangedRoot) {
    IntMap map;
    IntMap::Iterator early(map, 0);
    EXPECT_EQ(nullptr, early.Curr());
    for (char const* key : {"1", "2", "3", "4"}) map[key] = key[0] - '0';
    EXPECT_STREQ("1", early.First()->key);
    IntMap const& fixed = map;
    IntMap::ConstIterator it(fixed, 1);
    int sum = 0;
    for (; it.Curr(); --it) sum += it->value;
    EXPECT_EQ(10, sum);
    EXPECT_EQ("1 2 3 4 ", Keys(fixed));
}

TEST(TMapIteratorDeathTest, RefusesToGiveAnEntryPastTheEnd) {
    IntMap map;
    EXPECT_DEATH(*map.begin(), R"(generic/tmap:[0-9]+:.*cur != nullptr)");
}

struct Collect : TMapAction<String_t, int, GStringCmp> {
    std::string seen;
    char const* stop_at = nullptr;
    int operator()(String_t const* key, int* value) override {
        seen += key->Get();
        ++*value;
        return *key == stop_at;
    }
};

TEST(TMapForEach, VisitsInOrderUntilToldToStop) {
    IntMap map = MapOf({"c", "a", "b"});
    Collect all, some;
    EXPECT_EQ(&all, &ForEach(map, all));
    EXPECT_EQ("abc", all.seen);
    EXPECT_EQ(1, *map.Find("c"));
    some.stop_at = "b";
    ForEach(map, some);
    EXPECT_EQ("ab", some.seen);
}

TEST(TMapRange, TakesBothEndsAndNothingWhenTheyAreSwapped) {
    IntMap map = MapOf({"d", "b", "f", "h"});
    struct {
        char const *lo, *hi, *stop, *want;
    } const rows[] = {{"b", "f", nullptr, "bdf"}, {"c", "g", nullptr, "df"},
                      {"d", "d", nullptr, "d"},   {"e", "e", nullptr, ""},
                      {"f", "b", nullptr, ""},    {"g", "e", nullptr, ""},
                      {nullptr, "z", "d", "bd"}};
    for (auto const& row : rows) {
        Collect action;
        action.stop_at = row.stop;
        EXPECT_EQ(&action, &Range(map, action, String_t(row.lo), String_t(row.hi)));
        EXPECT_EQ(row.want, action.seen) << (row.lo ? row.lo : "null") << " to " << row.hi;
    }
}

TEST(TMapNode, ServesTheTreeRoutines) {
    typedef IntMap::Node Node;
    AVLnode* root = nullptr;
    String_t const keys[] = {"b", "a", "b"};
    int const values[] = {1, 2, 3};
    TMapData<String_t, int, GStringCmp> data[3] = {};
    for (int i = 0, grew = 0; i < 3; ++i) {
        data[i].keyp = &keys[i];
        data[i].valuep = &values[i];
        root = AVLnode::Insert(root, Node::Cmp, &keys[i], Node::Create, &data[i], Node::Found,
                               &data[i], grew);
    }
    EXPECT_EQ(nullptr, data[1].existing);
    EXPECT_EQ(2, *data[1].result);
    EXPECT_EQ(data[0].result, data[2].existing);
    EXPECT_EQ(1, *data[2].result);
    auto* const found = static_cast<Node*>(bnode_t::Find(root, Node::Cmp, &keys[1]));
    EXPECT_STREQ("a", found->Data().key);
    Node* const copy = static_cast<Node*>(root)->Dup();
    EXPECT_EQ(2, CheckedHeight(copy));
    *copy = *found;  // an assigned entry keeps its place
    EXPECT_EQ(2, copy->Value());
    EXPECT_NE(nullptr, copy->left);
    bnode_t::DeleteTree(copy);
    bnode_t::DeleteTree(root);
}

// A map of the caller's own types, with values that may fail to copy.
struct Fragile {
    static int budget, alive;
    Fragile() { ++alive; }
    Fragile(Fragile const&) {
        if (budget-- == 0) throw std::bad_alloc();
        ++alive;
    }
    Fragile& operator=(Fragile const&) = default;
    ~Fragile() { --alive; }
};
int Fragile::budget = -1;
int Fragile::alive = 0;

struct Descending {
    int operator()(int const& a, int const& b) const { return a > b ? -1 : a < b; }
};

TEST(TMapOfOwnTypes, IsUnchangedWhenACopyFails) {
    {
        TMap<int, Fragile, Descending> map;
        for (int i = 0; i < 20; ++i) map[i];
        for (int budget = 0; budget < 20; ++budget) {
            TMap<int, Fragile, Descending> target;
            target[5];
            Fragile::budget = budget;
            EXPECT_THROW(target = map, std::bad_alloc);
            EXPECT_NE(nullptr, target.Find(5));
            Fragile::budget = 0;
            EXPECT_THROW(map.Insert(100, Fragile()), std::bad_alloc);
            Fragile::budget = -1;
            EXPECT_EQ(21, Fragile::alive);
        }
        EXPECT_EQ(5, CheckedHeight(map.Root()));
        EXPECT_EQ(19, map.begin()->key);
        EXPECT_EQ(nullptr, map.Find(100));
    }
    EXPECT_EQ(0, Fragile::alive);
}

}  // namespace
