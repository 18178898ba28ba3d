#include "generic/tmap"

#include <map>

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

// Collects keys and values up to `stop_at`.
struct Collect : TMapAction<String_t, int, GStringCmp> {
    explicit Collect(String_t const& stop) : stop_at(stop) {}
    int operator()(String_t const* key, int* value) override {
        seen.emplace_back(ModelOf(*key), *value);
        return *key == stop_at;
    }
    String_t stop_at;
    std::vector<std::pair<ModelKey, int>> seen;
};

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
        map = std::move(moved);
        copy["in the copy only"] = 1;
        moved = copy = *&copy;
        copy = map;
        ASSERT_EQ(BalancedHeight(map.Root()), BalancedHeight(copy.Root()));
        Collect all("zz"), some(keys[random() % keys.size()]);
        ASSERT_TRUE(moved.Find("in the copy only") && &all == &ForEach(copy, all));
        ASSERT_EQ(&some, &Range(map, some, key, probe));
        std::vector<std::pair<ModelKey, int>> entries, ranged;
        auto entry = model.begin();
        for (auto& [k, v] : map) {
            entries.emplace_back(entry->first, v);
            ASSERT_TRUE(entry->first == ModelOf(k) && entry->second == std::pair(v, &v));
            bool const more = ranged.empty() || ranged.back().first != ModelOf(some.stop_at);
            if (more && ModelOf(key) <= ModelOf(k) && ModelOf(k) <= ModelOf(probe))
                ranged.push_back(entries.back());
            ++entry;
        }
        ASSERT_TRUE(entry == model.end() && entries == all.seen && ranged == some.seen);
    }
    while (map.Root()) ASSERT_TRUE(map.Remove(map.Root()->Key()));  // a key that goes meanwhile
}

TEST(TMapIterator, StepsBothWaysInEveryForm) {
    IntMap map;
    IntMap::Iterator it(map);
    for (char const* const key : {"4", "2", "6", "1", "3", "5", "7"}) map[key] = 0;
    std::string seen = it.First()->key.Get();
    for (IntMap::Entry const* entry : {++it, it++, it++, &*it, it--, --it, it.First(), it.Last()})
        seen += entry->key.Get();
    EXPECT_TRUE(!it.Next() && !it.Prev());  // past the end it stays
    it.First();
    while (IntMap::Entry* const entry = it()) seen += entry->key.Get();
    for (IntMap::ConstIterator back(map, 1); back.Curr(); --back) seen += back->key.Get();
    EXPECT_EQ("12234421712345677654321", seen);
}

}  // namespace
