#include <generic/tmap>

#include <map>
#include <random>
#include <string>
#include <utility>

#include "tests/support/int_tree.h"

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
    return keys;
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
        BalancedHeight(map.Root());
        auto entry = model.begin();
        for (auto const& [k, v] : map) {
            ASSERT_TRUE(entry->first == ModelOf(k) && entry->second.first == v &&
                        entry->second.second == &v);
            ++entry;
        }
        ASSERT_TRUE(entry == model.end());
    }
}

TEST(TMap, KeepsThePresentValueInsertsDefaultsAndAcceptsTheKeyOfTheEntryItself) {
    TextMap map;
    EXPECT_EQ(1, map.Insert("a", "first").second);
    TPair<String_t*, int> const again = map.Insert("a", "second");
    EXPECT_EQ(0, again.second);
    EXPECT_STREQ("first", *again.first);
    EXPECT_TRUE(map["b"].IsNull());
    EXPECT_EQ("a b ", Keys(map));
    EXPECT_TRUE(map.Remove(map.Root()->Key()));
    EXPECT_TRUE(map.Remove(map.Root()->Key()));
    EXPECT_EQ(nullptr, map.Root());
}

// The remembered start of a key that has become shorter must not lead behind its buffer.
TEST(TMap, SurvivesAKeyThatIsChangedBehindIt) {
    String_t shared("0123456789abcdef0");
    IntMap map;
    map[shared] = 1;
    shared.Reserve(1);
    EXPECT_EQ(nullptr, map.Find("0123456789abcdef0"));
    EXPECT_EQ(" ", Keys(map));
}

TEST(TMapCopy, IsDeepBalancedAndIndependentAndAMoveLeavesAnEmptyMap) {
    IntMap map = MapOf({"d", "b", "f", "a", "c", "e", "g", "h"});
    IntMap copy(map), target = MapOf({"x"}), moved = MapOf({"y"});
    target = map;
    target = *&target;
    int* const address = map.Find("b");
    moved = IntMap(std::move(map));
    EXPECT_EQ(address, moved.Find("b"));
    *moved.Find("a") = 77;
    for (IntMap* each : {&copy, &target}) {
        EXPECT_EQ("a b c d e f g h ", Keys(*each));
        EXPECT_EQ(3, *each->Find("a"));
        EXPECT_EQ(4, BalancedHeight(each->Root()));
    }
    map = MapOf({"new"});
    EXPECT_EQ("new ", Keys(map));
    // The routine of bnode_t, too, copies each entry once.
    bnode_t* const tree = bnode_t::DupTree(copy.Root());
    EXPECT_EQ(8, bnode_t::Size(tree));
    bnode_t::DeleteTree(tree);
}

TEST(TMapIterator, StepsBothWaysInEveryForm) {
    IntMap map;
    IntMap::Iterator it(map), none;
    EXPECT_TRUE(!it.Curr() && !none.First());
    for (char const* key : {"1", "2", "3", "4", "5", "6", "7"}) map[key] = key[0] - '0';
    EXPECT_STREQ("4", map.Root()->Key());  // ascending keys, too, make a perfect tree
    EXPECT_EQ(3, BalancedHeight(map.Root()));

    IntMap const& fixed = map;
    IntMap::ConstIterator back(fixed, 1);
    std::string seen = it.First()->key.Get();
    for (IntMap::Entry const* entry : {++it, it++, it++, &*it, it--, --it, it.First(), it.Last()})
        seen += entry->key.Get();
    EXPECT_EQ("122344217", seen);
    EXPECT_TRUE(!it.Next() && !it.Prev());  // past the end it stays
    it.First();
    for (seen = ""; IntMap::Entry* const entry = it();) seen += entry->key.Get();
    EXPECT_EQ(it, map.end());
    for (; back.Curr(); --back) seen += std::to_string(back->value);
    EXPECT_EQ("12345677654321", seen);
}

TEST(TMapIteratorDeathTest, RefusesToGiveAnEntryPastTheEnd) {
    EXPECT_DEATH(*IntMap().begin(), R"(generic/tmap:[0-9]+:.*cur != nullptr)");
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

TEST(TMapWalks, TakeBothEndsAndStopWhereTold) {
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
        EXPECT_EQ(&action, &Range(map, action, row.lo, row.hi));
        EXPECT_EQ(row.want, action.seen) << (row.lo ? row.lo : "null") << " to " << row.hi;
    }
    *map.Find("h") = 41;
    Collect all, some;
    some.stop_at = "d";
    EXPECT_EQ(&all, &ForEach(map, all));
    EXPECT_EQ("bdfh", all.seen);
    EXPECT_EQ(42, *map.Find("h"));
    EXPECT_EQ("bd", static_cast<Collect&>(ForEach(map, some)).seen);
}

TEST(TMapNode, ServesTheTreeRoutines) {
    typedef IntMap::Node Node;
    AVLnode* root = nullptr;
    String_t const keys[] = {"b", "a", "b"};
    int const values[] = {1, 2, 3};
    int grew = 0;
    TMapData<String_t, int, GStringCmp> data[3] = {};
    for (int i = 0; i < 3; ++i) {
        data[i] = {&keys[i], &values[i], nullptr, nullptr};
        root = AVLnode::Insert(root, Node::Cmp, &keys[i], Node::Create, &data[i], Node::Found,
                               &data[i], grew);
    }
    EXPECT_TRUE(!data[1].existing && *data[1].result == 2);
    EXPECT_TRUE(data[2].existing == data[0].result && *data[2].result == 1);
    auto* const found = static_cast<Node*>(bnode_t::Find(root, Node::Cmp, &keys[1]));
    Node* const copy = static_cast<Node*>(root)->Dup();
    EXPECT_EQ(2, BalancedHeight(copy));
    *copy = *found;  // an assigned entry keeps its place
    EXPECT_TRUE(copy->left && copy->Value() == 2 && copy->Key() == "a");
    bnode_t::DeleteTree(copy);
    bnode_t::DeleteTree(root);
}

// A map of the caller's own types, with values that may fail to copy.
struct Fragile {
    static int budget;
    Fragile() = default;
    Fragile(Fragile const&) {
        if (budget-- == 0) throw std::bad_alloc();
    }
    Fragile& operator=(Fragile const&) = default;
};
int Fragile::budget = -1;

struct Descending {
    int operator()(int const& a, int const& b) const { return b - a; }
};

TEST(TMapOfOwnTypes, IsUnchangedWhenACopyFails) {
    TMap<int, Fragile, Descending> map, target;
    for (int i = 0; i < 20; ++i) map[i];
    target[5];
    for (int copies = 0; copies < 20; ++copies) {
        Fragile::budget = copies;
        EXPECT_THROW(target = map, std::bad_alloc);
    }
    Fragile::budget = 0;
    EXPECT_THROW(map.Insert(100, Fragile()), std::bad_alloc);
    EXPECT_EQ(5, BalancedHeight(map.Root()));
    EXPECT_TRUE(map.begin()->key == 19 && !map.Find(100) && target.Find(5));
}

}  // namespace
