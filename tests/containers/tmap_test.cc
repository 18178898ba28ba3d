#include "generic/tmap"

#include <map>

#include "tests/support/fragile.h"
#include "tests/support/int_tree.h"

namespace {

using IntMap = TMap<String_t, int, GStringCmp>;

// A key as the model sees it: the null string before "", then by unsigned bytes.
using ModelKey = std::pair<bool, std::string>;
ModelKey ModelOf(String_t const& s) { return {!s.IsNull(), s.IsNull() ? "" : s.Get()}; }

// Texts that differ around the ends of the remembered 16 bytes, in bytes of both signs.
std::vector<String_t> TrickyKeys() {
    std::vector<String_t> keys{String_t(), String_t("")};
    for (unsigned const length : {0U, 1U, 7U, 8U, 15U, 16U, 17U, 40U})
        for (char const* tail : {"", "a", "b", "\x7f", "\x80", "\xff", "ab"})
            keys.push_back(String_t((std::string(length, 'p') + tail).c_str()));
    return keys;
}

// The keys, each with its value.
std::string Shown(IntMap const& map) {
    std::ostringstream out;
    for (auto const& entry : map) out << entry.key << entry.value << ' ';
    return out.str();
}

IntMap MapOf(char const* keys) {
    IntMap map;
    for (int i = 0; keys[i]; ++i) map.Insert(String_t(keys + i, 1), i);
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
        if (random() % 8 < (step / 400 % 2 ? 2U : 6U)) {
            ASSERT_EQ(model.erase(name) == 1, map.Remove(key)) << name.second;
        } else if (step % 2) {
            auto const [value, inserted] = map.Insert(key, step);
            ASSERT_EQ(known == model.end() ? 1 : 0, inserted) << name.second;
            model.emplace(name, std::make_pair(step, value));
        } else {
            int& value = map[key];
            ASSERT_EQ(known == model.end() ? 0 : known->second.first, value) << name.second;
            model[name] = {value = step, &value};
        }
        String_t const& probe = keys[random() % keys.size()];
        auto const want = model.find(ModelOf(probe));
        ASSERT_EQ(want == model.end() ? nullptr : want->second.second, map.Find(probe));
        if (step % 16) continue;
        IntMap copy(map), moved(std::move(map));
        ASSERT_EQ(nullptr, map.Root());  // NOLINT(bugprone-use-after-move)
        map = std::move(moved);
        copy["in the copy only"] = 1;
        moved = copy = *&copy;
        copy = map;
        ASSERT_EQ(BalancedHeight(map.Root()), BalancedHeight(copy.Root()));
        ASSERT_TRUE(Shown(map) == Shown(copy) && moved.Find("in the copy only"));
        auto entry = model.begin();
        for (auto& [k, v] : map) {
            ASSERT_TRUE(entry->first == ModelOf(k) && entry->second == std::pair(v, &v));
            ++entry;
        }
        ASSERT_TRUE(entry == model.end());
    }
    while (map.Root()) ASSERT_TRUE(map.Remove(map.Root()->Key()));  // a key that goes meanwhile
}

// The remembered start of a key that has become shorter must not lead behind its buffer.
TEST(TMap, SurvivesAKeyThatIsChangedBehindIt) {
    String_t shared("0123456789abcdef0");
    IntMap map;
    map[shared] = 1;
    shared.Reserve(1);
    EXPECT_EQ(nullptr, map.Find("0123456789abcdef0"));
    EXPECT_EQ("1 ", Shown(map));
}

TEST(TMapIteratorDeathTest, StepsBothWaysInEveryFormAndHasNoEntryPastTheEnd) {
    IntMap map = MapOf("");
    IntMap::Iterator it(map), none;
    EXPECT_TRUE(!it.Curr() && !none.First());
    EXPECT_DEATH(*it, R"(generic/tmap:[0-9]+:.*cur != nullptr)");
    map = MapOf("1234567");
    std::string seen = it.First()->key.Get();
    for (IntMap::Entry const* entry : {++it, it++, it++, &*it, it--, --it, it.First(), it.Last()})
        seen += entry->key.Get();
    EXPECT_TRUE(!it.Next() && !it.Prev());  // past the end it stays
    it.First();
    while (IntMap::Entry* const entry = it()) seen += entry->key.Get();
    for (IntMap::ConstIterator back(map, 1); back.Curr(); --back) seen += back->key.Get();
    EXPECT_EQ("12234421712345677654321", seen);
}

struct Collect : TMapAction<String_t, int, GStringCmp> {
    std::string seen;
    char const* stop_at = nullptr;
    int operator()(String_t const* key, int* value) override {
        seen += key->Get() + std::to_string((*value)++);
        return *key == stop_at;
    }
};

TEST(TMapWalks, TakeBothEndsAndStopWhereTold) {
    IntMap map = MapOf("dbfh");
    Collect all, some;
    some.stop_at = "d";
    EXPECT_EQ(&all, &Range(map, all, "b", "f"));
    Range(map, all, "g", "e");
    Range(map, some, nullptr, "z");
    EXPECT_EQ(&some, &ForEach(map, some));
    EXPECT_EQ("b1d0f2|b2d1b3d2", all.seen + '|' + some.seen);
}

TEST(TMapNode, ServesTheTreeRoutines) {
    String_t const key("b");
    int const values[] = {1, 2};
    TMapData<String_t, int, GStringCmp> made{&key, values, nullptr, nullptr}, found = made;
    std::unique_ptr<AVLnode> const node(IntMap::Node::Create(&made));
    EXPECT_EQ(0, IntMap::Node::Cmp(node.get(), &key) + IntMap::Node::Found(node.get(), &found));
    EXPECT_TRUE(!made.existing && *made.result == 1 && made.result == found.result);
    EXPECT_EQ(made.result, found.existing);
}

struct Descending {
    int operator()(int const& a, int const& b) const { return b - a; }
};

TEST(TMapOfOwnTypes, IsUnchangedWhenACopyFails) {
    TMap<int, Fragile<int>, Descending> map, target;
    for (int i = 0; i < 20; ++i) map[i];
    target[5];
    for (int const copies : {0, 10, 19}) {
        Fragile<int>::copies_left = copies;
        EXPECT_THROW(target = map, std::bad_alloc);
    }
    Fragile<int>::copies_left = 0;
    EXPECT_THROW(map.Insert(100, 1), std::bad_alloc);
    EXPECT_TRUE(map.begin()->key == 19 && !map.Find(100) && target.Find(5));
}

}  // namespace
