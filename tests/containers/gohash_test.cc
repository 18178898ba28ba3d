#include "generic/gohash"

#include <optional>

#include "tests/support/test.h"

namespace {

using Name = std::optional<std::string>;  // none: the null string

// The hash table as documented, step by step, on plain vectors.
struct HashModel {
    struct Slot {
        int state = 0;  // 1 used, 2 deleted
        Name key;
        int value = 0;
    };
    std::vector<Slot> slots;
    unsigned card = 0;
    explicit HashModel(unsigned n) : slots(n ? n : 100) {}

    static unsigned Hash(Name const& key) {
        unsigned h = 0;
        for (char const c : key.value_or("")) {
            h = h * 16 + static_cast<unsigned char>(c);
            if (h > 0xFFFFFF) h = (h % 0x1000000) ^ (h / 0x1000000);
        }
        return h;
    }
    // The slot with this key, or -1; `best` is the first one on the way that is not in use.
    int Find(Name const& key, std::size_t* best = nullptr) const {
        std::size_t const hash = Hash(key), size = slots.size();
        std::size_t const first = hash % size,
                          next = first + std::max<std::size_t>(hash / size % size, 1);
        for (std::size_t k = 0; k <= size; ++k) {
            std::size_t const i = k == 0 ? first : (next + k - 1) % size;
            if (slots[i].state == 1 && slots[i].key == key) return static_cast<int>(i);
            if (best && slots[i].state != 1) *std::exchange(best, nullptr) = i;
            if (slots[i].state == 0) break;
        }
        return -1;
    }
    // Whether the key was new.
    bool Add(Name const& key, int value) {
        if (card >= slots.size() - slots.size() / 8)
            Resize(2 * static_cast<unsigned>(slots.size()));
        std::size_t best = slots.size();
        if (Find(key, &best) >= 0) return false;
        Put(best, key, value);
        return true;
    }
    void Put(std::size_t i, Name const& key, int value) { slots.at(i) = {1, key, value}, ++card; }
    void Erase(std::size_t i) { slots[i] = {2, {}, 0}, --card; }
    void Resize(unsigned n) {
        if (n <= card) {
            n = card < 88 ? 100 : 200;
            while (card >= 88 && n - n / 8 <= card) n *= 2;
        }
        HashModel fresh(n);
        for (auto const& slot : slots)
            if (slot.state == 1) fresh.Add(slot.key, slot.value);
        *this = fresh;
    }
};

using Table = OHashTable<String_t, StrCnt>;

String_t Text(Name const& name) { return name ? String_t(name->c_str()) : String_t(); }

// Half of them are `names` numbered ones, which the hash clusters; the others are of 1 to 25
// characters, some beyond 127, "" and null.
Name RandomName(std::mt19937& random, unsigned names) {
    unsigned const kind = random() % 40, number = random() % names;
    if (kind < 2) return kind ? Name("") : Name();
    if (kind < 20) return "net" + std::to_string(number);
    std::string const stem(kind % 13, static_cast<char>(kind % 3 ? 'a' + kind : 250));
    return stem + static_cast<char>('a' + number % 26) + (number % 2 ? stem : "");
}

// The records of `table` are those of `model`, at the same distances.
void ExpectSame(HashModel const& model, Table const& table) {
    ASSERT_EQ(model.card, table.Card());
    ASSERT_EQ(model.slots.size(), table.Size());
    OHashIterator<String_t, StrCnt> next(table);
    StrCnt const* zero = nullptr;  // slot 0
    for (std::size_t i = 0; i < model.slots.size(); ++i) {
        auto const& slot = model.slots[i];
        if (slot.state != 1) continue;
        StrCnt const* const record = next();
        ASSERT_NE(nullptr, record);
        if (!zero) zero = record - i;
        ASSERT_EQ(zero + i, record);
        ASSERT_TRUE(Text(slot.key) == record->str && slot.value == record->cnt);
    }
    for (int i = 0; i < 2; ++i) ASSERT_EQ(nullptr, next());
}

// One random call on both; what empties or rebuilds is rare in large tables, so that they fill.
// `raw` also puts and deletes slots directly.
void Step(std::mt19937& random, HashModel& model, Table& table, unsigned names, bool raw) {
    Name const name = RandomName(random, names);
    String_t const key = Text(name);
    bool const odd = random() % 2;
    int const value = static_cast<int>(random() % 1000), found = model.Find(name);
    auto const at = static_cast<std::size_t>(found);
    StrCnt record{key};
    record.cnt = value;
    ASSERT_EQ(HashModel::Hash(name), GHash(key.Get()));
    unsigned const slot = random() % table.Size(), call = random() % (raw ? 42 : 40);
    if (call < 16) {
        ASSERT_EQ(model.Add(name, value), (odd ? table.Add(record) : table += record) != nullptr);
    } else if (call < 20) {
        model.Add(name, value);
        ASSERT_EQ(model.slots[static_cast<std::size_t>(model.Find(name))].value,
                  table[record]->cnt);
    } else if (call < 30) {
        StrCnt const* const gone = odd ? table.Del(key) : table -= record;
        ASSERT_EQ(found >= 0, gone != nullptr);
        if (gone) model.Erase(at);
        ASSERT_TRUE(!gone || (gone->str.IsNull() && gone->cnt == 0));
    } else if (call < 35) {
        StrCnt const* const place = odd ? table.Find(key) : table.Find(record);
        ASSERT_EQ(found >= 0, place && place->cnt == model.slots[at].value);
        ASSERT_EQ(found >= 0, odd ? table & key : table & record);
    } else if (call == 35 && random() % model.slots.size() < 100) {
        unsigned const n = random() % 3 ? model.card + random() % 40 : random() % 300;
        model.Resize(n), table.Resize(n);
    } else if (call == 36) {
        OHashIterator<String_t, StrCnt> next(table);
        ASSERT_EQ(nullptr, next.Del());
        for (std::size_t i = 0; i < model.slots.size(); ++i) {
            if (model.slots[i].state != 1) continue;
            StrCnt* const current = next();
            if (random() % (model.card + 5) > 1) continue;
            model.Erase(i);
            ASSERT_TRUE(next.Del() == current && !next.Del());
        }
    } else if (call < 39) {
        Table copy(table), moved(std::move(table));
        ASSERT_EQ(0U, table.Card());  // NOLINT(bugprone-use-after-move)
        ASSERT_EQ(nullptr, table.Find(key));
        odd ? table = copy : table = std::move(moved);
    } else if (call == 39 && random() % model.slots.size() < 10) {
        model = HashModel(static_cast<unsigned>(model.slots.size()));
        table.Clear();
    } else if (call == 40 && model.slots[slot].state != 1) {
        model.Put(slot, name, value);
        table._Add(slot, record);
    } else if (call == 41 && model.slots[slot].state == 1) {
        model.Erase(slot);
        table._Del(slot);
    }
}

// Every second round puts and deletes slots directly, too: their keys are found as far as the
// probes reach them. The last two have thousands of slots.
TEST(Gohash, PutsRecordsWhereTheDocumentedProbesEnd) {
    std::mt19937 random(23);
    for (int round = 0; round < 200; ++round) {
        bool const raw = round % 2, large = round >= 198;
        unsigned const some = round % 3 ? random() % 12 + 1 : round % 4 ? random() % 130 : 0;
        unsigned const n = large ? 5000 : raw ? 100 : some;
        HashModel model(n);
        Table table(n);
        for (int step = 0; step < (large ? 20000 : 250); ++step) {
            Step(random, model, table, large ? 8000 : 150, raw);
            if (!large || step % 500 == 0) ExpectSame(model, table);
            if (HasFatalFailure()) FAIL() << "round " << round << " step " << step;
        }
        EXPECT_EQ(nullptr, table._Add(table.Size(), StrCnt()));
        EXPECT_EQ(nullptr, table._Del(table.Size()));
    }
}

// So many that some share all 32 bits of any hash.
TEST(Gohash, TellsTextsApart) {
    Table table(0);
    for (unsigned i = 0; i < 300000; ++i)
        table.Add(StrCnt(("hierarchical name/" + std::to_string(i * 2654435761U)).c_str()));
    EXPECT_EQ(300000U, table.Card());
}

TEST(GohashDeathTest, AFullTableThatCountsTooLittleAborts) {
    Table full(2);
    full._Add(0, StrCnt("a"));
    full._Add(1, StrCnt("b"));
    full._Del(1);
    full._Del(1);  // counts down again
    full._Add(1, StrCnt("b"));
    EXPECT_DEATH(full.Add(StrCnt("c")), R"(include/generic/gohash:[0-9]+:.*bestspot < size)");
}

}  // namespace
